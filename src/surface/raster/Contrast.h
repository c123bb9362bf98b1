#pragma once

#include "surface/raster/Bitmap.h"
#include "surface/raster/Color.h"
#include "surface/raster/Rect.h"

namespace zelvane {

/// From this contrast on a text of ordinary size reads (Web Content Accessibility Guidelines 2.1, level AA).
inline constexpr double kReadableContrast = 4.5;

/// How far two colours stand apart: 1 for equal ones to 21 for black and white (same source: the ratio of the
/// relative luminances, each with 0.05 added).
double ContrastRatio(Pixel one, Pixel other);

/// The lowest contrast of `ink` to what lies in `part` of `ground`; 21 where nothing does.
double LowestContrast(const Bitmap& ground, const Rect& part, Pixel ink);

/// `ink` where it reads on all that lies in `part`; otherwise black or white, whichever reads better there.
Pixel ReadableInk(const Bitmap& ground, const Rect& part, Pixel ink);
/// The same on one colour.
Pixel ReadableInk(Pixel ground, Pixel ink);

}  // namespace zelvane
