#pragma once

#include "surface/raster/Canvas.h"

namespace zelvane {

/// Which side a gradient starts at.
enum GradientDirections : int16_t { kTopDown = 1, kBottomUp = 2, kLeftToRight = 3, kRightToLeft = 4 };

/// Shades a surface in 85 bands from `colour` on, each 3 darker than the one before. With `Brighten` they
/// grow lighter instead: by 3 at a time with `Fast`, and then at half the pace over the first 30; by 3 at
/// every third band without. An unknown direction is `kTopDown`.
///
/// The bands are measured in whole twips, 15 to the pixel, so up to three pixels may be left at the far side
/// in the surface's `BackColor`. `kNoColor` paints nothing.
void FillGradient(Canvas& surface, Color colour, int16_t Direction, bool Brighten, bool Fast);

/// Shades a surface in 256 steps between black and `colour`, from the top, the left or the centre on. True
/// once it has painted; `kNoColor` paints nothing. 1, 2 and the odd directions from 5 on begin with black,
/// the others with the colour. `Direction`: 1 and 3 rows, 2 and 4 columns; nested rectangles 5 and 6; rings
/// round the middle 7 and 8, round the corner top left 9 and 10, top right 11 and 12, bottom left 13 and 14,
/// bottom right 15 and 16.
bool FillGradientDirectional(Canvas& surface, Color colour, int16_t Direction);

}  // namespace zelvane
