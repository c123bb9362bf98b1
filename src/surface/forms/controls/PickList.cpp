#include "surface/forms/controls/PickList.h"

#include <QAbstractListModel>
#include <QCache>
#include <QElapsedTimer>
#include <QListView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimer>
#include <cmath>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Events.h"
#include "surface/forms/controls/RowPainter.h"

namespace zelvane {
namespace {

constexpr int kFacePoints = 12;
constexpr int kLinePadding = 2;  // logical pixels above and below a line of text
/// Faces that were seen last stay loaded: more than show at once, and few enough to cost no memory to speak
/// of.
constexpr int kLoadedFaces = 64;
/// A painting loads faces for so long; those still to come are left to the next, so that nothing jerks.
constexpr int kLoadingMs = 6;

}  // namespace

class PickList::Rows : public QAbstractListModel {
 public:
  void SetChoices(std::vector<Choice> choices) {
    beginResetModel();
    choices_ = std::move(choices);
    endResetModel();
  }
  const std::vector<Choice>& Choices() const { return choices_; }
  const Choice& At(const QModelIndex& index) const { return choices_[static_cast<size_t>(index.row())]; }

  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(choices_.size());
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid() || role != Qt::DisplayRole) return {};
    return OneLine(ToQt(At(index).text));
  }

 private:
  std::vector<Choice> choices_;
};

class PickList::Painter : public RowPainter {
 public:
  Painter(QWidget& view, const Rows& rows) : RowPainter(&view), view_(view), rows_(rows) {}

  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const override {
    return {0, HeightOf(index)};
  }

  int HeightOf(const QModelIndex& index) const {
    const bool is_last = index.row() == rows_.rowCount({}) - 1;
    return PlainHeight() + FaceHeight(rows_.At(index)) + (is_last ? 0 : 1);
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const Choice& choice = rows_.At(index);
    const bool is_lit = option.state & QStyle::State_Selected;
    painter->save();
    painter->setClipRect(option.rect);
    painter->fillRect(option.rect, ToQt(is_lit ? SystemColor::ActiveCaption : SystemColor::WindowBackground));
    painter->setPen(ToQt(is_lit ? SystemColor::CaptionText : SystemColor::WindowText));
    QRect line(option.rect.topLeft(), QSize(option.rect.width(), PlainHeight()));
    QFont plain = view_.font();
    plain.setBold(choice.bold);
    plain.setItalic(choice.italic);
    DrawLine(*painter, line, plain, index);
    if (!choice.face.empty()) {
      line = QRect(line.left(), line.bottom() + 1, line.width(), FaceHeight(choice));
      if (const QFont* face = FaceOf(index)) DrawLine(*painter, line, *face, index, AscentOf(choice));
    }
    if (option.rect.height() > PlainHeight() + FaceHeight(choice))
      painter->fillRect(QRect(option.rect.bottomLeft(), QSize(option.rect.width(), 1)),
                        ToQt(SystemColor::ScrollBar));
    painter->restore();
  }

  void StartPainting() {
    painting_.start();
    is_waiting_ = false;
  }
  /// Whether a face is still to come that is in view.
  bool IsWaiting() const { return is_waiting_; }
  void Forget() { faces_.clear(); }

 private:
  int PlainHeight() const { return view_.fontMetrics().height() + 2 * kLinePadding; }
  /// Pixels, of `kFacePoints`.
  double FaceSize() const { return kFacePoints * view_.logicalDpiY() / 72.0; }
  int AscentOf(const Choice& choice) const { return ToSize(choice.above * FaceSize()); }
  int FaceHeight(const Choice& choice) const {
    return choice.face.empty() ? 0 : AscentOf(choice) + ToSize(choice.below * FaceSize()) + kLinePadding;
  }

  /// Null where it isn't loaded and there's no time for it. A font that is kept keeps what was loaded for it.
  const QFont* FaceOf(const QModelIndex& index) const {
    const QFont* loaded = faces_.object(index.row());
    if (loaded) return loaded;
    if (painting_.hasExpired(kLoadingMs)) {
      is_waiting_ = true;
      return nullptr;
    }
    auto* face = new QFont(ToQt(rows_.At(index).face), kFacePoints);
    faces_.insert(index.row(), face);
    return face;
  }

