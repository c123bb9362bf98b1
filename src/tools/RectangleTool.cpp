#include "surface/raster/FailingStep.h"
#include "tools/NumericOptions.h"
#include "tools/OptionBars.h"
#include "tools/SpannedBox.h"

namespace zelvane {
namespace {

bool HasRoundCorners() {
  return frmControls->RoundCorners.Value() == 1;
}

void Drag(const Stroke& stroke) {
  using Shape = ShapeOverlay::Shape;
  stroke.Document.DrawBox.SetShape(HasRoundCorners() ? Shape::RoundRectangle : Shape::Rectangle);
  SpanBox(stroke.Document.DrawBox, stroke);
  stroke.Document.DrawBox.SetVisible(true);
}

/// The corners measure a quarter of the box.
void DrawRounded(const Target& target, const Stroke& stroke, Single sx, Single sy) {
  constexpr double kCorner = 0.25;
  const auto left = ToInt32(target.X(sx)), top = ToInt32(target.Y(sy));
  const auto right = ToInt32(target.X(stroke.X)), bottom = ToInt32(target.Y(stroke.Y));
  const auto corner_width = ToInt32((stroke.X - sx) * kCorner);
  const auto corner_height = ToInt32((stroke.Y - sy) * kCorner);
  if (!left || !top || !right || !bottom || !corner_width || !corner_height) return;
  target.Layer.RoundRect(*left, *top, *right, *bottom, *corner_width, *corner_height);
}

void Release(const Stroke& stroke) {
  const Single sx = stroke.Surface.CurrentX(), sy = stroke.Surface.CurrentY();
  stroke.Document.DrawBox.SetVisible(false);
  SetBoxStyle(stroke, OptionOf(kRectangleBorder).Value);
  const Target target = TargetOf(stroke);
  if (HasRoundCorners())
    DrawRounded(target, stroke, sx, sy);
  else
    target.Layer.Box(target.X(sx), target.Y(sy), target.X(stroke.X), target.Y(stroke.Y), StrokeColor());
  RefreshPaintArea(stroke.Surface);
}

}  // namespace

void RectangleTool(const Stroke& stroke) {
  if (stroke.Down)
    Drag(stroke);
  else
    Release(stroke);
}

}  // namespace zelvane
