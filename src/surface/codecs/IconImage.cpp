#include "surface/codecs/IconImage.h"

#include "surface/codecs/Dib.h"

namespace zelvane {

namespace {

bool HasOpacity(const Bitmap& bitmap) {
  for (int y = 0; y < bitmap.Height(); ++y) {
    for (int x = 0; x < bitmap.Width(); ++x) {
      if (bitmap.Row(y)[x] >> 24 != 0) return true;
    }
  }
  return false;
}

/// Makes the pixels clear that the mask, rows of bits from the bottom, has set.
void ApplyMask(Bitmap& bitmap, ByteView mask) {
  const uint64_t stride = (static_cast<uint64_t>(bitmap.Width()) + 31) / 32 * 4;
  for (int y = 0; y < bitmap.Height(); ++y) {
    const ByteView bits = mask.From(stride * static_cast<uint64_t>(bitmap.Height() - 1 - y));
    Pixel* row = bitmap.WritableRow(y);
    for (uint32_t x = 0; x < static_cast<uint32_t>(bitmap.Width()); ++x) {
      const bool clear = bits.At(x / 8) >> (7 - x % 8) & 1;
      row[x] = clear ? 0 : row[x] | 0xFF000000u;
    }
  }
}

/// Opacity in the colours counts more than the mask, but for old writers that leave it at zero everywhere.
std::optional<Bitmap> DecodeMasked(ByteView picture, SizeLimit limit, ReadingWatch& watch) {
  auto header = ReadDibHeader(picture);
  if (!header) return std::nullopt;
  header->height /= 2;
  if (!limit.Admits(header->width, header->height) || header->top_down) return std::nullopt;
  if (header->depth == 32) header->masks[3] = 0xFF000000u;
  const ByteView data = picture.From(header->end);
  auto bitmap = ReadDibPixels(*header, data, watch);
  if (!bitmap || (header->depth == 32 && HasOpacity(*bitmap))) return bitmap;
  const auto rows = static_cast<uint64_t>(header->height);
  const uint64_t mask_stride = (static_cast<uint64_t>(header->width) + 31) / 32 * 4;
  const uint64_t mask_at = header->Stride() * rows;
  if (!data.Has(mask_at, mask_stride * rows)) return std::nullopt;
  ApplyMask(*bitmap, data.From(mask_at));
  return bitmap;
}

}  // namespace

bool IsPng(ByteView picture) {
  return picture.StartsWith("\x89PNG\r\n\x1A\n", 8);
}

std::optional<Bitmap> DecodeIconImage(ByteView picture, SizeLimit limit, ReadingWatch& watch) {
  return IsPng(picture) ? DecodeSeeThroughPng(picture, limit, watch) : DecodeMasked(picture, limit, watch);
}

}  // namespace zelvane
