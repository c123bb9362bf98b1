#pragma once

#include <vector>

#include "surface/codecs/Palette.h"

namespace zelvane {

/// For each pixel the place of a colour in the palette, row by row from the top, so that areas keep their
/// mean: what a pixel is off by goes to its neighbours that are still to come (R. W. Floyd, L. Steinberg, An
/// Adaptive Algorithm for Spatial Greyscale, 1976), there and back from row to row. An eighth is dropped:
/// where the palette has nothing to make up with, errors would pile up otherwise.
std::vector<unsigned char> Dither(const Bitmap& picture, const Palette& palette);

}  // namespace zelvane
