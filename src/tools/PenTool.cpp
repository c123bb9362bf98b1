#include "tools/NumericOptions.h"
#include "tools/Stroke.h"

namespace zelvane {
namespace {

constexpr int16_t kFreehand = 0;

void Freehand(const Stroke& stroke) {
  SetDrawWidths(stroke, OptionOf(kPenWidth).Value);
  DrawFreehand(stroke);
  RefreshPaintArea(stroke.Surface);
}

void StraightLine(const Stroke& stroke) {
  if (stroke.Down) {
    ShowFollowLine(stroke);
    return;
  }
  stroke.Document.FollowLine.SetVisible(false);
  SetDrawWidths(stroke, OptionOf(kPenWidth).Value);
  const Target target = TargetOf(stroke);
  const Single x = target.X(stroke.X), y = target.Y(stroke.Y);
  if (PointerMoved(stroke.Surface, stroke.X, stroke.Y))
    target.Layer.LineTo(x, y, target.Layer.ForeColor());
  else
    target.Layer.PSet(x, y, target.Layer.ForeColor());
  RefreshPaintArea(stroke.Surface);
}

}  // namespace

void PenTool(const Stroke& stroke) {
  if (State.OptionButton3 == kFreehand)
    Freehand(stroke);
  else
    StraightLine(stroke);
}

}  // namespace zelvane
