#include <cmath>
#include <numbers>

#include "effects/pixels/Effect.h"
#include "effects/pixels/Pixels.h"

namespace zelvane {
namespace {

/// Contrast turns the straight line of values round middle grey, from flat over 45° to upright.
Bitmap Apply(const Bitmap& picture, const Values& values, Work& work) {
  const double brightness = values[0] / 100, slope = std::tan((values[1] / 100 + 1) * std::numbers::pi / 4);
  return MapChannels(picture, work, TableOf([=](double v) { return (v - 0.5) * slope + 0.5 + brightness; }));
}

}  // namespace

Effect BrightnessAndContrast() {
  return {
      "Brightness and Contrast",
      {Setting::Slider("Brightness", -100, 100, 0, " %"), Setting::Slider("Contrast", -100, 100, 0, " %")},
      Apply};
}

}  // namespace zelvane
