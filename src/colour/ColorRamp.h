#pragma once

#include "surface/raster/Canvas.h"

namespace zelvane {

/// Paints a horizontal ramp with a `Line` for each column, over rows 0 to 20 of a surface of any height, in
/// its width and mode of drawing. On a surface w wide a channel takes w equal steps from `left` to `right`,
/// added up and limited to 0..255 one by one; column x shows the sum of x + 1 of them, rounded, halves to
/// even. So column 0 is one step away from `left`, and column w - 1 is `right`.
void PaintRamp(Canvas& surface, Color left, Color right);

}  // namespace zelvane
