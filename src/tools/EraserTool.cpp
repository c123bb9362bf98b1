#include "tools/Stroke.h"

namespace zelvane {
namespace {

double EraserWidth() {
  return State.OptionTable[9].Value;
}

}  // namespace

/// A pen that paints white whatever the current colours are.
void EraserTool(const Stroke& stroke) {
  SetDrawWidths(stroke, EraserWidth());
  stroke.Surface.SetForeColor(kWhite);
  stroke.Document.BufferSelected.SetForeColor(kWhite);
  DrawFreehand(stroke);
  RefreshPaintArea(stroke.Surface);
}

}  // namespace zelvane
