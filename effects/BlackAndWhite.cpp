#include <cmath>

#include "effects/pixels/Effect.h"
#include "effects/pixels/Pixels.h"

namespace zelvane {
namespace {

constexpr size_t kLook = 3, kWhiteFrom = 4;

/// How much each channel tells, by the sliders' proportion to each other.
Bitmap Apply(const Bitmap& picture, const Values& values, Work& work) {
  const double sum = values[0] + values[1] + values[2];
  const auto share = [&](size_t i) {
    return static_cast<int>(std::lround(sum > 0 ? values[i] / sum * 65536 : 0));
  };
  const int red = share(0), green = share(1), blue = share(2);
  const bool two_tones = values[kLook] != 0;
  const int threshold = static_cast<int>(values[kWhiteFrom]);
  return MapPixels(picture, work, [=](Pixel pixel) {
    const int grey = (Red(pixel) * red + Green(pixel) * green + Blue(pixel) * blue + 32768) >> 16;
    const int shown = !two_tones ? grey : grey >= threshold ? 255 : 0;
    return Packed(shown, shown, shown);
  });
}

}  // namespace

Effect BlackAndWhite() {
  return {"Black and White",
          {Setting::Slider("Red", 0, 100, 30, " %"), Setting::Slider("Green", 0, 100, 59, " %"),
           Setting::Slider("Blue", 0, 100, 11, " %"), Setting::Choice("Look", {"Greys", "Two tones"}),
           Setting::Slider("White from", 0, 255, 128)},
          Apply,
          false,
          [](size_t setting, const Values& values) { return setting != kWhiteFrom || values[kLook] != 0; }};
}

}  // namespace zelvane
