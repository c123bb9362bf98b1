#pragma once

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <utility>
#include <vector>

#include "surface/forms/controls/Control.h"

namespace zelvane {

/// The size of a child with its frame, which is in the normal state.
QSize WithFrame(const QMdiSubWindow& child, QSize inside);
/// Brings a child's inside to the size of its frame at once, also while it is hidden.
void LayOutChild(QMdiSubWindow& child);

/// The part of the main window where the children are.
class ChildArea : public QMdiArea {
 public:
  explicit ChildArea(QWidget* parent);
  /// Gives a new child its size and place, now or, while the area isn't shown, together with it. `inside` is
  /// the size that it asks for, 0 leaves it to the area.
  void PlaceChild(QMdiSubWindow& child, QSize inside, bool keeps_place);
  /// Takes back the place that a child waits for.
  void Forget(const QMdiSubWindow& child);
  void Cascade();
  /// In columns, each with as many windows as rows; or the other way round.
  void Tile(bool side_by_side);

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  struct Newcomer {
    QMdiSubWindow* child;
    QSize inside;
    bool keeps_place;
  };
  void Place(const Newcomer& newcomer);
  QPoint NextCorner();
  void ShadeBackground();
  QRect Restored(const QList<QMdiSubWindow*>& children, std::vector<QMdiSubWindow*>& normal);

  std::vector<Newcomer> waiting_;
  int cascade_ = 0;
};

/// The inside of the main window under the menu bar: the panels along its sides, the children between them.
class DockField : public QWidget {
 public:
  DockField();
  ChildArea& Children() { return *children_; }
  void Dock(Control& panel, QWidget& widget, Align align);

  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct Panel {
    Control* control;
    QPointer<QWidget> widget;
    Align align;
  };
  void LayOut();

  ChildArea* children_;
  std::vector<Panel> panels_;
  bool laying_out_ = false;
};

}  // namespace zelvane
