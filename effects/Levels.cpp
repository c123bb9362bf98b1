#include <cmath>

#include "effects/pixels/Effect.h"
#include "effects/pixels/Pixels.h"

namespace zelvane {
namespace {

/// What lies between the darkest and the lightest value read is spread, bent by gamma (more lightens), and
/// written between the two values at the end. A lightest that isn't above the darkest cuts between the two.
Bitmap Apply(const Bitmap& picture, const Values& values, Work& work) {
  const double dark = values[0] / 255, light = values[1] / 255, gamma = values[2];
  const double low = values[3] / 255, high = values[4] / 255;
  return MapChannels(picture, work, TableOf([=](double v) {
                       const double spread = light > dark ? (v - dark) / (light - dark) : v > dark ? 1 : 0;
                       return low + (high - low) * std::pow(std::clamp(spread, 0.0, 1.0), 1 / gamma);
                     }));
}

}  // namespace

Effect Levels() {
  return {"Levels",
          {Setting::Slider("Darkest", 0, 255, 0), Setting::Slider("Lightest", 0, 255, 255),
           Setting::Slider("Gamma", 0.1, 5, 1, "", 0.05), Setting::Slider("Black becomes", 0, 255, 0),
           Setting::Slider("White becomes", 0, 255, 255)},
          Apply,
          true};
}

}  // namespace zelvane
