#pragma once

#include <QMdiArea>
#include <QPointer>
#include <utility>
#include <vector>

#include "surface/forms/controls/Control.h"
#include "surface/forms/windows/ChildFrame.h"

namespace zelvane {

/// The part of the main window where the children are.
class ChildArea : public QMdiArea {
 public:
  explicit ChildArea(QWidget* parent);
  /// Gives a new child its size and place, now or, while the area isn't shown, together with it. `inside` is
  /// the size that it asks for, 0 leaves it to the area. The child follows the room until somebody else gives
  /// it a size, or, where it's smaller than it asked for, another place.
  void PlaceChild(ChildFrame& child, QSize inside, bool keeps_place);
  /// The child asks for another size, to which it grows unless it has one of somebody else's.
  void FitChild(const ChildFrame& child, QSize inside);
  void Forget(const ChildFrame& child);
  void Cascade();
  /// In columns, each with as many windows as rows; or the other way round.
  void Tile(bool side_by_side);

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// A child whose size the area sees to. `given` is what it has got, invalid while it waits for the area.
  struct Fitting {
    ChildFrame* child;
    QSize inside;
    bool keeps_place;
    QRect given = {};
  };
  void Place(Fitting& fitting);
  void Give(Fitting& fitting, const QRect& place);
  static QSize SizeWithin(const Fitting& fitting, QSize room);
  QPoint NextCorner();
  void ShadeBackground();
  QRect Restored(const QList<QMdiSubWindow*>& children, std::vector<QMdiSubWindow*>& normal);

  std::vector<Fitting> fittings_;
  bool giving_ = false;
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
