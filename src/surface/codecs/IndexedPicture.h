#pragma once

#include <vector>

#include "surface/codecs/Palette.h"

namespace zelvane {

struct IndexedPicture {
  Palette palette;
  /// For each pixel the place of its colour in the palette, row by row from the top.
  std::vector<unsigned char> places;
};

/// Exact where the picture has no more than `kPaletteSize` colours. Where it has more, but a palette holds
/// the very colours of nearly all pixels, the others get the nearest one; else it's dithered.
IndexedPicture ToIndexed(const Bitmap& picture);

}  // namespace zelvane
