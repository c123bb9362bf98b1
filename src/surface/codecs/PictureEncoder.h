#pragma once

#include <cstddef>
#include <functional>

#include "surface/raster/Bitmap.h"

/// Files' bytes out of pictures, one writer a kind. A writer hands the file over piece by piece, from its
/// first byte to its last.
namespace zelvane {

/// Takes the next bytes of the file. False: it can't, and no more are wanted.
using PieceSink = std::function<bool(const void* bytes, size_t count)>;

/// A Windows bitmap file of 24 bits a pixel. False where the sink refused, or the picture is empty.
bool EncodeBmp(const Bitmap& picture, const PieceSink& sink);

}  // namespace zelvane
