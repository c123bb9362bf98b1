#pragma once

#include <cstdlib>

#include "surface/codecs/PictureDecoder.h"

namespace zelvane {

/// Ends the program where a picture that was read isn't within the limit, or not opaque everywhere.
inline void ExpectWhole(const Bitmap& picture, SizeLimit limit) {
  if (!limit.Admits(picture.Width(), picture.Height())) std::abort();
  for (int y = 0; y < picture.Height(); ++y) {
    for (int x = 0; x < picture.Width(); ++x) {
      if (picture.Row(y)[x] >> 24 != 0xFF) std::abort();
    }
  }
}

}  // namespace zelvane
