#include "effects/pixels/Effect.h"
#include "effects/pixels/Pixels.h"

namespace zelvane {
namespace {

/// Brightness on brown paper, laid over the picture by the amount.
Bitmap Apply(const Bitmap& picture, const Values& values, Work& work) {
  const int amount = static_cast<int>(values[0] * 256 / 100);
  Pixel toned[256];
  for (int i = 0; i < 256; ++i)
    toned[i] = Packed(i + 40 * i * (255 - i) / 16256, i, i - 40 * i * (255 - i) / 16256);
  return MapPixels(picture, work, [amount, &toned](Pixel pixel) {
    const Pixel tone = toned[Brightness(pixel)];
    const auto mixed = [amount](int from, int to) { return from + (to - from) * amount / 256; };
    return Packed(mixed(Red(pixel), Red(tone)), mixed(Green(pixel), Green(tone)),
                  mixed(Blue(pixel), Blue(tone)));
  });
}

}  // namespace

Effect Sepia() {
  return {"Sepia", {Setting::Slider("Amount", 0, 100, 100, " %")}, Apply};
}

}  // namespace zelvane
