#include "tools/EyedropperTool.h"

#include <string>

#include "colour/ColorBars.h"
#include "surface/raster/FailingStep.h"
#include "tools/OptionBars.h"
#include "tools/Stroke.h"

namespace zelvane {
namespace {

bool IsInPicture(const Canvas& Buffer, int32_t X, int32_t Y) {
  return X >= 0 && Y >= 0 && X < Buffer.ScaleWidth() && Y < Buffer.ScaleHeight();
}

void ShowColor(Color color) {
  const auto [red, green, blue] = Split(color);
  frmControls->ColorPick.SetBackColor(color);
  frmControls->lblRed.SetCaption(std::to_string(red));
  frmControls->lblGreen.SetCaption(std::to_string(green));
  frmControls->lblBlue.SetCaption(std::to_string(blue));
}

}  // namespace

/// Takes the colour from the picture, in which a floating selection is seen as well.
void EyedropperTool(const Stroke& stroke) {
  if (!IsInPicture(stroke.Surface, stroke.X, stroke.Y)) return;
  const Color color = stroke.Surface.GetPixel(stroke.X, stroke.Y);
  ColorPanel->SelColor[State.PointerButton == kLeftButton ? 0 : 1].SetBackColor(color);
  SetColorBars();
  PaintGradient();
  SyncDocumentColors();
}

void ShowPixelInfo(const Canvas& Buffer, Single X, Single Y) {
  if (X < 0 || Y < 0) return;
  const auto column = ToInt32(X), row = ToInt32(Y);
  if (column && row && IsInPicture(Buffer, *column, *row)) ShowColor(Buffer.GetPixel(*column, *row));
}

}  // namespace zelvane
