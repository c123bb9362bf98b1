#include <cmath>

#include "effects/pixels/Effect.h"
#include "effects/pixels/Pixels.h"

namespace zelvane {
namespace {

Pixel Mean(const Bitmap& picture, const Rect& tile) {
  uint64_t red = 0, green = 0, blue = 0;
  for (int y = tile.top; y < tile.bottom; ++y) {
    const Pixel* const row = picture.Row(y);
    for (int x = tile.left; x < tile.right; ++x) {
      red += row[x] >> 16 & 0xFF;
      green += row[x] >> 8 & 0xFF;
      blue += row[x] & 0xFF;
    }
  }
  const uint64_t count = static_cast<uint64_t>(tile.Width()) * static_cast<uint64_t>(tile.Height());
  const auto mean = [count](uint64_t sum) { return static_cast<int>((sum + count / 2) / count); };
  return Packed(mean(red), mean(green), mean(blue));
}

/// Tiles from the top left corner, each in the mean of what it covers; those at the other edges may be cut.
Bitmap Apply(const Bitmap& picture, const Values& values, Work& work) {
  const int size = std::max(1, static_cast<int>(std::lround(values[0])));
  Bitmap result = Bitmap::Uninitialised(picture.Width(), picture.Height());
  const Bitmap::Rows rows = result.WritableRows();
  ForBands((picture.Height() + size - 1) / size, work, [&](int first, int end) {
    for (int top = first * size; top < std::min(end * size, picture.Height()); top += size) {
      for (int left = 0; left < picture.Width(); left += size) {
        const Rect tile = Rect{left, top, left + size, top + size}.Intersected(picture.Bounds());
        const Pixel mean = Mean(picture, tile);
        for (int y = tile.top; y < tile.bottom; ++y) std::fill_n(rows[y] + left, tile.Width(), mean);
      }
    }
  });
  return result;
}

}  // namespace

Effect Mosaic() {
  return {"Mosaic", {Setting::Length("Size", 1, 200, 12)}, Apply};
}

}  // namespace zelvane
