#include "surface/forms/controls/ScrollBar.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOption>
#include <algorithm>

#include "surface/forms/controls/Events.h"

namespace zelvane {
namespace {

constexpr int kFocusInset = 2;  // logical pixels

/// With the keyboard: shows by its handle that it has it, which most desktops leave out, and goes to the
/// right on the right arrow, which the toolkit takes for the left.
class BarView : public QScrollBar {
 public:
  using QScrollBar::QScrollBar;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const bool is_left = event->key() == Qt::Key_Left;
    if (orientation() == Qt::Vertical || (!is_left && event->key() != Qt::Key_Right))
      return QScrollBar::keyPressEvent(event);
    triggerAction(is_left ? SliderSingleStepSub : SliderSingleStepAdd);
  }
  void paintEvent(QPaintEvent* event) override {
    QScrollBar::paintEvent(event);
    if (!hasFocus()) return;
    QStyleOptionSlider bar;
    initStyleOption(&bar);
    QStyleOptionFocusRect frame;
    frame.initFrom(this);
    frame.rect = style()->subControlRect(QStyle::CC_ScrollBar, &bar, QStyle::SC_ScrollBarSlider, this);
    frame.rect.adjust(kFocusInset, kFocusInset, -kFocusInset, -kFocusInset);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, this);
  }
};

QScrollBar* Bar(QWidget* widget) {
  return static_cast<QScrollBar*>(widget);
}

}  // namespace

ScrollBar::ScrollBar(Control& parent, const std::string& name, Direction direction)
    : Control(
          &parent, name,
          new BarView(direction == Direction::Horizontal ? Qt::Horizontal : Qt::Vertical, parent.Widget())) {
  QScrollBar* bar = Bar(widget_);
  width_ = NaturalWidth();
  height_ = NaturalHeight();
  bar->setRange(min_, max_);
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
  if (widget_) widget_->setEnabled(enabled_ && max_ > min_);
}

void ScrollBar::SetMin(int16_t min) {
  SetRange(min, std::max(min, max_));
}

void ScrollBar::SetMax(int16_t max) {
  SetRange(min_, std::max(min_, max));
}

void ScrollBar::SetRange(int16_t min, int16_t max) {
  min_ = min;
  max_ = max;
  {
    const Writing writing(*this);
    if (widget_) Bar(widget_)->setRange(min, max);
  }
  ShowEnabled();
  SetValue(value_);
}

void ScrollBar::SetValue(int16_t value) {
  const int16_t taken = std::clamp(value, min_, max_);
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
