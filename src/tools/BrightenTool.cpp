#include "tools/Dab.h"
#include "tools/NumericOptions.h"
#include "tools/Stroke.h"

namespace zelvane {
namespace {

constexpr int16_t kBrighten = 0;

void LayDab(const Target& target, const Stroke& stroke) {
  const bool Darken = State.OptionButton4 != kBrighten;
  BrightenDab(target.Layer, target.X(stroke.X), target.Y(stroke.Y), DabSizeOf(OptionOf(kBrightenSize).Value),
              Darken, OptionOf(kBrightenPressure).Value);
}

}  // namespace

void BrightenTool(const Stroke& stroke) {
  if (stroke.Down) LayDab(TargetOf(stroke), stroke);
  RefreshPaintArea(stroke.Surface);
}

}  // namespace zelvane
