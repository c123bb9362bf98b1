#include "effects/pixels/Effect.h"
#include "effects/pixels/Pixels.h"

namespace zelvane {
namespace {

/// Bits that look random, the same for the same place every time (the steps of splitmix64).
uint64_t Bits(uint64_t place) {
  uint64_t bits = (place + 1) * 0x9E3779B97F4A7C15;
  bits = (bits ^ bits >> 30) * 0xBF58476D1CE4E5B9;
  bits = (bits ^ bits >> 27) * 0x94D049BB133111EB;
  return bits ^ bits >> 31;
}

/// Four bytes make a bell of about -510 to 510 with the middle 0.
int Bell(uint32_t bits) {
  return static_cast<int>((bits & 0xFF) + (bits >> 8 & 0xFF) + (bits >> 16 & 0xFF) + (bits >> 24)) - 510;
}

Bitmap Apply(const Bitmap& picture, const Values& values, Work& work) {
  const int amount = static_cast<int>(values[0] * 2.56);
  const bool is_coloured = values[1] != 0;
  const auto grain = [amount](uint64_t bits) { return Bell(static_cast<uint32_t>(bits)) * amount / 512; };
  Bitmap result = Bitmap::Uninitialised(picture.Width(), picture.Height());
  const Bitmap::Rows rows = result.WritableRows();
  ForBands(picture.Height(), work, [&](int first, int end) {
    for (int y = first; y < end; ++y) {
      const Pixel* const from = picture.Row(y);
      for (int x = 0; x < picture.Width(); ++x) {
        const uint64_t place = static_cast<uint64_t>(y) << 32 | static_cast<uint64_t>(x) << 1;
        const uint64_t bits = Bits(place);
        const int red = grain(bits), green = is_coloured ? grain(bits >> 32) : red,
                  blue = is_coloured ? grain(Bits(place | 1)) : red;
        rows[y][x] = Packed(Red(from[x]) + red, Green(from[x]) + green, Blue(from[x]) + blue);
      }
    }
  });
  return result;
}

}  // namespace

Effect Noise() {
  return {"Noise",
          {Setting::Slider("Amount", 0, 100, 15, " %"), Setting::Choice("Grain", {"Grey", "Coloured"})},
          Apply};
}

}  // namespace zelvane
