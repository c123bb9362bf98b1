#include "surface/forms/controls/ScrollBar.h"

#include <QScrollBar>
#include <algorithm>

#include "surface/forms/controls/Events.h"

namespace zelvane {
namespace {

QScrollBar* Bar(QWidget* widget) {
  return static_cast<QScrollBar*>(widget);
}

}  // namespace

ScrollBar::ScrollBar(Control& parent, const std::string& name, Direction direction)
    : Control(&parent, name,
              new QScrollBar(direction == Direction::Horizontal ? Qt::Horizontal : Qt::Vertical,
                             parent.Widget())) {
  QScrollBar* bar = Bar(widget_);
  width_ = NaturalWidth();
  height_ = NaturalHeight();
  bar->setRange(0, max_);
  ShowEnabled();
  // The keyboard stays with the picture that is scrolled.
  bar->setFocusPolicy(Qt::NoFocus);
  QObject::connect(bar, &QScrollBar::valueChanged, bar,
                   [this, bar](int value) { Moved(value, bar->isSliderDown()); });
  QObject::connect(bar, &QScrollBar::sliderReleased, bar, [this] { Released(); });
}

void ScrollBar::SetEnabled(bool enabled) {
  enabled_ = enabled;
  ShowEnabled();
}

/// A bar with nothing to scroll looks it.
void ScrollBar::ShowEnabled() {
  if (widget_) widget_->setEnabled(enabled_ && max_ > 0);
}

void ScrollBar::SetMax(int16_t max) {
  max_ = std::max(max, int16_t{0});
  {
    const Writing writing(*this);
    if (widget_) Bar(widget_)->setMaximum(max_);
  }
  ShowEnabled();
  SetValue(value_);
}

void ScrollBar::SetValue(int16_t value) {
  const int16_t taken = std::clamp(value, int16_t{0}, max_);
  {
    const Writing writing(*this);
    if (widget_) Bar(widget_)->setValue(taken);
  }
  if (taken == value_) return;
  value_ = taken;
  FireEvent(OnChange);
}

void ScrollBar::SetLargeChange(int16_t change) {
  if (widget_) Bar(widget_)->setPageStep(change);
}

void ScrollBar::SetSmallChange(int16_t change) {
  if (widget_) Bar(widget_)->setSingleStep(change);
}

/// The user has moved the handle, or the toolkit tells of what was written here.
void ScrollBar::Moved(int value, bool dragged) {
  if (writing_ || value == value_) return;
  value_ = static_cast<int16_t>(value);
  dragged_ = dragged;
  const auto& event = dragged ? OnScroll : OnChange;
  FireEvent(event);
}

void ScrollBar::Released() {
  if (!dragged_) return;
  dragged_ = false;
  FireEvent(OnChange);
}

}  // namespace zelvane
