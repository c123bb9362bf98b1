#include "tools/Dab.h"
#include "tools/Stroke.h"

namespace zelvane {
namespace {

double Size() {
  return State.OptionTable[8].Value;
}

void LayDab(const Target& target, const Stroke& stroke) {
  BlurDab(target.Layer, target.X(stroke.X), target.Y(stroke.Y), DabSizeOf(Size()));
}

}  // namespace

void BlurTool(const Stroke& stroke) {
  if (stroke.Down) LayDab(TargetOf(stroke), stroke);
  RefreshPaintArea(stroke.Surface);
}

}  // namespace zelvane
