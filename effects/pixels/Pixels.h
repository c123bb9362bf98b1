#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "effects/pixels/Work.h"
#include "surface/raster/Bitmap.h"

/// What effects share that look at one pixel at a time.
namespace zelvane {

inline constexpr Pixel kOpaque = 0xFF000000;

constexpr int Red(Pixel pixel) {
  return static_cast<int>(pixel >> 16 & 0xFF);
}
constexpr int Green(Pixel pixel) {
  return static_cast<int>(pixel >> 8 & 0xFF);
}
constexpr int Blue(Pixel pixel) {
  return static_cast<int>(pixel & 0xFF);
}

/// Components beyond 0 to 255 count as the nearer end.
constexpr Pixel Packed(int red, int green, int blue) {
  const auto cap = [](int value) { return static_cast<Pixel>(std::clamp(value, 0, 255)); };
  return kOpaque | cap(red) << 16 | cap(green) << 8 | cap(blue);
}
/// Rounded to nearest.
inline Pixel Packed(float red, float green, float blue) {
  const auto cap = [](float value) { return static_cast<Pixel>(std::clamp(value, 0.0F, 255.0F) + 0.5F); };
  return kOpaque | cap(red) << 16 | cap(green) << 8 | cap(blue);
}

/// How bright the pixel looks, 0 to 255, by the weights of Rec. 601.
constexpr int Brightness(Pixel pixel) {
  return (Red(pixel) * 19595 + Green(pixel) * 38470 + Blue(pixel) * 7471 + 32768) >> 16;
}

/// A row's pixels as bytes: blue, green, red and 0xFF of each.
inline const uint8_t* BytesOf(const Pixel* row) {
  return reinterpret_cast<const uint8_t*>(row);
}
inline uint8_t* BytesOf(Pixel* row) {
  return reinterpret_cast<uint8_t*>(row);
}
inline constexpr int kBytesPerPixel = 4;

/// A picture of the same size, each pixel made by `map` from the pixel there.
template <class Map>
Bitmap MapPixels(const Bitmap& picture, Work& work, Map&& map) {
  Bitmap result = Bitmap::Uninitialised(picture.Width(), picture.Height());
  const Bitmap::Rows rows = result.WritableRows();
  ForBands(picture.Height(), work, [&](int first, int end) {
    for (int y = first; y < end; ++y) {
      const Pixel* const from = picture.Row(y);
      std::transform(from, from + picture.Width(), rows[y], map);
    }
  });
  return result;
}

/// What becomes of each value of a channel.
using Table = std::array<uint8_t, 256>;

/// The table of a function from 0 to 1 to 0 to 1; what lies beyond counts as the nearer end.
template <class Curve>
Table TableOf(Curve&& curve) {
  Table table;
  for (int value = 0; value < 256; ++value) {
    table[static_cast<size_t>(value)] =
        static_cast<uint8_t>(std::clamp<double>(curve(value / 255.0), 0, 1) * 255 + 0.5);
  }
  return table;
}

/// All three channels by one table.
inline Bitmap MapChannels(const Bitmap& picture, Work& work, const Table& table) {
  const auto mapped = [&table](int value) { return Pixel{table[static_cast<size_t>(value)]}; };
  return MapPixels(picture, work, [mapped](Pixel pixel) {
    return kOpaque | mapped(Red(pixel)) << 16 | mapped(Green(pixel)) << 8 | mapped(Blue(pixel));
  });
}

/// A row or column of the picture; those beyond it repeat its edge.
inline int Within(int place, int size) {
  return std::clamp(place, 0, size - 1);
}

}  // namespace zelvane
