#include <algorithm>
#include <cstring>

#include "surface/codecs/LittleBytes.h"
#include "surface/codecs/PictureEncoder.h"

namespace zelvane {

namespace {

/// The file's header and the picture's.
Bytes Headers(uint64_t width, uint64_t height, uint64_t stride) {
  constexpr uint64_t kFileHeader = 14, kPictureHeader = 40, kPixelsPerMetre = 2835;
  const uint64_t pixels = stride * height;
  Bytes bytes{'B', 'M'};
  PutLittle(bytes, kFileHeader + kPictureHeader + pixels, 4);
  PutLittle(bytes, 0, 4);
  PutLittle(bytes, kFileHeader + kPictureHeader, 4);
  PutLittle(bytes, kPictureHeader, 4);
  PutLittle(bytes, width, 4);
  PutLittle(bytes, height, 4);
  PutLittle(bytes, 1, 2);   // planes
  PutLittle(bytes, 24, 2);  // bits a pixel
  PutLittle(bytes, 0, 4);   // no compression
  PutLittle(bytes, pixels, 4);
  PutLittle(bytes, kPixelsPerMetre, 4);
  PutLittle(bytes, kPixelsPerMetre, 4);
  PutLittle(bytes, 0, 8);  // colours of a palette
  return bytes;
}

/// Three bytes a pixel. Four are stored at a time, of which the next pixel overwrites one.
void PackRow(const Pixel* from, int width, unsigned char* to) {
  for (int x = 0; x + 1 < width; ++x) std::memcpy(to + 3 * x, from + x, 4);
  std::memcpy(to + 3 * (width - 1), from + width - 1, 3);
}

}  // namespace

bool EncodeBmp(const Bitmap& picture, const PieceSink& sink) {
  if (picture.IsEmpty()) return false;
  constexpr size_t kPiece = size_t{1} << 20;
  const size_t stride = (static_cast<size_t>(picture.Width()) * 3 + 3) / 4 * 4;
  const int rows_at_once = static_cast<int>(std::max<size_t>(1, kPiece / stride));
  const Bytes headers =
      Headers(static_cast<uint64_t>(picture.Width()), static_cast<uint64_t>(picture.Height()), stride);
  if (!sink(headers.data(), headers.size())) return false;
  Bytes piece(stride * static_cast<size_t>(rows_at_once));
  for (int bottom = picture.Height(); bottom > 0; bottom -= rows_at_once) {
    const int rows = std::min(rows_at_once, bottom);
    for (int i = 0; i < rows; ++i) {
      PackRow(picture.Row(bottom - 1 - i), picture.Width(), piece.data() + stride * static_cast<size_t>(i));
    }
    if (!sink(piece.data(), stride * static_cast<size_t>(rows))) return false;
  }
  return true;
}

}  // namespace zelvane
