#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include "surface/forms/controls/Control.h"

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace zelvane {

/// Turns what happens to a control's widget into the control's events. Every control with a widget has one.
///
/// A control that goes takes its relay along, so that a handler may destroy its own control: whatever follows
/// the call of a handler first looks whether the relay still stands.
class EventRelay : public QObject {
 public:
  EventRelay(Control& control, QWidget& widget);

  bool eventFilter(QObject* watched, QEvent* event) override;

  /// Null once the toolkit has destroyed it, as it does with the children of a widget that goes.
  QWidget* Widget() const { return widget_; }

 private:
  void Press(const QMouseEvent& event);
  void Move(const QMouseEvent& event);
  void Release(const QMouseEvent& event);
  bool Wheel(const QWheelEvent& event);
  bool Key(const QKeyEvent& event);
  void BringKey(const QKeyEvent& event);
  Control* Previewer() const;
  void Point(const Control::PointerEvent& handler, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);
  Single Across(double pixel) const;
  bool IsPassedOn() const;

  Control& control_;
  QPointer<QWidget> widget_;
  /// The buttons that were pressed here and not let go since.
  Qt::MouseButtons held_;
  /// Where the pointer was last, in pixels of the widget.
  QPointF pointer_;
  /// The press that the coming release may end as a click.
  bool clicking_ = false;
};

}  // namespace zelvane
