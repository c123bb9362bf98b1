#include "document/window/ViewScroller.h"

#include <algorithm>
#include <cmath>

namespace zelvane {
namespace {

bool ScrollTo(ScrollBar& bar, double value) {
  const int16_t before = bar.Value();
  const double within = std::clamp(value, 0.0, static_cast<double>(bar.Max()));
  bar.SetValue(static_cast<int16_t>(RoundHalfEven(within)));
  return bar.Value() != before;
}

/// How far to go in one step when the pointer is so far beyond either end of the view; 0 within it.
Single StepTowards(Single pointer, Single extent) {
  constexpr Single kSlowest = 4, kQuickest = 64;
  const Single beyond = pointer < 0 ? pointer : std::max(0.0F, pointer - extent);
  if (beyond == 0) return 0;
  return std::copysign(std::clamp(std::fabs(beyond) / 2, kSlowest, kQuickest), beyond);
}

/// How far to go for a stretch of the viewport to be within its extent; its beginning comes first.
Single WayInto(Single first, Single last, Single extent) {
  return std::min(first, std::max(0.0F, last - extent));
}

/// Where the unit goes with its pixel: to the same part of it.
int Zoomed(Single unit, int before, int after) {
  const auto whole = static_cast<int>(std::floor(unit)),
             pixel = static_cast<int>(std::floor(unit / static_cast<Single>(before)));
  return pixel * after + (whole - pixel * before) * after / before;
}

}  // namespace

void ViewScroller::PutPointer(Single X, Single Y) {
  pointer_ = {X + document_.PaintArea.Left() + kFrame, Y + document_.PaintArea.Top() + kFrame};
}

bool ViewScroller::ScrollBy(Single across, Single down) {
  const bool moved_across = ScrollTo(document_.HScroll1, document_.HScroll1.Value() + double{across});
  return ScrollTo(document_.VScroll1, document_.VScroll1.Value() + double{down}) || moved_across;
}

bool ViewScroller::ScrollByKey(int16_t KeyCode) {
  constexpr Single kStep = 24, kWhole = 1 << 15;
  const Single page = document_.Back.Height();
  switch (KeyCode) {
    case kKeyLeft:
      return ScrollBy(-kStep, 0);
    case kKeyRight:
      return ScrollBy(kStep, 0);
    case kKeyUp:
      return ScrollBy(0, -kStep);
    case kKeyDown:
      return ScrollBy(0, kStep);
    case kKeyPageUp:
      return ScrollBy(0, -page);
    case kKeyPageDown:
      return ScrollBy(0, page);
    case kKeyHome:
      return ScrollBy(-kWhole, -kWhole);
    case kKeyEnd:
      return ScrollBy(kWhole, kWhole);
    default:
      return false;
  }
}

void ViewScroller::ScrollInto(const Rect& units) {
  const PictureView& view = document_.PaintArea;
  ScrollBy(WayInto(static_cast<Single>(units.left) + kFrame + view.Left(),
                   static_cast<Single>(units.right) + kFrame + view.Left(), document_.Back.Width()),
           WayInto(static_cast<Single>(units.top) + kFrame + view.Top(),
                   static_cast<Single>(units.bottom) + kFrame + view.Top(), document_.Back.Height()));
}

bool ViewScroller::IsPointerBeyondView() const {
  return StepTowards(pointer_.x, document_.Back.Width()) != 0 ||
         StepTowards(pointer_.y, document_.Back.Height()) != 0;
}

bool ViewScroller::ScrollToPointer() {
  return ScrollBy(StepTowards(pointer_.x, document_.Back.Width()),
                  StepTowards(pointer_.y, document_.Back.Height()));
}

void ViewScroller::KeepPixel(int multiple_before, Single X, Single Y) {
  const int after = document_.ZoomMultiple();
  ScrollTo(document_.HScroll1, Zoomed(X, multiple_before, after) - std::floor(pointer_.x - kFrame));
  ScrollTo(document_.VScroll1, Zoomed(Y, multiple_before, after) - std::floor(pointer_.y - kFrame));
}

void ViewScroller::Grab() {
  grabbed_ = {PointerX(), PointerY()};
}

void ViewScroller::Drag() {
  if (grabbed_) ScrollBy(grabbed_->x - PointerX(), grabbed_->y - PointerY());
}

}  // namespace zelvane
