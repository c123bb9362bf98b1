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

/// A byte for the program, one for its version, one for packed or not, and bits a pixel.
bool LooksLikePcx(ByteView start) {
  const uint32_t version = start.At(1), depth = start.At(3);
  return start.At(0) == 10 && version <= 5 && version != 1 && start.At(2) <= 1 &&
         (depth == 1 || depth == 2 || depth == 4 || depth == 8 || depth == 24);
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
  if (LooksLikePcx(start)) return DecodePcx;
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
