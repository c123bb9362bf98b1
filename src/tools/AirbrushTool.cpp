#include "tools/Dab.h"
#include "tools/NumericOptions.h"
#include "tools/Stroke.h"

namespace zelvane {
namespace {

void LayDab(const Target& target, const Stroke& stroke) {
  SprayDab(target.Layer, target.X(stroke.X), target.Y(stroke.Y), DabSizeOf(OptionOf(kAirbrushSize).Value),
           StrokeColor(), OptionOf(kAirbrushPressure).Value);
}

}  // namespace

void AirbrushTool(const Stroke& stroke) {
  if (stroke.Down) LayDab(TargetOf(stroke), stroke);
  RefreshPaintArea(stroke.Surface);
}

}  // namespace zelvane
