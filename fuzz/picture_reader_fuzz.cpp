#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "surface/codecs/PictureDecoder.h"

/// Any bytes, as if they were a picture file. What comes out must be a picture within the limit, opaque
/// everywhere.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  constexpr zelvane::SizeLimit kLimit{1 << 18};  // pixels; larger ones only cost time
  const auto picture = zelvane::DecodePicture({data, size}, kLimit);
  if (!picture) return 0;
  if (!kLimit.Admits(picture->Width(), picture->Height())) std::abort();
  for (int y = 0; y < picture->Height(); ++y) {
    for (int x = 0; x < picture->Width(); ++x) {
      if (picture->Row(y)[x] >> 24 != 0xFF) std::abort();
    }
  }
  return 0;
}
