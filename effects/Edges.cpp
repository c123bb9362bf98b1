#include <cmath>

#include "effects/pixels/Effect.h"
#include "effects/pixels/Pixels.h"

namespace zelvane {
namespace {

/// One byte of the result by Sobel's two masks, from the same byte of the three pixels of each row.
float Slope(const uint8_t* above, const uint8_t* row, const uint8_t* below, int left, int at, int right) {
  const int across = above[right] - above[left] + 2 * (row[right] - row[left]) + below[right] - below[left];
  const int down = below[left] - above[left] + 2 * (below[at] - above[at]) + below[right] - above[right];
  return std::sqrt(static_cast<float>(across * across + down * down));
}

Bitmap Apply(const Bitmap& picture, const Values& values, Work& work) {
  const auto amount = static_cast<float>(values[0] / 100 / 4);
  const Pixel ground = values[1] == 0 ? 0 : ~kOpaque;
  const int width = picture.Width(), last = (width - 1) * kBytesPerPixel;
  Bitmap result = Bitmap::Uninitialised(width, picture.Height());
  const Bitmap::Rows rows = result.WritableRows();
  ForBands(picture.Height(), work, [&](int first, int end) {
    for (int y = first; y < end; ++y) {
      const auto bytes = [&](int row) { return BytesOf(picture.Row(Within(row, picture.Height()))); };
      const uint8_t *const above = bytes(y - 1), *const row = bytes(y), *const below = bytes(y + 1);
      uint8_t* const to = BytesOf(rows[y]);
      const auto put = [&](int left, int at, int right) {
        const float value = std::min(amount * Slope(above, row, below, left, at, right), 255.0F);
        to[at] = static_cast<uint8_t>(static_cast<int>(value + 0.5F));
      };
      for (int i = kBytesPerPixel; i < last; ++i) put(i - kBytesPerPixel, i, i + kBytesPerPixel);
      for (int i = 0; i < kBytesPerPixel; ++i) {
        put(i, i, std::min(i + kBytesPerPixel, last + i));
        put(std::max(last - kBytesPerPixel, 0) + i, last + i, last + i);
      }
      for (int x = 0; x < width; ++x) rows[y][x] = (rows[y][x] ^ ground) | kOpaque;
    }
  });
  return result;
}

}  // namespace

Effect Edges() {
  return {"Edges",
          {Setting::Slider("Amount", 0, 400, 100, " %"), Setting::Choice("Ground", {"Black", "White"})},
          Apply};
}

}  // namespace zelvane
