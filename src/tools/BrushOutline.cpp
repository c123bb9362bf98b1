#include "tools/BrushOutline.h"

#include <cmath>

#include "tools/NumericOptions.h"

namespace zelvane {
namespace {

constexpr Single kSmallestOutline = 5;  // units of the view

/// Pixels that a brush reaches on each axis: from `before` left of the pointer on, `width` in all.
struct Reach {
  Single before = 0, width = 0;
};

/// A dab reaches its size to each side.
Reach OfDab(NumericOption option) {
  const auto size = static_cast<Single>(RoundHalfEven(OptionOf(option).Value));
  return {size, 2 * size + 1};
}

/// A pen of even width stands half a pixel up and left.
Reach OfPen(NumericOption option) {
  const auto width = static_cast<Single>(RoundHalfEven(OptionOf(option).Value));
  return {std::floor(width / 2), width};
}

Reach OfCurrentTool() {
  switch (State.CurrentTool) {
    case kPenTool:
      return OfPen(kPenWidth);
    case kEraserTool:
      return OfPen(kEraserWidth);
    case kAirbrushTool:
      return OfDab(kAirbrushSize);
    case kBrightenTool:
      return OfDab(kBrightenSize);
    case kBlurTool:
      return OfDab(kBlurSize);
    default:
      return {};
  }
}

}  // namespace

void ShowBrushOutline(ImageDocument& document, int16_t X, int16_t Y) {
  const Reach reach = OfCurrentTool();
  const Single z = document.ZoomMultiple();
  const bool shown = reach.width * z >= kSmallestOutline;
  if (shown)
    document.BrushOutline.Move((X - reach.before) * z, (Y - reach.before) * z, reach.width * z,
                               reach.width * z);
  document.BrushOutline.SetVisible(shown);
}

}  // namespace zelvane
