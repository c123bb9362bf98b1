#pragma once

#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPointer>
#include <utility>
#include <vector>

#include "surface/forms/windows/MdiForm.h"

namespace zelvane {

/// The size of a child with its frame, which is in the normal state.
QSize WithFrame(const QMdiSubWindow& child, QSize inside);
/// Brings a child's inside to the size of its frame at once, also while it is hidden.
void LayOutChild(QMdiSubWindow& child);

/// The menu bar. Beside its menus it tells the caption of a child that fills the main window.
class CaptionBar : public QMenuBar {
 public:
  using QMenuBar::QMenuBar;
  void SetCaption(const QString& caption);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString caption_;
};

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
  void Dock(PictureSurface& panel, QWidget& widget, Align align);

  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct Panel {
    PictureSurface* surface;
    QPointer<QWidget> widget;
    Align align;
  };
  void LayOut();

  ChildArea* children_;
  std::vector<Panel> panels_;
  bool laying_out_ = false;
};

class MdiForm::Frame : public QMainWindow {
 public:
  Frame();
  void Serve(MdiForm& form) { form_ = &form; }

  CaptionBar& Bar() { return *bar_; }
  DockField& Field() { return *field_; }
  QSize RoomForChildren() const;
  Form* Active() const { return active_; }

  QMdiSubWindow* AddChild(Form& child, QWidget& inside);
  void PlaceChild(QMdiSubWindow& child, QSize inside, bool keeps_place);
  /// While a child comes up the toolkit's word on which one is active doesn't count: the form first hears of
  /// its size, then of its activation.
  void HoldActivation(bool hold) { holding_ = hold; }
  void ActivateChild(Form& child);
  /// The child is about to be hidden: the one that was active before takes its place.
  void LeaveChild(Form& child);
  void RemoveChild(Form& child);

  static void SetChildCaption(QMdiSubWindow& child, const QString& caption);

 private:
  class Child;
  void Activated(QMdiSubWindow* window);
  void SetActive(Form* child);
  void TellCaption();

  MdiForm* form_ = nullptr;
  CaptionBar* bar_;
  DockField* field_;
  Form* active_ = nullptr;
  bool holding_ = false;
};

}  // namespace zelvane
