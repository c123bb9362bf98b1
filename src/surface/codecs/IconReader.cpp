#include <tuple>

#include "surface/codecs/Dib.h"
#include "surface/codecs/Flatten.h"
#include "surface/codecs/PictureDecoder.h"

namespace zelvane {

namespace {

bool IsPng(ByteView picture) {
  return picture.StartsWith("\x89PNG\r\n\x1A\n", 8);
}

/// What one picture of the icon is worth: its area, then its depth.
using Worth = std::tuple<double, uint32_t>;

Worth WorthOf(ByteView picture) {
  if (IsPng(picture)) {
    const uint32_t channels = picture.At(25) == 2 ? 3 : picture.At(25) == 6 ? 4 : picture.At(25) == 4 ? 2 : 1;
    return {double{1} * picture.Big32(16) * picture.Big32(20), picture.At(24) * channels};
  }
  const auto header = ReadDibHeader(picture);
  if (!header) return {0, 0};
  return {static_cast<double>(header->width) * static_cast<double>(header->height / 2), header->depth};
}

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

/// What is written as an icon has 32 pixels a side at most, and its first pixel's colour stands for clear.
bool IsWrittenAlike(const Bitmap& bitmap) {
  constexpr int kLargest = 32;
  if (bitmap.Width() > kLargest || bitmap.Height() > kLargest) return false;
  const Pixel clear = OnWhite(bitmap.Row(0)[0]);
  for (int y = 0; y < bitmap.Height(); ++y) {
    for (int x = 0; x < bitmap.Width(); ++x) {
      const Pixel pixel = bitmap.Row(y)[x];
      if (pixel >> 24 != (OnWhite(pixel) == clear ? 0 : 0xFF)) return false;
    }
  }
  return true;
}

/// A bitmap of twice the height: the colours, above them a mask. Opacity in the colours counts more than the
/// mask, but for old writers that leave it at zero everywhere.
std::optional<DecodedPicture> DecodeEntry(ByteView picture, SizeLimit limit, ReadingWatch& watch) {
  auto header = ReadDibHeader(picture);
  if (!header) return std::nullopt;
  header->height /= 2;
  if (!limit.Admits(header->width, header->height) || header->top_down) return std::nullopt;
  if (header->depth == 32) header->masks[3] = 0xFF000000u;
  const ByteView data = picture.From(header->end);
  auto bitmap = ReadDibPixels(*header, data, watch);
  if (!bitmap) return std::nullopt;
  if (header->depth < 32 || !HasOpacity(*bitmap)) {
    const auto rows = static_cast<uint64_t>(header->height);
    const uint64_t mask_stride = (static_cast<uint64_t>(header->width) + 31) / 32 * 4;
    const uint64_t mask_at = header->Stride() * rows;
    if (!data.Has(mask_at, mask_stride * rows)) return std::nullopt;
    ApplyMask(*bitmap, data.From(mask_at));
  }
  const WrittenKind kind = IsWrittenAlike(*bitmap) ? WrittenKind::Icon : WrittenKind::None;
  FlattenOnWhite(*bitmap);
  return DecodedPicture(std::move(*bitmap), kind);
}

}  // namespace

std::optional<DecodedPicture> DecodeIcon(ByteView bytes, SizeLimit limit, ReadingWatch& watch) {
  constexpr uint64_t kDirectory = 6, kEntry = 16;
  const uint32_t count = bytes.Little16(4);
  if (!bytes.Has(kDirectory, count * kEntry)) return std::nullopt;
  ByteView best;
  Worth best_worth{0, 0};
  for (uint32_t i = 0; i < count; ++i) {
    const uint64_t entry = kDirectory + i * kEntry;
    const uint64_t size = bytes.Little32(entry + 8), at = bytes.Little32(entry + 12);
    if (!bytes.Has(at, size)) return std::nullopt;
    const ByteView picture = bytes.Part(at, size);
    if (const Worth worth = WorthOf(picture); worth > best_worth) {
      best = picture;
      best_worth = worth;
    }
  }
  if (best.Size() == 0) return std::nullopt;
  auto picture = IsPng(best) ? DecodePng(best, limit, watch) : DecodeEntry(best, limit, watch);
  if (picture && count > 1) picture->whole_as = WrittenKind::None;
  return picture;
}

}  // namespace zelvane
