#include <cmath>

#include "effects/pixels/Effect.h"
#include "effects/pixels/Pixels.h"

namespace zelvane {
namespace {

/// How far the hue of a pixel lies round the circle, in sixths of it from red; `range` is its largest channel
/// less its smallest, above 0.
float HueOf(float red, float green, float blue, float largest, float range) {
  if (largest == red) return (green - blue) / range;
  return largest == green ? 2 + (blue - red) / range : 4 + (red - green) / range;
}

/// A channel of a hue, `ahead` of it in sixths of the circle: 0 to 1, up, even, down, even.
float Wave(float hue, float ahead) {
  float place = hue + ahead;
  place -= 6 * std::floor(place / 6);
  return std::clamp(std::abs(place - 3) - 1, 0.0F, 1.0F);
}

struct Shift {
  float hue, saturation, lightness;

  float Saturated(float value) const { return std::min(value * (1 + saturation), 1.0F); }
  float Lit(float value) const {
    return lightness < 0 ? value * (1 + lightness) : value + (1 - value) * lightness;
  }
  /// By hue, saturation and lightness of the double cone.
  Pixel operator()(Pixel pixel) const {
    const auto red = static_cast<float>(Red(pixel)), green = static_cast<float>(Green(pixel)),
               blue = static_cast<float>(Blue(pixel));
    const float largest = std::max({red, green, blue}), smallest = std::min({red, green, blue});
    const float range = largest - smallest, middle = (largest + smallest) / 510;
    const float lit = Lit(middle) * 255;
    if (range == 0) return Packed(lit, lit, lit);
    const float share = Saturated(range / 255 / (1 - std::abs(2 * middle - 1)));
    const float new_range = share * (255 - std::abs(2 * lit - 255));
    const float new_smallest = lit - new_range / 2, new_hue = HueOf(red, green, blue, largest, range) + hue;
    const auto channel = [=](float ahead) { return new_smallest + new_range * Wave(new_hue, ahead); };
    return Packed(channel(0), channel(4), channel(2));
  }
};

Bitmap Apply(const Bitmap& picture, const Values& values, Work& work) {
  return MapPixels(picture, work,
                   Shift{static_cast<float>(values[0] / 60), static_cast<float>(values[1] / 100),
                         static_cast<float>(values[2] / 100)});
}

}  // namespace

Effect HueAndSaturation() {
  return {"Hue and Saturation",
          {Setting::Slider("Hue", -180, 180, 0, "°"), Setting::Slider("Saturation", -100, 100, 0, " %"),
           Setting::Slider("Lightness", -100, 100, 0, " %")},
          Apply};
}

}  // namespace zelvane
