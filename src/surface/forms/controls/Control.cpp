#include "surface/forms/controls/Control.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTextDocument>
#include <QWidget>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/EventRelay.h"
#include "surface/forms/controls/IconArt.h"
#include "surface/raster/Units.h"

namespace zelvane {

Control::Control(Control* parent, std::string name, QWidget* widget)
    : widget_(widget), parent_(parent), name_(std::move(name)) {
  if (!widget_) return;
  widget_->setObjectName(ToQt(name_));
  relay_ = std::make_unique<EventRelay>(*this, *widget_);
  // The toolkit shows a child made after its window only when told to.
  if (!widget_->isWindow()) widget_->setVisible(visible_);
}

Control::~Control() {
  QWidget* widget = widget_;
  relay_.reset();
  delete widget;
}

void Control::SetParent(Control& parent) {
  parent_ = &parent;
  if (!widget_) return;
  widget_->setParent(parent.widget_);
  Place();
  widget_->setVisible(visible_ && parent.widget_);
}

double Control::UnitsPerPixel() const {
  return !parent_ || parent_->scale_mode_ == Scale::Twips ? kTwipsPerPixel : 1;
}

void Control::Place() {
  if (!widget_) return;
  const double unit = UnitsPerPixel();
  const int inset = parent_ ? parent_->FrameWidth() : 0;
  widget_->setGeometry(ToPlace(left_ / unit) + inset - LeftReach(), ToPlace(top_ / unit) + inset,
                       ToSize(width_ / unit) + LeftReach(), ToSize(height_ / unit));
}

void Control::SetLeft(Single left) {
  left_ = left;
  Place();
}

void Control::SetTop(Single top) {
  top_ = top;
  Place();
}

void Control::SetWidth(Single width) {
  width_ = width;
  Place();
}

void Control::SetHeight(Single height) {
  height_ = height;
  Place();
}

void Control::Move(Single left, Single top) {
  left_ = left;
  top_ = top;
  Place();
}

Single Control::NaturalWidth() const {
  return widget_ ? static_cast<Single>(widget_->sizeHint().width() * UnitsPerPixel()) : 0;
}

Single Control::NaturalHeight() const {
  return widget_ ? static_cast<Single>(widget_->sizeHint().height() * UnitsPerPixel()) : 0;
}

void Control::SetVisible(bool visible) {
  visible_ = visible;
  if (widget_) widget_->setVisible(visible);
}

void Control::SetEnabled(bool enabled) {
  enabled_ = enabled;
  if (widget_) widget_->setEnabled(enabled);
}

void Control::BringToFront() {
  if (widget_) widget_->raise();
}

void Control::SetFocus() {
  if (widget_) widget_->setFocus(Qt::OtherFocusReason);
}

bool Control::HasFocus() const {
  return widget_ && widget_->hasFocus();
}

bool Control::HoldsFocus() const {
  const QWidget* focus = widget_ ? widget_->window()->focusWidget() : nullptr;
  return focus && (focus == widget_ || widget_->isAncestorOf(focus));
}

void Control::SetTakesKeys(bool takes) {
  if (widget_) widget_->setFocusPolicy(takes ? Qt::ClickFocus : Qt::NoFocus);
}

bool Control::TabStop() const {
  return widget_ && (widget_->focusPolicy() & Qt::TabFocus);
}

void Control::SetTabStop(bool stop) {
  if (!widget_) return;
  const int policy = widget_->focusPolicy();
  // A press brings the keyboard to it either way.
  widget_->setFocusPolicy(Qt::FocusPolicy(stop ? policy | Qt::StrongFocus : policy & ~Qt::TabFocus));
}

void Control::SetTakesTab() {
  if (widget_) widget_->setFocusPolicy(Qt::TabFocus);
}

void Control::SetTabAfter(const Control& before) {
  if (widget_ && before.widget_) QWidget::setTabOrder(before.widget_, widget_);
}

void Control::Dock(Control&, Align) {}

void Control::Update() {
  if (!widget_) return;
  // `repaint` would paint the whole widget; the window's own request paints just what is noted.
  QEvent request(QEvent::UpdateRequest);
  QCoreApplication::sendEvent(widget_->window(), &request);
}

void Control::SetToolTip(const std::string& text) {
  if (!widget_) return;
  // A person's text may look like markup, and isn't.
  const QString plain = ToQt(text);
  widget_->setToolTip(Qt::mightBeRichText(plain) ? "<qt>" + plain.toHtmlEscaped() + "</qt>" : plain);
}

void Control::SetAccessibleName(const std::string& name) {
  if (widget_) widget_->setAccessibleName(ToQt(name));
}

void Control::SetMousePointer(int16_t pointer) {
  if (pointer == mouse_pointer_) return;
  mouse_pointer_ = pointer;
  ShowPointer();
}

void Control::SetMouseIcon(const PointerIcon* icon) {
  if (icon == mouse_icon_) return;
  mouse_icon_ = icon;
  if (mouse_pointer_ == kPointerCustom) ShowPointer();
}

void Control::ShowPointer() {
  if (!widget_) return;
  const bool is_drawn = mouse_pointer_ == kPointerCustom && mouse_icon_;
  if (is_drawn) {
    widget_->setCursor(PointerArt(*mouse_icon_, widget_->devicePixelRatioF()));
  } else if (pointer_drawn_) {
    widget_->setCursor(Qt::ArrowCursor);
  }
  pointer_drawn_ = is_drawn;
}

Control::ScreenRect Control::WindowRect() const {
  if (!widget_ || !widget_->isVisible() || widget_->window()->isMinimized()) return {};
  const QPoint corner = widget_->mapToGlobal(QPoint(0, 0));
  return {corner.x(), corner.y(), corner.x() + widget_->width() - 1, corner.y() + widget_->height() - 1};
}

}  // namespace zelvane
