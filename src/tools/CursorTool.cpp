#include "selection/Selection.h"
#include "surface/raster/FailingStep.h"
#include "tools/Stroke.h"

namespace zelvane {
namespace {

/// The marquee goes the pointer's way from the press, also off the picture.
void Drag(const Stroke& stroke) {
  ShapeOverlay& marquee = stroke.Document.SelectArea;
  const Single sx = stroke.Surface.CurrentX(), sy = stroke.Surface.CurrentY();
  With(Product16(stroke.X, stroke.Z),
       [&](int16_t x) { marquee.SetLeft(x - (sx * stroke.Z - State.SelectionLeft)); });
  With(Product16(stroke.Y, stroke.Z),
       [&](int16_t y) { marquee.SetTop(y - (sy * stroke.Z - State.SelectionTop)); });
  MoveSelection(stroke.Document, stroke.R * marquee.Left(), stroke.R * marquee.Top());
}

/// The next drag starts here. From a place beyond 16 bits the selection comes back to where this one began.
void Release(const Stroke& stroke) {
  const ShapeOverlay& marquee = stroke.Document.SelectArea;
  Assign(State.SelectionLeft, ToInt16(marquee.Left()));
  Assign(State.SelectionTop, ToInt16(marquee.Top()));
  MoveSelection(stroke.Document, State.SelectionLeft * stroke.R, State.SelectionTop * stroke.R);
}

}  // namespace

void CursorTool(const Stroke& stroke) {
  if (!stroke.Document.SelectArea.Visible()) return;
  if (stroke.Down)
    Drag(stroke);
  else
    Release(stroke);
}

}  // namespace zelvane
