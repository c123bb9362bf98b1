#include <algorithm>
#include <cmath>
#include <string>

#include "colour/ColorPanel.h"
#include "surface/raster/FailingStep.h"
#include "tools/OptionBars.h"
#include "tools/Stroke.h"
#include "tools/Sweep.h"

namespace zelvane {
namespace {

constexpr int16_t kLineWidth = 3;

/// Of the rubber band, from its ends in whole units.
double AngleOfFollowLine(const LineOverlay& line) {
  const auto x1 = ToInt16(line.x1()), y1 = ToInt16(line.y1());
  const auto x2 = ToInt16(line.X2()), y2 = ToInt16(line.y2());
  return x1 && y1 && x2 && y2 ? AngleOfLine(*x1, *y1, *x2, *y2) : 0;
}

void ShowAngle(int16_t alignment, const std::string& caption) {
  frmControls->lblAngle.SetAlignment(alignment);
  frmControls->lblAngle.SetCaption(caption);
}

/// From the press to the farthest corner of the picture: a line of that reach spans it in any direction.
double ReachOf(const PictureSurface& Surface) {
  double reach = 0;
  for (const int y : {0, Surface.ScaleHeight()}) {
    for (const int x : {0, Surface.ScaleWidth()}) {
      const double across = x - Surface.CurrentX(), down = y - Surface.CurrentY();
      reach = std::max(reach, std::sqrt(across * across + down * down));
    }
  }
  return reach;
}

/// `Temp` through the press and `Temp2` through the pointer, at right angles to the rubber band.
void PlaceEndLines(const Stroke& stroke, double angle) {
  const double rad = angle * (3.14159265358979 / 180), D = ReachOf(stroke.Surface);
  const double s = std::sin(rad), c = std::cos(rad);
  const double cx = stroke.Surface.CurrentX(), cy = stroke.Surface.CurrentY();
  LineOverlay &Temp = stroke.Document.Temp, &Temp2 = stroke.Document.Temp2;
  const int16_t Z = stroke.Z;
  Temp.Setx1(static_cast<Single>((cx - s * D) * Z));
  Temp.Sety1(static_cast<Single>((cy - c * D) * Z));
  Temp.SetX2(static_cast<Single>((cx + s * D) * Z));
  Temp.Sety2(static_cast<Single>((cy + c * D) * Z));
  const auto x = Product16(stroke.X, Z), y = Product16(stroke.Y, Z);
  With(x, [&](int16_t column) { Temp2.Setx1(static_cast<Single>(column - s * D * Z)); });
  With(y, [&](int16_t row) { Temp2.Sety1(static_cast<Single>(row - c * D * Z)); });
  With(x, [&](int16_t column) { Temp2.SetX2(static_cast<Single>(column + s * D * Z)); });
  With(y, [&](int16_t row) { Temp2.Sety2(static_cast<Single>(row + c * D * Z)); });
}

void Drag(const Stroke& stroke) {
  ShowFollowLine(stroke);
  const double angle = AngleOfFollowLine(stroke.Document.FollowLine);
  With(ToInt16(angle), [](int16_t degrees) { ShowAngle(kAlignRight, std::to_string(degrees) + " \u00B0 "); });
  PlaceEndLines(stroke, angle);
}

EndLine InImagePixels(const LineOverlay& line, Single R) {
  return {R * line.x1(), R * line.y1(), R * line.X2(), R * line.y2()};
}

void MoveTo(const Target& target, std::vector<LineCopy>& copies) {
  const auto left = static_cast<int32_t>(target.Left), top = static_cast<int32_t>(target.Top);
  for (LineCopy& copy : copies) copy.x1 -= left, copy.x2 -= left, copy.y1 -= top, copy.y2 -= top;
}

/// The colours run from foreground to background whichever button is held.
void Release(const Stroke& stroke) {
  ImageDocument& document = stroke.Document;
  ShowAngle(kAlignCentre, "N/A");
  SetDrawWidths(stroke, kLineWidth);
  const double angle = AngleOfFollowLine(document.FollowLine);
  document.FollowLine.SetVisible(false);
  std::vector<LineCopy> copies = SweptCopies(
      InImagePixels(document.Temp, stroke.R), InImagePixels(document.Temp2, stroke.R), angle,
      stroke.Surface.ScaleWidth(), ColorPanel->SelColor[0].BackColor(), ColorPanel->SelColor[1].BackColor());
  const Target target = TargetOf(stroke);
  MoveTo(target, copies);
  DrawCopies(target.Layer, copies);
  RefreshPaintArea(stroke.Surface);
}

}  // namespace

void GradientTool(const Stroke& stroke) {
  if (stroke.Down)
    Drag(stroke);
  else
    Release(stroke);
}

}  // namespace zelvane
