#include "surface/codecs/PictureDecoder.h"

#include <new>

#include "surface/raster/Memory.h"

namespace zelvane {

namespace {

using Reader = std::optional<DecodedPicture> (*)(ByteView, SizeLimit, ReadingWatch&);

bool LooksLikeXbm(ByteView start) {
  size_t at = 0;
  while (start.At(at) == ' ' || (start.At(at) >= '\t' && start.At(at) <= '\r')) ++at;
  const ByteView text = start.From(at);
  return text.StartsWith("#define", 7) || text.StartsWith("/*", 2);
}

Reader ReaderFor(ByteView start) {
  if (start.StartsWith("\x89PNG\r\n\x1A\n", 8)) return DecodePng;
  if (start.StartsWith("\x8AMNG\r\n\x1A\n", 8)) return DecodeMng;
  if (start.StartsWith("\xFF\xD8\xFF", 3)) return DecodeJpeg;
  if (start.StartsWith("GIF87a", 6) || start.StartsWith("GIF89a", 6)) return DecodeGif;
  if (start.StartsWith("BM", 2)) return DecodeBmp;
  if (start.StartsWith("II*\0", 4) || start.StartsWith("MM\0*", 4)) return DecodeTiff;
  if (start.StartsWith("II+\0", 4) || start.StartsWith("MM\0+", 4)) return DecodeTiff;
  if (start.StartsWith("\0\0\1\0", 4) || start.StartsWith("\0\0\2\0", 4)) return DecodeIcon;
  if (LooksLikeXbm(start)) return DecodeXbm;
  return nullptr;
}

}  // namespace

SizeLimit LimitByMemory() {
  return {AvailableMemory() / (2 * int64_t{sizeof(Pixel)})};
}

bool LooksLikePicture(ByteView start) {
  return ReaderFor(start) != nullptr;
}

std::optional<DecodedPicture> DecodePicture(ByteView bytes, SizeLimit limit, ReadingWatch& watch) {
  const Reader read = ReaderFor(bytes.Part(0, kPictureStart));
  if (!read) return std::nullopt;
  try {
    return read(bytes, limit, watch);
  } catch (const SurfaceTooLarge&) {
    return std::nullopt;
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}

}  // namespace zelvane
