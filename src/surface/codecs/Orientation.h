#pragma once

#include <cstdint>

#include "surface/codecs/ByteView.h"
#include "surface/raster/Bitmap.h"

namespace zelvane {

/// Turns and mirrors as a file's orientation of 1 to 8 wants it: from 5 on rows stand for columns. Any other
/// number leaves the picture as it is stored.
Bitmap Oriented(Bitmap stored, uint32_t orientation);

/// The orientation in a camera's notes, the EXIF block behind its six bytes of name; 1 where it tells none.
uint32_t ExifOrientation(ByteView notes);

}  // namespace zelvane
