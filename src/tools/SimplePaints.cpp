#include "tools/SimplePaints.h"

#include "colour/ColorPanel.h"
#include "surface/raster/FailingStep.h"
#include "tools/Stroke.h"

namespace zelvane {
namespace {

Color StrokeColor() {
  return ColorPanel->SelColor[State.PointerButton == kLeftButton ? 0 : 1].BackColor();
}

void RunTool(const Stroke& stroke) {
  switch (static_cast<Tool>(State.CurrentTool)) {
    case kPenTool:
      return PenTool(stroke);
    case kCursorTool:
    case kMagnifyingTool:
    case kFloodfillTool:
    case kGradientTool:
    case kSelectAreaTool:
    case kAirbrushTool:
    case kCropTool:
    case kEyedropperTool:
    case kRectangleTool:
    case kCircleTool:
    case kBrightenTool:
    case kTextTool:
    case kBlurTool:
    case kEraserTool:
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
  Attempt([&] { RunTool(stroke); });
}

void FillOptionTable() {
  constexpr ToolOption kPressure{0, 100, 50}, kSize{1, 100, 10}, kBorder{1, 100, 1}, kEraser{1, 100, 5};
  State.OptionTable = {kPressure, kPressure, kSize, kSize,   kBorder, kBorder,
                       kBorder,   kSize,     kSize, kEraser, {},      {}};
}

}  // namespace zelvane
