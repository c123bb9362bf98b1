#include "surface/raster/Color.h"

#include <array>

namespace zelvane {
namespace {

constexpr Pixel kOpaque = 0xFF000000;
constexpr uint32_t kSystemColorBit = 0x80000000;
constexpr size_t kSystemColors = 32;

using SystemTable = std::array<Pixel, kSystemColors>;

SystemTable& SystemPixels() {
  static SystemTable table = [] {
    SystemTable black;
    black.fill(kOpaque);
    return black;
  }();
  return table;
}

}  // namespace

Pixel ToPixel(Color color) {
  const auto bits = static_cast<uint32_t>(color.value);
  if (bits & kSystemColorBit) {
    const uint32_t index = bits & ~kSystemColorBit;
    return index < kSystemColors ? SystemPixels()[index] : kOpaque;
  }
  return kOpaque | (bits & 0xFF) << 16 | (bits & 0xFF00) | (bits >> 16 & 0xFF);
}

void SetSystemPixel(int index, Pixel pixel) {
  if (index < 0 || index >= static_cast<int>(kSystemColors)) return;
  SystemPixels()[static_cast<size_t>(index)] = pixel | kOpaque;
}

}  // namespace zelvane
