#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include "surface/forms/controls/Control.h"

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace zelvane {

class Form;

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

  /// Brings a key to `control`: first its form hears of it if the form has key preview, then the control. For
  /// a key that arrives at a form itself this is the form's own event, once.
  static void BringKey(Control& control, const QKeyEvent& key);
  /// The form that `control` stands in, or is; null outside any.
  static Form* FormOf(Control& control);

 private:
  void Press(const QMouseEvent& event);
  void Release(const QMouseEvent& event);
  bool Wheel(const QWheelEvent& event);
  bool Key(const QKeyEvent& event);
  void Point(const Control::PointerEvent& handler, int button, const QMouseEvent& event);
  bool IsPassedOn() const;

  Control& control_;
  QPointer<QWidget> widget_;
  /// The press that the coming release may end as a click.
  bool clicking_ = false;
};

}  // namespace zelvane
