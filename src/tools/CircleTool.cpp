#include "surface/raster/FailingStep.h"
#include "tools/NumericOptions.h"
#include "tools/SpannedBox.h"

namespace zelvane {
namespace {

void Drag(const Stroke& stroke) {
  SpanBox(stroke.Document.DrawCircle, stroke);
  stroke.Document.DrawCircle.SetVisible(true);
}

/// What is painted is what the overlay has shown. The corners measure the box's right and bottom edges, which
/// for a box within the picture is at least its extent, so the corners meet in an ellipse.
void DrawEllipse(const Target& target, const ShapeOverlay& box, Single R) {
  const Single right = R * box.Width() + R * box.Left(), bottom = R * box.Height() + R * box.Top();
  const auto x1 = ToInt32(target.X(R * box.Left())), y1 = ToInt32(target.Y(R * box.Top()));
  const auto x2 = ToInt32(target.X(right)), y2 = ToInt32(target.Y(bottom));
  const auto corner_width = ToInt32(right), corner_height = ToInt32(bottom);
  if (!x1 || !y1 || !x2 || !y2 || !corner_width || !corner_height) return;
  target.Layer.RoundRect(*x1, *y1, *x2, *y2, *corner_width, *corner_height);
}

void Release(const Stroke& stroke) {
  stroke.Document.DrawCircle.SetVisible(false);
  SetBoxStyle(stroke, OptionOf(kCircleBorder).Value);
  DrawEllipse(TargetOf(stroke), stroke.Document.DrawCircle, stroke.R);
  RefreshPaintArea(stroke.Surface);
}

}  // namespace

void CircleTool(const Stroke& stroke) {
  if (stroke.Down)
    Drag(stroke);
  else
    Release(stroke);
}

}  // namespace zelvane
