#include <algorithm>
#include <bit>

#include "surface/codecs/Dib.h"
#include "surface/codecs/Flatten.h"
#include "surface/codecs/PictureDecoder.h"

namespace zelvane {

std::optional<DecodedPicture> DecodeBmp(ByteView bytes, SizeLimit limit, ReadingWatch& watch) {
  constexpr uint64_t kFileHeader = 14;
  const auto header = ReadDibHeader(bytes.From(kFileHeader));
  if (!header || !limit.Admits(header->width, header->height)) return std::nullopt;
  // Some writers leave the place of the pixels away; they then follow the header.
  uint64_t pixels_at = bytes.Little32(10);
  if (pixels_at < kFileHeader + 12) pixels_at = kFileHeader + header->end;
  auto bitmap = ReadDibPixels(*header, bytes.From(pixels_at), watch);
  if (!bitmap) return std::nullopt;
  const bool opaque = header->masks[3] == 0 || FlattenOnWhite(*bitmap);
  const bool deep = std::ranges::any_of(header->masks, [](uint32_t mask) { return std::popcount(mask) > 8; });
  return DecodedPicture(std::move(*bitmap), opaque && !deep ? WrittenKind::Bitmap : WrittenKind::None);
}

}  // namespace zelvane
