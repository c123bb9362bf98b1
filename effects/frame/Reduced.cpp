#include "effects/frame/Reduced.h"

#include <algorithm>
#include <cmath>

#include "surface/raster/Canvas.h"

namespace zelvane {

double ReducedScale(const Bitmap& picture) {
  constexpr double kPixels = 500'000;
  const double pixels = static_cast<double>(picture.Width()) * picture.Height();
  return pixels <= kPixels ? 1 : std::sqrt(kPixels / pixels);
}

Bitmap Reduced(const Bitmap& picture, double scale) {
  if (scale == 1) return picture;
  const auto size = [scale](int side) { return std::max(1, static_cast<int>(std::lround(side * scale))); };
  Canvas whole, reduced;
  whole.SetImage(picture);
  reduced.ResizeToOverwrite(size(picture.Width()), size(picture.Height()));
  reduced.StretchBlt(0, 0, reduced.ScaleWidth(), reduced.ScaleHeight(), whole, 0, 0, picture.Width(),
                     picture.Height());
  return reduced.Image();
}

Values Reduced(const Effect& effect, Values values, double scale) {
  for (size_t i = 0; i < values.size(); ++i) {
    if (effect.settings[i].kind == Setting::Kind::Length) values[i] *= scale;
  }
  return values;
}

}  // namespace zelvane
