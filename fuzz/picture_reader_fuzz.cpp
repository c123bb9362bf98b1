#include <cstddef>
#include <cstdint>

#include "Whole.h"
#include "surface/codecs/PictureDecoder.h"

/// Any bytes, as if they were a picture file. What comes out must be a picture within the limit, opaque
/// everywhere.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  constexpr zelvane::SizeLimit kLimit{1 << 18};  // pixels; larger ones only cost time
  const auto picture = zelvane::DecodePicture({data, size}, kLimit);
  if (picture) zelvane::ExpectWhole(*picture, kLimit);
  return 0;
}
