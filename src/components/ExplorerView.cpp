#include "components/ExplorerView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPersistentModelIndex>
#include <QTreeView>

#include "components/FolderTree.h"
#include "surface/forms/controls/Events.h"
#include "surface/forms/controls/RowPainter.h"
#include "surface/system/files/Files.h"
#include "surface/system/files/Folders.h"

namespace zelvane {
namespace {

constexpr int kPatience = 150;  // milliseconds

}  // namespace

class ExplorerDisplay::View : public QTreeView {
 public:
  View(QWidget* parent, ExplorerDisplay& display) : QTreeView(parent), display_(display) {
    auto* painter = new RowPainter(this);
    painter->SetIcon("folder");
    setItemDelegate(painter);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    // An opened folder that holds none loses its arrow.
    connect(this, &QTreeView::expanded, this, [this](const QModelIndex& folder) {
      if (!model()->hasChildren(folder)) scheduleDelayedItemsLayout();
    });
  }

  bool HasChosen() const { return chosen_.isValid(); }

  /// None where the index isn't valid.
  void Choose(const QModelIndex& folder) {
    writing_ = true;
    chosen_ = folder;
    if (folder.isValid()) {
      for (QModelIndex above = folder.parent(); above.isValid(); above = above.parent()) expand(above);
      setCurrentIndex(folder);
      scrollTo(folder);
    } else {
      selectionModel()->clear();
    }
    writing_ = false;
  }

  void ShowLate(const QModelIndex& folder) {
    scheduleDelayedItemsLayout();
    if (IsWithin(chosen_, folder)) scrollTo(chosen_);
  }

 protected:
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent*) const override {
    // No key that is held takes the choice away.
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
  }
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override {
    QTreeView::selectionChanged(selected, deselected);
    if (writing_ || selected.isEmpty()) return;
    chosen_ = selected.indexes().front();
    display_.Take(display_.folders_->PathOf(chosen_));
  }
  void rowsAboutToBeRemoved(const QModelIndex& parent, int first, int last) override {
    bool goes = false;
    for (int row = first; row <= last; ++row) goes |= IsWithin(chosen_, model()->index(row, 0, parent));
    writing_ = true;
    QTreeView::rowsAboutToBeRemoved(parent, first, last);
    writing_ = false;
    // The toolkit has chosen a neighbour in its place.
    if (goes) Choose({});
  }
  void keyPressEvent(QKeyEvent* event) override {
    // The toolkit would open all that is below, the whole disk.
    if (event->key() == Qt::Key_Asterisk) return expand(currentIndex());
    QTreeView::keyPressEvent(event);
  }
  void showEvent(QShowEvent* event) override {
    QTreeView::showEvent(event);
    if (HasChosen()) scrollTo(chosen_, PositionAtCenter);
  }
  /// The chosen row is marked right across.
  void resizeEvent(QResizeEvent* event) override {
    header()->setMinimumSectionSize(viewport()->width());
    QTreeView::resizeEvent(event);
  }

 private:
  static bool IsWithin(QModelIndex folder, const QModelIndex& other) {
    while (folder.isValid() && folder != other) folder = folder.parent();
    return folder.isValid();
  }

  ExplorerDisplay& display_;
  QPersistentModelIndex chosen_;
  bool writing_ = false;
};

ExplorerDisplay::ExplorerDisplay(Control& parent, const std::string& name)
    : Control(&parent, name, new View(parent.Widget(), *this)), folders_(std::make_unique<FolderTree>()) {
  Tree()->setModel(folders_.get());
  folders_->OnChange = [this] { FireEvent(OnFoldersChanged); };
  folders_->OnLate = [this](const QModelIndex& folder) {
    if (View* tree = Tree()) tree->ShowLate(folder);
  };
}

ExplorerDisplay::~ExplorerDisplay() = default;

ExplorerDisplay::View* ExplorerDisplay::Tree() const {
  return static_cast<View*>(widget_);
}

void ExplorerDisplay::SetPath(const std::string& path) {
  std::string whole = AbsolutePath(path);
  while (whole.size() > 1 && whole.back() == '/') whole.pop_back();
  const std::optional<bool> is_folder = whole.empty() ? false : IsFolder(whole, kPatience);
  if (is_folder == false) return;
  if (View* tree = Tree()) tree->Choose(is_folder ? folders_->Find(whole) : QModelIndex());
  Take(whole);
}

void ExplorerDisplay::Refresh() {
  folders_->Refresh();
  View* tree = Tree();
  if (!tree || tree->HasChosen() || Path_.empty()) return;
  if (IsFolder(Path_, kPatience).value_or(false)) tree->Choose(folders_->Find(Path_));
}

void ExplorerDisplay::Take(const std::string& path) {
  Path_ = path;
  // By a copy, as the handler may choose another one.
  FireEvent(OnChange, std::string(path));
}

}  // namespace zelvane
