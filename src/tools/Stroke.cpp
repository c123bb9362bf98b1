#include "tools/Stroke.h"

#include "colour/ColorPanel.h"
#include "surface/raster/FailingStep.h"

namespace zelvane {

Target TargetOf(const Stroke& stroke) {
  if (!stroke.Document.SelectArea.Visible()) return {stroke.Surface, 0, 0};
  PictureSurface& selected = stroke.Document.BufferSelected;
  return {selected, selected.Left(), selected.Top()};
}

Color StrokeColor() {
  return ColorPanel->SelColor[State.PointerButton == kLeftButton ? 0 : 1].BackColor();
}

Color OtherColor() {
  return ColorPanel->SelColor[State.PointerButton == kLeftButton ? 1 : 0].BackColor();
}

bool PointerMoved(const PictureSurface& Surface, int16_t X, int16_t Y) {
  constexpr Single kHalf = 0.5F;
  return Surface.CurrentX() > X + kHalf || Surface.CurrentX() < X - kHalf || Surface.CurrentY() > Y + kHalf ||
         Surface.CurrentY() < Y - kHalf;
}

void SetDrawWidths(const Stroke& stroke, double width) {
  With(ToInt16(width), [&](int16_t whole) { stroke.Surface.SetDrawWidth(whole); });
  stroke.Document.BufferSelected.SetDrawWidth(width);
}

void DrawFreehand(const Stroke& stroke) {
  const bool moved = PointerMoved(stroke.Surface, stroke.X, stroke.Y);
  const Target target = TargetOf(stroke);
  const Single x = target.X(stroke.X), y = target.Y(stroke.Y);
  if (moved)
    target.Layer.LineTo(x, y, target.Layer.ForeColor());
  else if (stroke.Down)
    target.Layer.PSet(x, y, target.Layer.ForeColor());
}

void ShowFollowLine(const Stroke& stroke) {
  LineOverlay& line = stroke.Document.FollowLine;
  line.Setx1(stroke.Surface.CurrentX() * stroke.Z);
  With(Product16(stroke.X, stroke.Z), [&](int16_t x) { line.SetX2(x); });
  line.Sety1(stroke.Surface.CurrentY() * stroke.Z);
  With(Product16(stroke.Y, stroke.Z), [&](int16_t y) { line.Sety2(y); });
  line.SetVisible(true);
}

}  // namespace zelvane
