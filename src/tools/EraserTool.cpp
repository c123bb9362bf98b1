#include "tools/NumericOptions.h"
#include "tools/Stroke.h"

namespace zelvane {

/// A pen that paints white whatever the current colours are.
void EraserTool(const Stroke& stroke) {
  SetDrawWidths(stroke, OptionOf(kEraserWidth).Value);
  stroke.Surface.SetForeColor(kWhite);
  stroke.Document.BufferSelected.SetForeColor(kWhite);
  DrawFreehand(stroke);
  RefreshPaintArea(stroke.Surface);
}

}  // namespace zelvane
