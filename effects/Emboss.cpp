#include <cmath>
#include <numbers>
#include <vector>

#include "effects/pixels/Effect.h"
#include "effects/pixels/Pixels.h"

namespace zelvane {
namespace {

/// How bright the picture's pixels are, in rows.
std::vector<uint8_t> BrightnessOf(const Bitmap& picture, Work& work) {
  const auto width = static_cast<size_t>(picture.Width());
  std::vector<uint8_t> plane(width * static_cast<size_t>(picture.Height()));
  ForBands(picture.Height(), work, [&](int first, int end) {
    for (int y = first; y < end; ++y) {
      const Pixel* const row = picture.Row(y);
      std::transform(row, row + width, plane.begin() + static_cast<ptrdiff_t>(width) * y,
                     [](Pixel pixel) { return static_cast<uint8_t>(Brightness(pixel)); });
    }
  });
  return plane;
}

/// Slopes that face the light are lit, those that turn away lie in shadow, and what is even is grey or, in
/// colour, as it was.
Bitmap Apply(const Bitmap& picture, const Values& values, Work& work) {
  work.SetPasses(2);
  const double angle = values[0] * std::numbers::pi / 180, depth = std::max(values[1], 1.0);
  const int dx = static_cast<int>(std::lround(std::cos(angle) * depth));
  const int dy = static_cast<int>(std::lround(-std::sin(angle) * depth));
  const int amount = static_cast<int>(std::lround(values[2] * 256 / 100));
  const bool in_colour = values[3] != 0;
  const int width = picture.Width(), height = picture.Height();
  const std::vector<uint8_t> plane = BrightnessOf(picture, work);
  const auto row_of = [&](int y) { return plane.data() + ptrdiff_t{width} * Within(y, height); };
  Bitmap result = Bitmap::Uninitialised(width, height);
  const Bitmap::Rows rows = result.WritableRows();
  ForBands(height, work, [&](int first, int end) {
    for (int y = first; y < end; ++y) {
      const uint8_t *const behind = row_of(y - dy), *const before = row_of(y + dy);
      const Pixel* const from = picture.Row(y);
      for (int x = 0; x < width; ++x) {
        const int relief = (behind[Within(x - dx, width)] - before[Within(x + dx, width)]) * amount / 256;
        const Pixel ground = in_colour ? from[x] : Packed(128, 128, 128);
        rows[y][x] = Packed(Red(ground) + relief, Green(ground) + relief, Blue(ground) + relief);
      }
    }
  });
  return result;
}

}  // namespace

Effect Emboss() {
  return {"Emboss",
          {Setting::Slider("Light from", 0, 359, 135, "°"), Setting::Length("Depth", 1, 20, 1),
           Setting::Slider("Amount", 0, 300, 100, " %"), Setting::Choice("Look", {"Grey", "In colour"})},
          Apply};
}

}  // namespace zelvane
