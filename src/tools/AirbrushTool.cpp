#include "tools/Dab.h"
#include "tools/Stroke.h"

namespace zelvane {
namespace {

double Pressure() {
  return State.OptionTable[0].Value;
}
double Size() {
  return State.OptionTable[2].Value;
}

void LayDab(const Target& target, const Stroke& stroke) {
  SprayDab(target.Layer, target.X(stroke.X), target.Y(stroke.Y), DabSizeOf(Size()), StrokeColor(),
           Pressure());
}

}  // namespace

void AirbrushTool(const Stroke& stroke) {
  if (stroke.Down) LayDab(TargetOf(stroke), stroke);
  RefreshPaintArea(stroke.Surface);
}

}  // namespace zelvane
