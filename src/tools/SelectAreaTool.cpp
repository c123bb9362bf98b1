#include "selection/Selection.h"
#include "tools/SpannedBox.h"

namespace zelvane {
namespace {

/// A selection that there was stays in the picture where it is.
void Drag(const Stroke& stroke) {
  if (!stroke.Document.BufferSelected.Image().IsEmpty()) DropSelection(stroke.Document);
  SpanMarquee(stroke.Document.SelectArea, stroke);
  stroke.Document.SelectArea.SetVisible(true);
}

void Release(const Stroke& stroke) {
  if (IsDragged(stroke))
    LiftSelection(stroke.Document, PixelsOf(stroke.Document.SelectArea, stroke.R));
  else
    DropSelection(stroke.Document);
}

}  // namespace

void SelectAreaTool(const Stroke& stroke) {
  stroke.Document.CropArea.SetVisible(false);
  if (stroke.Down)
    Drag(stroke);
  else
    Release(stroke);
}

}  // namespace zelvane