  /// The base of the line is in the middle of the line's height where it isn't told.
  void DrawLine(QPainter& painter, const QRect& line, const QFont& font, const QModelIndex& index,
                int ascent = -1) const {
    painter.setFont(font);
    const QFontMetrics metrics = painter.fontMetrics();
    const int blank = view_.fontMetrics().horizontalAdvance(' ');
    if (ascent < 0) ascent = (line.height() - metrics.height()) / 2 + metrics.ascent();
    const QString text = metrics.elidedText(rows_.data(index, Qt::DisplayRole).toString(), Qt::ElideRight,
                                            line.width() - 2 * blank);
    painter.drawText(QPoint(line.left() + blank, line.top() + ascent), text);
  }

  QWidget& view_;
  const Rows& rows_;
  QElapsedTimer painting_;
  mutable QCache<int, QFont> faces_{kLoadedFaces};
  mutable bool is_waiting_ = false;
};

class PickList::View : public QListView {
 public:
  View(QWidget* parent, PickList& list) : QListView(parent), list_(list) {
    setFrameShape(NoFrame);
    setMouseTracking(true);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    verticalScrollBar()->setObjectName("VScroll1");
  }

  void Show(Rows& rows) {
    painter_ = new Painter(*this, rows);
    setModel(&rows);
    setItemDelegate(painter_);
  }
  void Forget() { painter_->Forget(); }
  /// A step of the bar is a row of mean height.
  void SetStep() {
    if (const int count = list_.Count(); count > 0)
      verticalScrollBar()->setSingleStep(list_.ContentHeight() / count);
  }
  const Painter& Drawn() const { return *painter_; }

 protected:
  void paintEvent(QPaintEvent* event) override {
    painter_->StartPainting();
    QListView::paintEvent(event);
    if (painter_->IsWaiting()) QTimer::singleShot(0, viewport(), [this] { viewport()->update(); });
  }

  void mouseMoveEvent(QMouseEvent* event) override { HighlightAt(event->position()); }
  /// The row that comes to lie under the pointer.
  void wheelEvent(QWheelEvent* event) override {
    QListView::wheelEvent(event);
    HighlightAt(event->position());
  }
  void mousePressEvent(QMouseEvent* event) override {
    HighlightAt(event->position());
    pressed_ = event->button() == Qt::LeftButton;
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void mouseReleaseEvent(QMouseEvent* event) override {
    const bool was_pressed = std::exchange(pressed_, false);
    const QModelIndex row = indexAt(event->position().toPoint());
    if (was_pressed && event->button() == Qt::LeftButton &&
        viewport()->rect().contains(event->position().toPoint()))
      Pick(row);
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return Pick(currentIndex());
    QListView::keyPressEvent(event);
  }
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent*) const override {
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
  }

 private:
  void HighlightAt(QPointF place) {
    const QModelIndex row = indexAt(place.toPoint());
    if (!row.isValid() || row == currentIndex()) return;
    // A row that shows in part only would jump away from under the pointer.
    setAutoScroll(false);
    setCurrentIndex(row);
    setAutoScroll(true);
  }
  void Pick(const QModelIndex& row) {
    if (row.isValid()) FireEvent(list_.OnPick, row.row());
  }

  PickList& list_;
  Painter* painter_ = nullptr;
  bool pressed_ = false;
};

PickList::PickList(Control& parent, const std::string& name)
    : Control(&parent, name, new View(parent.Widget(), *this)), rows_(std::make_unique<Rows>()) {
  static_cast<View*>(widget_)->Show(*rows_);
}

PickList::~PickList() = default;

void PickList::SetChoices(std::vector<Choice> choices) {
  rows_->SetChoices(std::move(choices));
  if (!widget_) return;
  static_cast<View*>(widget_)->Forget();
  static_cast<View*>(widget_)->SetStep();
}

int PickList::Count() const {
  return static_cast<int>(rows_->Choices().size());
}

const PickList::Choice& PickList::operator[](int index) const {
  return rows_->Choices().at(static_cast<size_t>(index));
}

int PickList::ContentHeight() const {
  int height = 0;
  for (int i = 0; widget_ && i < Count(); ++i)
    height += static_cast<View*>(widget_)->Drawn().HeightOf(rows_->index(i));
  return height;
}

int PickList::Highlight() const {
  return widget_ ? static_cast<View*>(widget_)->currentIndex().row() : -1;
}

void PickList::SetHighlight(int index) {
  if (!widget_ || index < -1 || index >= Count()) return;
  auto& view = *static_cast<View*>(widget_);
  if (index < 0) return view.selectionModel()->clear();
  view.setCurrentIndex(rows_->index(index));
  view.scrollTo(rows_->index(index));
}

}  // namespace zelvane
