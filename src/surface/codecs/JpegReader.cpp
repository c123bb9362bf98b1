#include <cstring>

#include "surface/codecs/PictureDecoder.h"

namespace zelvane {

namespace {

/// A frame's header, which tells the size: the markers C0 to CF but for tables and their like.
bool IsFrame(uint32_t marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}
/// Markers without a length: restarts, the start, and the one kept for arithmetic coding.
bool StandsAlone(uint32_t marker) {
  return (marker >= 0xD0 && marker <= 0xD8) || marker == 0x01;
}

/// Behind the next 0xFF that starts a marker of that kind: within coded data neither a stuffed zero nor a
/// restart counts. Puts the marker into `marker`; 0 where the bytes end first.
uint64_t SkipToMarker(ByteView bytes, uint64_t at, bool in_data, uint32_t& marker) {
  while (at < bytes.Size()) {
    const void* found = std::memchr(bytes.Data() + at, 0xFF, bytes.Size() - at);
    if (!found) return 0;
    at = static_cast<uint64_t>(static_cast<const unsigned char*>(found) - bytes.Data()) + 1;
    while (bytes.At(at) == 0xFF) ++at;
    if (at >= bytes.Size()) return 0;
    marker = bytes.At(at++);
    if (marker != 0 && !(in_data && StandsAlone(marker))) return at;
  }
  return 0;
}

/// Walks the segments to the end mark, which a file cut short doesn't have.
bool IsWhole(ByteView bytes, SizeLimit limit) {
  bool sized = false, in_data = false;
  uint32_t marker = 0;
  uint64_t at = 2;
  while ((at = SkipToMarker(bytes, at, in_data, marker)) != 0) {
    if (marker == 0xD9) return sized && in_data;
    if (StandsAlone(marker)) continue;
    const uint64_t length = bytes.Big16(at);
    if (length < 2 || !bytes.Has(at, length)) return false;
    if (IsFrame(marker)) {
      if (!limit.Admits(bytes.Big16(at + 5), bytes.Big16(at + 3))) return false;
      sized = true;
    }
    if (marker == 0xDA) in_data = true;
    at += length;
  }
  return false;
}

}  // namespace

std::optional<Bitmap> DecodeJpeg(ByteView bytes, SizeLimit limit) {
  if (!IsWhole(bytes, limit)) return std::nullopt;
  return DecodeThroughQt(bytes, "jpeg", limit);
}

}  // namespace zelvane
