#include "colour/ColorFields.h"

#include <array>

#include "surface/raster/Numbers.h"

namespace zelvane {
namespace {

constexpr Single kRight = 17;
constexpr int kFull = 255, kBands = 6;

using Values = std::array<double, 3>;

Values ValuesOf(Color color) {
  const Channels split = Split(color);
  return {static_cast<double>(split.red), static_cast<double>(split.green), static_cast<double>(split.blue)};
}

Color Rounded(const Values& values) {
  const auto whole = [&](size_t i) { return static_cast<int>(RoundHalfEven(values.at(i))); };
  return RGB(whole(0), whole(1), whole(2));
}

Values Less(const Values& values, const Values& steps) {
  return {values[0] - steps[0], values[1] - steps[1], values[2] - steps[2]};
}

Values Divided(const Values& values, double steps) {
  return {values[0] / steps, values[1] / steps, values[2] / steps};
}

}  // namespace

void PaintHueStrip(Canvas& ColorMap) {
  const double band = static_cast<double>(ColorMap.ScaleHeight()) / kBands, step = kFull / band;
  const int last = static_cast<int>(RoundHalfEven(band));
  ColorMap.SetFillStyle(kFillSolid);
  for (int i = 0; i <= last; ++i) {
    const int t = static_cast<int>(RoundHalfEven(step * i));
    const int u = static_cast<int>(kFull - RoundHalfEven(step * i));
    const Color colours[kBands] = {RGB(kFull, 0, t), RGB(u, 0, kFull), RGB(0, t, kFull),
                                   RGB(0, kFull, u), RGB(t, kFull, 0), RGB(kFull, u, 0)};
    for (int k = 0; k < kBands; ++k) {
      const auto top = static_cast<Single>(k * band + i);
      const Single bottom = k == 0 ? top : top + 2;
      ColorMap.SetFillColor(colours[k]);
      ColorMap.Box(0, top, kRight, bottom, colours[k]);
    }
  }
}

void PaintColorField(Canvas& ColorSel, Color hue) {
  const int width = ColorSel.ScaleWidth(), height = ColorSel.ScaleHeight();
  Values top = {kFull, kFull, kFull};
  const Values across = Divided(Less(top, ValuesOf(hue)), width - 1);
  for (int x = 0; x < width; ++x) {
    const Values down = Divided(top, height - 1);
    Values here = top;
    for (int y = 0; y < height; ++y) {
      ColorSel.SetPixelV(x, y, Rounded(here));
      here = Less(here, down);
    }
    top = Less(top, across);
  }
}

}  // namespace zelvane
