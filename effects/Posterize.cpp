#include <cmath>

#include "effects/pixels/Effect.h"
#include "effects/pixels/Pixels.h"

namespace zelvane {
namespace {

Bitmap Apply(const Bitmap& picture, const Values& values, Work& work) {
  const double steps = values[0] - 1;
  return MapChannels(picture, work, TableOf([steps](double v) { return std::round(v * steps) / steps; }));
}

}  // namespace

Effect Posterize() {
  return {"Posterize", {Setting::Slider("Levels", 2, 64, 4)}, Apply};
}

}  // namespace zelvane
