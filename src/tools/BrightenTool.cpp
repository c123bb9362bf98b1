#include "tools/Dab.h"
#include "tools/Stroke.h"

namespace zelvane {
namespace {

constexpr int16_t kBrighten = 0;

double Pressure() {
  return State.OptionTable[1].Value;
}
double Size() {
  return State.OptionTable[3].Value;
}

void LayDab(const Target& target, const Stroke& stroke) {
  const bool Darken = State.OptionButton4 != kBrighten;
  BrightenDab(target.Layer, target.X(stroke.X), target.Y(stroke.Y), DabSizeOf(Size()), Darken, Pressure());
}

}  // namespace

void BrightenTool(const Stroke& stroke) {
  if (stroke.Down) LayDab(TargetOf(stroke), stroke);
  RefreshPaintArea(stroke.Surface);
}

}  // namespace zelvane
