#include "surface/raster/Contrast.h"

#include <algorithm>
#include <cmath>

namespace zelvane {
namespace {

constexpr Pixel kBlackInk = 0xFF000000, kWhiteInk = 0xFFFFFFFF;
constexpr double kHighest = 21;

/// Linear light of an sRGB component, 0 to 1.
double Linear(Pixel component) {
  const double value = component / 255.0;
  return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double Luminance(Pixel pixel) {
  return 0.2126 * Linear(pixel >> 16 & 0xFF) + 0.7152 * Linear(pixel >> 8 & 0xFF) +
         0.0722 * Linear(pixel & 0xFF);
}

Pixel Choose(Pixel ink, double of_ink, double of_black, double of_white) {
  if (of_ink >= kReadableContrast) return ink;
  return of_black >= of_white ? kBlackInk : kWhiteInk;
}

}  // namespace

double ContrastRatio(Pixel one, Pixel other) {
  const double a = Luminance(one), b = Luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

double LowestContrast(const Bitmap& ground, const Rect& part, Pixel ink) {
  const Rect inside = part.Intersected({0, 0, ground.Width(), ground.Height()});
  double lowest = kHighest;
  Pixel last = 0;  // no pixel is 0, so the first one counts
  for (int y = inside.top; y < inside.bottom; ++y) {
    const Pixel* row = ground.Row(y);
    for (int x = inside.left; x < inside.right; ++x) {
      if (row[x] == last) continue;
      last = row[x];
      lowest = std::min(lowest, ContrastRatio(last, ink));
    }
  }
  return lowest;
}

Pixel ReadableInk(const Bitmap& ground, const Rect& part, Pixel ink) {
  const auto lowest = [&](Pixel one) { return LowestContrast(ground, part, one); };
  return Choose(ink, lowest(ink), lowest(kBlackInk), lowest(kWhiteInk));
}

Pixel ReadableInk(Pixel ground, Pixel ink) {
  return Choose(ink, ContrastRatio(ground, ink), ContrastRatio(ground, kBlackInk),
                ContrastRatio(ground, kWhiteInk));
}

}  // namespace zelvane
