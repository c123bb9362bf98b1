#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "surface/codecs/PictureDecoder.h"
#include "surface/raster/Bitmap.h"

/// Windows' device-independent bitmaps, as they stand in bitmap files and in icons.
namespace zelvane {

struct DibHeader {
  int64_t width = 0, height = 0;
  bool top_down = false;
  uint32_t depth = 0;
  uint32_t compression = 0;
  /// Red, green, blue, alpha; for depths of 16 and 32.
  std::array<uint32_t, 4> masks{};
  /// For depths up to 8, and how many colours the file has.
  std::array<Pixel, 256> palette{};
  uint32_t colours = 0;
  /// Where the header, its masks and its palette end.
  uint64_t end = 0;

  /// Bytes from one row to the next, and bytes of a row that say something.
  uint64_t Stride() const { return (static_cast<uint64_t>(width) * depth + 31) / 32 * 4; }
  uint64_t RowBytes() const { return (static_cast<uint64_t>(width) * depth + 7) / 8; }
};

/// The header at the beginning of `dib`, which an icon's doubled height is still in. No value where the
/// header is of no known kind.
std::optional<DibHeader> ReadDibHeader(ByteView dib);

/// The pixels at the beginning of `data`, their opacity in the top byte (0xFF without a mask for it). No
/// value where any are missing, also for want of their colour.
std::optional<Bitmap> ReadDibPixels(const DibHeader& header, ByteView data, ReadingWatch& watch);

}  // namespace zelvane
