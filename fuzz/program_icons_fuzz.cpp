#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "Whole.h"
#include "surface/codecs/IconLibrary.h"

/// Any bytes, as if they were a program or an icon file. Its icons must be drawn whole, in their one size.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  constexpr int kMostIcons = 8;  // more only cost time
  constexpr int kSide = zelvane::IconLibrary::kSide;
  const zelvane::IconLibrary icons([=](uint64_t at, size_t count) {
    const zelvane::ByteView part = zelvane::ByteView(data, size).Part(at, count);
    return zelvane::Bytes(part.Data(), part.Data() + part.Size());
  });
  if (icons.Count() < 0) std::abort();
  for (int i = 0; i < std::min(icons.Count(), kMostIcons); ++i) {
    if (const auto icon = icons.Draw(i, 0xFF808080u)) zelvane::ExpectWhole(*icon, {kSide * kSide});
  }
  return 0;
}
