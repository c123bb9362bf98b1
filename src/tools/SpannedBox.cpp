#include "tools/SpannedBox.h"

#include <algorithm>
#include <cmath>

#include "surface/raster/FailingStep.h"

namespace zelvane {
namespace {

enum BoxStyles : int16_t { kBorderOnly = 0, kBorderAndFill = 1, kFillOnly = 2 };
constexpr int16_t kThinBorder = 1;

/// One axis of the box in units of the view; no value for what would need a pointer's place beyond 16 bits.
struct Side {
  std::optional<Single> start, length;
};

/// `pressed` and `pointer` are image pixels.
Side SideOf(Single pressed, int16_t pointer, int16_t Z) {
  const Single start = pressed * Z;
  const auto end = Product16(pointer, Z);
  if (!end) return {pointer > pressed ? std::optional(start) : std::nullopt, std::nullopt};
  return pointer > pressed ? Side{start, *end - start} : Side{*end, start - *end};
}

/// In units of the view: first at the right and the bottom, then at the left and the top.
void ClipToPicture(ShapeOverlay& box, const PictureView& view) {
  box.SetWidth(std::min(box.Width(), view.ScaleWidth() - box.Left()));
  box.SetHeight(std::min(box.Height(), view.ScaleHeight() - box.Top()));
  if (box.Left() < 0) box.SetWidth(box.Left() + box.Width()), box.SetLeft(0);
  if (box.Top() < 0) box.SetHeight(box.Top() + box.Height()), box.SetTop(0);
}

/// Whether the press lies more than a pixel away, both taken as whole pixels.
bool IsApart(Single pressed, int16_t pointer) {
  return std::abs(RoundHalfEven(pressed) - pointer) > 1;
}

void SetFill(PictureSurface& layer, int16_t style, Color color) {
  layer.SetFillStyle(style);
  if (style == kFillSolid) layer.SetFillColor(color);
}

}  // namespace

void SpanBox(ShapeOverlay& box, const Stroke& stroke) {
  const PictureSurface& Surface = stroke.Surface;
  const Side across = SideOf(Surface.CurrentX(), stroke.X, stroke.Z);
  const Side down = SideOf(Surface.CurrentY(), stroke.Y, stroke.Z);
  With(across.start, [&](Single left) { box.SetLeft(left); });
  With(across.length, [&](Single width) { box.SetWidth(width); });
  With(down.start, [&](Single top) { box.SetTop(top); });
  With(down.length, [&](Single height) { box.SetHeight(height); });
}

void SpanMarquee(ShapeOverlay& marquee, const Stroke& stroke) {
  SpanBox(marquee, stroke);
  ClipToPicture(marquee, stroke.Document.PaintArea);
  const Rect pixels = PixelsOf(marquee, stroke.R);
  const auto units = [&](int count) { return static_cast<Single>(count * stroke.Z); };
  marquee.Move(units(pixels.left), units(pixels.top), units(pixels.Width()), units(pixels.Height()));
}

Rect PixelsOf(const ShapeOverlay& marquee, Single R) {
  const auto pixels = [R](Single units) { return static_cast<int>(RoundHalfEven(R * units)); };
  const int left = pixels(marquee.Left()), top = pixels(marquee.Top());
  return {left, top, left + pixels(marquee.Width()), top + pixels(marquee.Height())};
}

bool IsDragged(const Stroke& stroke) {
  return IsApart(stroke.Surface.CurrentX(), stroke.X) || IsApart(stroke.Surface.CurrentY(), stroke.Y);
}

void SetBoxStyle(const Stroke& stroke, double border_width) {
  const int16_t fill = State.OptionButton == kBorderOnly ? kFillTransparent : kFillSolid;
  const bool fill_only = State.OptionButton == kFillOnly;
  SetDrawWidths(stroke, fill_only ? kThinBorder : border_width);
  for (PictureSurface* layer : {&stroke.Surface, &stroke.Document.BufferSelected}) {
    SetFill(*layer, fill, fill_only ? layer->ForeColor() : OtherColor());
  }
}

}  // namespace zelvane
