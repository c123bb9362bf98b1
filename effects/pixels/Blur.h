#pragma once

#include <functional>

#include "effects/pixels/Work.h"
#include "surface/raster/Bitmap.h"

namespace zelvane {

/// Hands each row of the picture, blurred, to `take`: four numbers a pixel (blue, green, red, and one of no
/// meaning), 0 to 255. The blur is Gaussian with a standard deviation of `sigma` pixels, 0 for none, cut off
/// at three times that; pixels beyond the picture repeat its edge. Rows come from several threads.
void BlurRows(const Bitmap& picture, double sigma, Work& work,
              const std::function<void(int y, const float* row)>& take);

}  // namespace zelvane
