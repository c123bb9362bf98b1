#include "tools/SpannedBox.h"

#include "surface/raster/FailingStep.h"

namespace zelvane {
namespace {

enum BoxStyles : int16_t { kBorderOnly = 0, kBorderAndFill = 1, kFillOnly = 2 };
constexpr int16_t kThinBorder = 1;

struct Side {
  Single start, length;
};

/// One axis of the box in units of the view; `pressed` and `pointer` are image pixels. No value where the
/// pointer's place doesn't fit 16 bits.
std::optional<Side> SideOf(Single pressed, int16_t pointer, int16_t Z) {
  const auto end = Product16(pointer, Z);
  if (!end) return std::nullopt;
  const Single start = pressed * Z;
  return pointer > pressed ? Side{start, *end - start} : Side{static_cast<Single>(*end), start - *end};
}

void SetFill(PictureSurface& layer, int16_t style, Color color) {
  layer.SetFillStyle(style);
  if (style == kFillSolid) layer.SetFillColor(color);
}

}  // namespace

void SpanBox(ShapeOverlay& box, const Stroke& stroke) {
  const PictureSurface& Surface = stroke.Surface;
  const auto across = SideOf(Surface.CurrentX(), stroke.X, stroke.Z);
  const auto down = SideOf(Surface.CurrentY(), stroke.Y, stroke.Z);
  With(across, [&](const Side& side) { box.SetLeft(side.start), box.SetWidth(side.length); });
  With(down, [&](const Side& side) { box.SetTop(side.start), box.SetHeight(side.length); });
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
