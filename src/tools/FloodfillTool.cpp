#include "surface/raster/FailingStep.h"
#include "tools/Stroke.h"

namespace zelvane {
namespace {

void Fill(PictureSurface& layer, Single x, Single y) {
  const Color area = layer.Point(x, y);
  const auto column = ToInt32(x), row = ToInt32(y);
  if (column && row) layer.ExtFloodFill(*column, *row, area);
}

}  // namespace

/// Press, drag and release fill alike.
void FloodfillTool(const Stroke& stroke) {
  stroke.Surface.SetFillColor(StrokeColor());
  stroke.Document.BufferSelected.SetFillColor(StrokeColor());
  const Target target = TargetOf(stroke);
  Fill(target.Layer, target.X(stroke.X), target.Y(stroke.Y));
  RefreshPaintArea(stroke.Surface);
}

}  // namespace zelvane
