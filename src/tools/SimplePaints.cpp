#include "tools/SimplePaints.h"

#include "surface/raster/FailingStep.h"
#include "tools/Stroke.h"

namespace zelvane {
namespace {

void RunTool(const Stroke& stroke) {
  switch (static_cast<Tool>(State.CurrentTool)) {
    case kCursorTool:
      return CursorTool(stroke);
    case kPenTool:
      return PenTool(stroke);
    case kFloodfillTool:
      return FloodfillTool(stroke);
    case kGradientTool:
      return GradientTool(stroke);
    case kSelectAreaTool:
      return SelectAreaTool(stroke);
    case kAirbrushTool:
      return AirbrushTool(stroke);
    case kCropTool:
      return CropTool(stroke);
    case kEyedropperTool:
      return EyedropperTool(stroke);
    case kRectangleTool:
      return RectangleTool(stroke);
    case kCircleTool:
      return CircleTool(stroke);
    case kBrightenTool:
      return BrightenTool(stroke);
    case kBlurTool:
      return BlurTool(stroke);
    case kEraserTool:
      return EraserTool(stroke);
    case kTextTool:
      return TextTool(stroke);
    case kMagnifyingTool:
      return;
  }
}

}  // namespace

void ApplyTool(PictureSurface& Surface, int16_t X, int16_t Y, double Zoom, bool Down) {
  ImageDocument& document = DocumentOf(Surface);
  const std::optional<int16_t> Z = ToInt16(Zoom / 100);
  if (!Z) return;
  if (State.CurrentTool != kSelectAreaTool) document.CropArea.SetVisible(false);
  Surface.SetForeColor(StrokeColor());
  document.BufferSelected.SetForeColor(StrokeColor());
  const Stroke stroke{document, Surface, X, Y, Down, *Z, static_cast<Single>(100 / Zoom)};
  // A tool that fails in the middle has left out its last step, which shows what it has done so far.
  if (!Attempt([&] { RunTool(stroke); })) RefreshPaintArea(Surface);
}

}  // namespace zelvane
