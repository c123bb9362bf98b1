#pragma once

#include "effects/pixels/Effect.h"
#include "surface/raster/Bitmap.h"

namespace zelvane {

/// How large a copy is that an effect is tried on while its sliders move: pixels of it a pixel of the
/// picture, at most 1.
double ReducedScale(const Bitmap& picture);

/// The picture's areas averaged; itself where the scale is 1.
Bitmap Reduced(const Bitmap& picture, double scale);

/// The values with their lengths fit for a reduced copy.
Values Reduced(const Effect& effect, Values values, double scale);

}  // namespace zelvane
