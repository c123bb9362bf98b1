#pragma once

#include <cstdint>

#include "surface/raster/Bitmap.h"

namespace zelvane {

/// 0xAARRGGBB, not premultiplied, on a ground, each channel to the nearest. Red and blue are worked out in
/// one word, 16 bits each; a division by 255 to the nearest is an addition and two shifts.
constexpr Pixel LaidOn(uint32_t argb, Pixel ground) {
  constexpr uint32_t kRedBlue = 0x00FF00FFu, kHalves = 0x00800080u;
  const uint32_t alpha = argb >> 24, rest = 255 - alpha;
  uint32_t red_blue = (argb & kRedBlue) * alpha + (ground & kRedBlue) * rest + kHalves;
  red_blue = (red_blue + (red_blue >> 8 & kRedBlue)) >> 8 & kRedBlue;
  uint32_t green = (argb >> 8 & 0xFF) * alpha + (ground >> 8 & 0xFF) * rest + 128;
  green = (green + (green >> 8)) >> 8;
  return 0xFF000000u | red_blue | green << 8;
}
constexpr Pixel OnWhite(uint32_t argb) {
  return LaidOn(argb, 0xFFFFFFFFu);
}

/// A channel of 16 bits at an opacity of 16 bits on white, to 8 bits, rounded once.
constexpr uint32_t DeepChannelOnWhite(uint64_t channel, uint64_t alpha) {
  constexpr uint64_t kMost = 65535;
  constexpr uint64_t kDivisor = kMost * 257;
  return static_cast<uint32_t>((channel * alpha + kMost * (kMost - alpha) + kDivisor / 2) / kDivisor);
}

/// Channels of 16 bits, not premultiplied, on white.
constexpr Pixel DeepOnWhite(uint32_t red, uint32_t green, uint32_t blue, uint32_t alpha) {
  return 0xFF000000u | DeepChannelOnWhite(red, alpha) << 16 | DeepChannelOnWhite(green, alpha) << 8 |
         DeepChannelOnWhite(blue, alpha);
}

/// Every pixel, whose top byte is its opacity, on white. True where all were opaque.
bool FlattenOnWhite(Bitmap& bitmap);
bool FlattenOnWhite(Pixel* row, int width);

}  // namespace zelvane
