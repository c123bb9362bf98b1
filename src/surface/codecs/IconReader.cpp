#include <tuple>

#include "surface/codecs/Dib.h"
#include "surface/codecs/Flatten.h"
#include "surface/codecs/IconImage.h"
#include "surface/codecs/PictureDecoder.h"

namespace zelvane {

namespace {

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

std::optional<DecodedPicture> DecodeOnWhite(ByteView picture, SizeLimit limit, ReadingWatch& watch) {
  if (IsPng(picture)) return DecodePng(picture, limit, watch);
  auto bitmap = DecodeIconImage(picture, limit, watch);
  if (!bitmap) return std::nullopt;
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
  auto picture = DecodeOnWhite(best, limit, watch);
  if (picture && count > 1) picture->whole_as = WrittenKind::None;
  return picture;
}

}  // namespace zelvane
