#pragma once

#include <cstddef>
#include <functional>

#include "surface/raster/Bitmap.h"

/// Files' bytes out of pictures, one writer a kind. A writer hands the file over piece by piece, from its
/// first byte to its last, and yields false where the sink refused, the picture is empty, or the kind of file
/// can't hold it. Want of memory is thrown.
namespace zelvane {

/// Takes the next bytes of the file. False: it can't, and no more are wanted.
using PieceSink = std::function<bool(const void* bytes, size_t count)>;

/// A Windows bitmap file of 24 bits a pixel.
bool EncodeBmp(const Bitmap& picture, const PieceSink& sink);

/// A GIF file. Up to 256 colours are kept exactly; above, the picture gets the best palette that can be found
/// and is dithered (`IndexedPicture.h`).
bool EncodeGif(const Bitmap& picture, const PieceSink& sink);

/// An icon file of one picture of 32 bits a pixel. Where `mask` is white the ground shows and `image` should
/// be black; where it's black `image` does. Both have the same size, of at most 256 a side.
bool EncodeIco(const Bitmap& image, const Bitmap& mask, const PieceSink& sink);

/// What `EncodeJpeg` takes: a larger number gives a smaller file.
inline constexpr double kLeastCompression = 20, kMostCompression = 130;
/// A baseline JPEG file. A compression of 20 is the library's quality 100, 65 its 85, 130 its 30, in between
/// strictly falling; beyond, it's clamped. Colours are halved in both directions but for the best third.
bool EncodeJpeg(const Bitmap& picture, double compression, const PieceSink& sink);

/// A TIFF file without loss, of 24 bits a pixel.
bool EncodeTiff(const Bitmap& picture, const PieceSink& sink);

}  // namespace zelvane
