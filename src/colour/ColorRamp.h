#pragma once

#include "surface/raster/Canvas.h"

namespace zelvane {

/// Paints a horizontal ramp over the top 21 rows of a surface. Column x of a surface w wide has, channel by
/// channel, left + (right - left) * (x + 1) / w, rounded, halves to even.
void PaintRamp(Canvas& surface, Color left, Color right);

}  // namespace zelvane
