#include "surface/forms/controls/ListBox.h"

#include <QAbstractListModel>
#include <QApplication>
#include <QElapsedTimer>
#include <QListView>
#include <QMouseEvent>
#include <QPointer>
#include <algorithm>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Events.h"
#include "surface/forms/controls/RowPainter.h"

namespace zelvane {

/// Nothing is made of a text before it is seen.
class ListBox::Rows : public QAbstractListModel {
 public:
  void SetTexts(std::vector<std::string> texts) {
    beginResetModel();
    texts_ = std::move(texts);
    endResetModel();
  }
  const std::vector<std::string>& Texts() const { return texts_; }

  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(texts_.size());
  }
  /// The view copies its current row (Ctrl+C), also where it has none.
  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid() || role != Qt::DisplayRole) return {};
    return OneLine(TextAt(index.row()));
  }
  bool Begins(int row, const QString& typed) const {
    return TextAt(row).startsWith(typed, Qt::CaseInsensitive);
  }

 private:
  QString TextAt(int row) const { return ToQt(texts_[static_cast<size_t>(row)]); }
  std::vector<std::string> texts_;
};

class ListBox::View : public QListView {
 public:
  View(QWidget* parent, ListBox& list) : QListView(parent), list_(list) {
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerItem);
    setItemDelegate(new Row(this));
  }

  int Chosen() const {
    const QModelIndexList chosen = selectedIndexes();
    return chosen.isEmpty() ? -1 : chosen.front().row();
  }
  void Choose(int row) {
    writing_ = true;
    if (row < 0)
      selectionModel()->clear();
    else
      setCurrentIndex(model()->index(row, 0));
    writing_ = false;
  }
  void SetIcon(const std::string& icon) {
    static_cast<Row*>(itemDelegate())->SetIcon(icon);
    viewport()->update();
  }

  /// To the first row that begins so; one letter again and again goes through all that do.
  void keyboardSearch(const QString& typed) override {
    const bool goes_on = typing_.isValid() && !typing_.hasExpired(QApplication::keyboardInputInterval());
    typing_.start();
    typed_ = goes_on ? typed_ + typed : typed;
    const bool is_repeated = typed_.size() > 1 && typed_.count(typed_.front()) == typed_.size();
    if (Find(typed_, 0) || !is_repeated) return;
    if (!Find(typed, Chosen() + 1)) Find(typed, 0);
  }

 protected:
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent*) const override {
    // No key that is held takes the choice away.
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
  }
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override {
    QListView::selectionChanged(selected, deselected);
    if (!writing_ && !selected.isEmpty()) FireEvent(list_.OnClick);
  }
  void mousePressEvent(QMouseEvent* event) override {
    const QPointer<View> standing(this);
    const int before = Chosen();
    QListView::mousePressEvent(event);
    const bool is_again = standing && before >= 0 && indexAt(event->position().toPoint()).row() == before;
    if (is_again && event->button() == Qt::LeftButton) FireEvent(list_.OnClick);
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    // Where the pointer has come to another row in between, these were two presses.
    const int row = indexAt(event->position().toPoint()).row();
    if (event->button() != Qt::LeftButton || row < 0 || row != Chosen() || !list_.OnDblClick)
      return mousePressEvent(event);
    FireEvent(list_.OnDblClick);
  }
  void focusInEvent(QFocusEvent* event) override {
    QListView::focusInEvent(event);
    // The toolkit would have the first key choose the second row.
    if (Chosen() < 0) selectionModel()->clearCurrentIndex();
  }

 private:
  /// As wide as the list, whatever its text.
  class Row : public RowPainter {
   public:
    using RowPainter::RowPainter;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
      return {0, RowPainter::sizeHint(option, index).height()};
    }
  };
  /// Chooses the first row at or after `from` that begins so.
  bool Find(const QString& beginning, int from) {
    const Rows& rows = *list_.rows_;
    for (int row = from; row < rows.rowCount({}); ++row) {
      if (!rows.Begins(row, beginning)) continue;
      setCurrentIndex(model()->index(row, 0));
      return true;
    }
    return false;
  }

  ListBox& list_;
  QString typed_;
  QElapsedTimer typing_;
  bool writing_ = false;
};

ListBox::ListBox(Control& parent, const std::string& name)
    : Control(&parent, name, new View(parent.Widget(), *this)), rows_(std::make_unique<Rows>()) {
  static_cast<View*>(widget_)->setModel(rows_.get());
}

ListBox::~ListBox() = default;

void ListBox::SetItems(std::vector<std::string> items) {
  rows_->SetTexts(std::move(items));
}

int ListBox::ListCount() const {
  return static_cast<int>(rows_->Texts().size());
}

const std::string& ListBox::List(int index) const {
  return rows_->Texts().at(static_cast<size_t>(index));
}

int ListBox::ListIndex() const {
  return widget_ ? static_cast<View*>(widget_)->Chosen() : -1;
}

void ListBox::SetListIndex(int index) {
  if (widget_ && index >= -1 && index < ListCount()) static_cast<View*>(widget_)->Choose(index);
}

std::string ListBox::Text() const {
  const int chosen = ListIndex();
  return chosen < 0 ? std::string() : List(chosen);
}

void ListBox::SetIcon(const std::string& icon) {
  if (widget_) static_cast<View*>(widget_)->SetIcon(icon);
}

}  // namespace zelvane
