#include "surface/forms/controls/EventRelay.h"

#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QWheelEvent>
#include <cmath>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Events.h"
#include "surface/raster/Units.h"

namespace zelvane {
namespace {

/// A press anywhere in a child window brings it to the front, also on controls that don't take the keyboard.
void BringToFront(QWidget* widget) {
  while (widget && !qobject_cast<QMdiSubWindow*>(widget)) widget = widget->parentWidget();
  auto* window = qobject_cast<QMdiSubWindow*>(widget);
  if (window && window->mdiArea() && window->mdiArea()->activeSubWindow() != window) {
    window->mdiArea()->setActiveSubWindow(window);
  }
}

/// The widget that keys go to; in a window that isn't the active one, would go to.
QWidget* KeyReceiver(const QWidget& part) {
  QWidget* focus = QApplication::focusWidget();
  return focus ? focus : part.window()->focusWidget();
}

/// A key that closes or minimises what has the keyboard, held down, would go on to what has it next.
bool Repeats(const QKeyEvent& event) {
  return event.key() != Qt::Key_Escape && event.key() != Qt::Key_F2;
}

bool MovesFocus(const QEvent& event) {
  const Qt::FocusReason reason = static_cast<const QFocusEvent&>(event).reason();
  return reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason;
}

}  // namespace

EventRelay::EventRelay(Control& control, QWidget& widget) : control_(control), widget_(&widget) {
  widget.setMouseTracking(true);
  widget.setAttribute(Qt::WA_NoMousePropagation);
  widget.setContextMenuPolicy(Qt::PreventContextMenu);
  widget.installEventFilter(this);
  connect(&widget, &QObject::destroyed, this, [this] { control_.widget_ = nullptr; });
}

bool EventRelay::eventFilter(QObject* watched, QEvent* event) {
  if (watched != widget_) return false;
  const bool enabled = widget_->isEnabled();
  const QPointer<EventRelay> standing(this);
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      if (enabled) Press(static_cast<const QMouseEvent&>(*event));
      break;
    case QEvent::MouseMove:
      if (enabled) Move(static_cast<const QMouseEvent&>(*event));
      break;
    case QEvent::MouseButtonRelease:
      if (enabled) Release(static_cast<const QMouseEvent&>(*event));
      break;
    case QEvent::Leave:
      FireEvent(control_.OnMouseLeave);
      break;
    case QEvent::Wheel:
      return enabled && Wheel(static_cast<const QWheelEvent&>(*event));
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      if (enabled) return Key(static_cast<const QKeyEvent&>(*event));
      break;
    case QEvent::FocusIn:
      if (MovesFocus(*event)) FireEvent(control_.OnGotFocus);
      break;
    case QEvent::FocusOut:
      if (MovesFocus(*event)) FireEvent(control_.OnLostFocus);
      break;
    case QEvent::Show:
      // Only on the screen the widget knows at which ratio its pointer is to be drawn.
      control_.ShowPointer();
      break;
    default:
      break;
  }
  return !standing || !widget_;
}

/// A notch is 120 in the toolkit's units of an eighth of a degree.
bool EventRelay::Wheel(const QWheelEvent& event) {
  if (!control_.OnMouseWheel) return false;
  const auto notches = [](int units) { return static_cast<Single>(units) / 120; };
  FireEvent(control_.OnMouseWheel, ShiftOf(event.modifiers()),
            Across(event.position().x() - control_.LeftReach()), Across(event.position().y()),
            notches(event.angleDelta().x()), notches(event.angleDelta().y()));
  return true;
}

void EventRelay::Press(const QMouseEvent& event) {
  BringToFront(widget_);
  const bool is_second = event.type() == QEvent::MouseButtonDblClick && control_.OnDblClick;
  clicking_ = event.button() == Qt::LeftButton && !is_second;
  held_ |= event.button();
  pointer_ = event.position();
  if (is_second)
    FireEvent(control_.OnDblClick);
  else
    Point(control_.OnMouseDown, event.button(), event.modifiers());
}

/// A button let go over a menu or a dialog that came up meanwhile is missed by the next move: for the control
/// it was let go where the pointer was last.
void EventRelay::Move(const QMouseEvent& event) {
  const QPointer<EventRelay> standing(this);
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
    if (!standing || !held_.testFlag(button) || event.buttons().testFlag(button)) continue;
    held_.setFlag(button, false);
    Point(control_.OnMouseUp, button, event.modifiers());
  }
  if (!standing) return;
  pointer_ = event.position();
  Point(control_.OnMouseMove, event.buttons(), event.modifiers());
}

void EventRelay::Release(const QMouseEvent& event) {
  held_.setFlag(event.button(), false);
  pointer_ = event.position();
  const bool is_click = event.button() == Qt::LeftButton && clicking_ && control_.ClicksByPointer() &&
                        widget_->rect().contains(pointer_.toPoint());
  if (event.button() == Qt::LeftButton) clicking_ = false;
  const QPointer<EventRelay> standing(this);
  Point(control_.OnMouseUp, event.button(), event.modifiers());
  if (standing && is_click) FireEvent(control_.OnClick);
}

/// A place along one axis of the widget in the control's own unit.
Single EventRelay::Across(double pixel) const {
  const double unit = control_.ScaleMode() == Scale::Twips ? kTwipsPerPixel : 1;
  return static_cast<Single>((std::floor(pixel) - control_.FrameWidth() + kWithinPixel) * unit);
}

void EventRelay::Point(const Control::PointerEvent& handler, Qt::MouseButtons buttons,
                       Qt::KeyboardModifiers modifiers) {
  FireEvent(handler, ButtonsOf(buttons), ShiftOf(modifiers), Across(pointer_.x() - control_.LeftReach()),
            Across(pointer_.y()));
}

/// A key that a control leaves alone comes to the widgets round it next, for whom it isn't meant.
bool EventRelay::IsPassedOn() const {
  const QWidget* focus = KeyReceiver(*widget_);
  return focus && focus != widget_ && widget_->isAncestorOf(focus);
}

bool EventRelay::Key(const QKeyEvent& event) {
  if (IsPassedOn()) return false;
  if (event.isAutoRepeat() && (event.type() == QEvent::KeyRelease || !Repeats(event))) return false;
  const QPointer<EventRelay> standing(this);
  const QPointer<QWidget> focus = KeyReceiver(*widget_);
  BringKey(event);
  // Where the handlers have moved the keyboard on, the key has done its work.
  return !standing || !widget_ || KeyReceiver(*widget_) != focus;
}

/// The control round this one, its form, that hears of keys first; null where none does.
Control* EventRelay::Previewer() const {
  for (Control* one = control_.Parent(); one; one = one->Parent()) {
    if (one->PreviewsKeys()) return one;
  }
  return nullptr;
}

void EventRelay::BringKey(const QKeyEvent& event) {
  const bool is_press = event.type() == QEvent::KeyPress;
  const int16_t code = KeyCodeOf(event), shift = ShiftOf(event.modifiers());
  const QPointer<EventRelay> standing(this);
  if (const Control* first = Previewer())
    FireEvent(is_press ? first->OnKeyDown : first->OnKeyUp, code, shift);
  if (standing) FireEvent(is_press ? control_.OnKeyDown : control_.OnKeyUp, code, shift);
}

}  // namespace zelvane
