#pragma once

#include "surface/raster/Canvas.h"

namespace zelvane {

/// Paints the hues from red over magenta, blue, cyan, green and yellow downwards, six ramps of one channel
/// each, over columns 0 to 17. The surface is 255 rows high.
void PaintHueStrip(Canvas& ColorMap);

/// Paints white at the left to `hue` at the right, both down to black: on a surface w wide and h high in
/// w - 1 and h - 1 equal steps of each channel, added up and then rounded, halves to even.
void PaintColorField(Canvas& ColorSel, Color hue);

}  // namespace zelvane
