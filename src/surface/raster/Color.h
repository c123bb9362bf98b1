#pragma once

#include <algorithm>
#include <cstdint>

namespace zelvane {

/// A colour value 0x00BBGGRR, red in the low byte. With the top bit set it names a colour of the desktop's
/// palette. `kNoColor` is what reading beyond a surface yields.
struct Color {
  int32_t value = 0;
  friend constexpr bool operator==(Color, Color) = default;
};

inline constexpr Color kNoColor{-1};
inline constexpr Color kBlack{0x000000};
inline constexpr Color kWhite{0xFFFFFF};

/// Red, green and blue, 0 to 255 each in a plain colour.
struct Channels {
  int red = 0, green = 0, blue = 0;
  friend constexpr bool operator==(Channels, Channels) = default;
};

constexpr bool IsSystemColor(Color color) {
  return color.value < -1;
}

/// Builds a colour; components above 255 count as 255, below 0 as 0.
constexpr Color RGB(int red, int green, int blue) {
  const auto cap = [](int component) { return std::clamp(component, 0, 255); };
  return Color{cap(red) | cap(green) << 8 | cap(blue) << 16};
}

/// Splits by integer division that truncates toward zero; `kNoColor` gives blue 0, green 0, red -1.
constexpr Channels Split(Color color) {
  const int blue = color.value / 65536;
  const int green = (color.value - blue * 65536) / 256;
  return {color.value - blue * 65536 - green * 256, green, blue};
}

/// The desktop's colours that the program paints with.
namespace SystemColor {
constexpr Color Of(uint32_t index) {
  return Color{static_cast<int32_t>(0x80000000u | index)};
}
inline constexpr Color ScrollBar = Of(0x00);
inline constexpr Color ActiveCaption = Of(0x02);
inline constexpr Color InactiveCaption = Of(0x03);
inline constexpr Color WindowBackground = Of(0x05);
inline constexpr Color WindowText = Of(0x08);
inline constexpr Color CaptionText = Of(0x09);
inline constexpr Color HighlightText = Of(0x0E);
inline constexpr Color ButtonFace = Of(0x0F);
inline constexpr Color ButtonShadow = Of(0x10);
inline constexpr Color ButtonText = Of(0x12);
inline constexpr Color ButtonHighlight = Of(0x14);
}  // namespace SystemColor

/// A pixel as surfaces hold it: 0xFFRRGGBB in a 32-bit word, which the screen shows without conversion. The
/// top byte is always 0xFF.
using Pixel = uint32_t;

/// System colours come out of the table that `SetSystemPixel` fills; an index never set is black.
Pixel ToPixel(Color color);
/// The plain colour of a pixel.
constexpr Color ToColor(Pixel pixel) {
  return Color{static_cast<int32_t>((pixel & 0xFF) << 16 | (pixel & 0xFF00) | (pixel >> 16 & 0xFF))};
}

/// Tells the pixel of the system colour `index` (0 to 31); the forms engine does so for the desktop's
/// palette.
void SetSystemPixel(int index, Pixel pixel);

}  // namespace zelvane
