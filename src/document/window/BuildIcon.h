#pragma once

#include "surface/raster/Bitmap.h"

namespace zelvane {

/// What an icon is made of, each of 32 x 32: black in `picMask` shows `picImage`, white lets the ground
/// through.
struct IconParts {
  Bitmap picImage, picMask;
};

/// The picture's top left part, unscaled. The colour of its first pixel counts as transparent, and so does
/// what lies beyond a smaller picture.
IconParts BuildIcon(const Bitmap& picture);

}  // namespace zelvane
