#include "colour/ColorRamp.h"

#include <algorithm>

#include "surface/raster/Numbers.h"

namespace zelvane {
namespace {

/// Reaches beyond the lowest row of every surface that shows a ramp.
constexpr int kLastRow = 20;

/// A channel on its way from the left to the right of a ramp.
struct Running {
  double value, step;
  Running(int start, int end, int width) : value(start), step(static_cast<double>(start - end) / width) {}
  int Next() {
    value = std::clamp(value - step, 0.0, 255.0);
    return static_cast<int>(RoundHalfEven(value));
  }
};

}  // namespace

void PaintRamp(Canvas& surface, Color left, Color right) {
  const int width = surface.ScaleWidth();
  if (width <= 0) return;
  const Channels start = Split(left), end = Split(right);
  Running red(start.red, end.red, width), green(start.green, end.green, width),
      blue(start.blue, end.blue, width);
  for (int x = 0; x <= width; ++x) {
    const int r = red.Next(), g = green.Next(), b = blue.Next();
    const auto column = static_cast<Single>(x);
    surface.Line(column, 0, column, kLastRow, RGB(r, g, b));
  }
}

}  // namespace zelvane
