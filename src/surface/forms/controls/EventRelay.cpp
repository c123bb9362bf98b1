#include "surface/forms/controls/EventRelay.h"

#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QWheelEvent>
#include <cmath>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/windows/Form.h"

namespace zelvane {
namespace {

/// Pointer positions lie just short of the middle of their pixel, so that they round to it.
constexpr double kWithinPixel = 0.49;

template <class Handler, class... Arguments>
void Fire(const Handler& handler, Arguments... arguments) {
  // Called through a copy: the handler may destroy the control, and itself with it.
  if (!handler) return;
  const Handler standing = handler;
  standing(arguments...);
}

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
      if (enabled) {
        const auto& move = static_cast<const QMouseEvent&>(*event);
        Point(control_.OnMouseMove, ButtonsOf(move.buttons()), move);
      }
      break;
    case QEvent::MouseButtonRelease:
      if (enabled) Release(static_cast<const QMouseEvent&>(*event));
      break;
    case QEvent::Leave:
      Fire(control_.OnMouseLeave);
      break;
    case QEvent::Wheel:
      return enabled && Wheel(static_cast<const QWheelEvent&>(*event));
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      if (enabled) return Key(static_cast<const QKeyEvent&>(*event));
      break;
    case QEvent::FocusIn:
      if (MovesFocus(*event)) Fire(control_.OnGotFocus);
      break;
    case QEvent::FocusOut:
      if (MovesFocus(*event)) Fire(control_.OnLostFocus);
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
  const int frame = control_.FrameWidth();
  const auto place = [frame](double pixels) {
    return static_cast<Single>(std::floor(pixels) - frame + 0.49);
  };
  const auto notches = [](int units) { return static_cast<Single>(units) / 120; };
  Fire(control_.OnMouseWheel, ShiftOf(event.modifiers()), place(event.position().x()),
       place(event.position().y()), notches(event.angleDelta().x()), notches(event.angleDelta().y()));
  return true;
}

void EventRelay::Press(const QMouseEvent& event) {
  BringToFront(widget_);
  const QPointer<EventRelay> standing(this);
  const bool is_second = event.type() == QEvent::MouseButtonDblClick && control_.OnDblClick;
  clicking_ = event.button() == Qt::LeftButton && !is_second;
  if (is_second) return Fire(control_.OnDblClick);
  Point(control_.OnMouseDown, ButtonsOf(event.button()), event);
}

void EventRelay::Release(const QMouseEvent& event) {
  const bool is_click = event.button() == Qt::LeftButton && clicking_ && control_.ClicksByPointer() &&
                        widget_->rect().contains(event.position().toPoint());
  if (event.button() == Qt::LeftButton) clicking_ = false;
  const QPointer<EventRelay> standing(this);
  Point(control_.OnMouseUp, ButtonsOf(event.button()), event);
  if (standing && is_click) Fire(control_.OnClick);
}

void EventRelay::Point(const Control::PointerEvent& handler, int button, const QMouseEvent& event) {
  const double unit = control_.ScaleMode() == Scale::Twips ? kPixelTwips : 1;
  const auto place = [&](double pixel) {
    return static_cast<Single>((std::floor(pixel) - control_.FrameWidth() + kWithinPixel) * unit);
  };
  Fire(handler, static_cast<int16_t>(button), ShiftOf(event.modifiers()), place(event.position().x()),
       place(event.position().y()));
}

/// A key that a control leaves alone comes to the widgets round it next, for whom it isn't meant.
bool EventRelay::IsPassedOn() const {
  const QWidget* focus = KeyReceiver(*widget_);
  return focus && focus != widget_ && widget_->isAncestorOf(focus);
}

bool EventRelay::Key(const QKeyEvent& event) {
  if (IsPassedOn()) return false;
  if (event.type() == QEvent::KeyRelease && event.isAutoRepeat()) return false;
  const QPointer<EventRelay> standing(this);
  const QPointer<QWidget> focus = KeyReceiver(*widget_);
  BringKey(control_, event);
  // Where the handlers have moved the keyboard on, the key has done its work.
  return !standing || !widget_ || KeyReceiver(*widget_) != focus;
}

Form* EventRelay::FormOf(Control& control) {
  for (Control* one = &control; one; one = one->Parent()) {
    if (auto* form = dynamic_cast<Form*>(one)) return form;
  }
  return nullptr;
}

void EventRelay::BringKey(Control& control, const QKeyEvent& key) {
  const bool is_press = key.type() == QEvent::KeyPress;
  const int16_t code = KeyCodeOf(key), shift = ShiftOf(key.modifiers());
  const QPointer<EventRelay> standing(control.relay_.get());
  Form* form = FormOf(control);
  if (form && form != &control && form->key_preview_) {
    Fire(is_press ? form->OnKeyDown : form->OnKeyUp, code, shift);
    if (!standing) return;
  }
  Fire(is_press ? control.OnKeyDown : control.OnKeyUp, code, shift);
}

}  // namespace zelvane
