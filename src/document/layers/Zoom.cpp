#include <algorithm>

#include "document/layers/ImageDocument.h"
#include "shell/state/State.h"
#include "surface/raster/FailingStep.h"
#include "surface/raster/Units.h"

namespace zelvane {
namespace {

constexpr Single kSmallestView = 96;  // units of the view

/// One axis of the window: the picture's place and the bar that moves it.
struct Axis {
  ScrollBar& bar;
  double picture, viewport;
};

void LimitBar(const Axis& axis) {
  With(ToInt16(axis.picture - axis.viewport), [&](int16_t max) { axis.bar.SetMax(max); });
  With(ToInt16(axis.viewport), [&](int16_t change) { axis.bar.SetLargeChange(change); });
}

/// The viewport is bare of a frame, so its inside is its whole size. Where the picture needs more range than
/// a bar has, the bar keeps its old one.
Single PlaceAlong(const Axis& axis) {
  if (axis.picture < axis.viewport) {
    axis.bar.SetMax(0);
    return static_cast<Single>(RoundHalfEven((axis.viewport - axis.picture) / 2));
  }
  LimitBar(axis);
  return static_cast<Single>(-axis.bar.Value());
}

Rect Shifted(const Rect& rect, int across, int down) {
  return {rect.left + across, rect.top + down, rect.right + across, rect.bottom + down};
}

Rect Times(const Rect& pixels, int multiple) {
  return {pixels.left * multiple, pixels.top * multiple, pixels.right * multiple, pixels.bottom * multiple};
}

}  // namespace

void ImageDocument::SizePaintArea() {
  PaintArea.SetWidth(static_cast<Single>(Zoom / 100 * Buffer.ScaleWidth() + 2));
  PaintArea.SetHeight(static_cast<Single>(Zoom / 100 * Buffer.ScaleHeight() + 2));
  Fit(FittingWidth(), FittingHeight());
}

Single ImageDocument::FittingWidth() const {
  return (std::max(PaintArea.Width(), kSmallestView) + VScroll1.Width()) * kTwipsPerPixel;
}

Single ImageDocument::FittingHeight() const {
  return (std::max(PaintArea.Height(), kSmallestView) + HScroll1.Height()) * kTwipsPerPixel;
}

void ImageDocument::LayOutAxis(bool horizontal) {
  if (horizontal)
    PaintArea.SetLeft(PlaceAlong({HScroll1, PaintArea.Width(), Back.Width()}));
  else
    PaintArea.SetTop(PlaceAlong({VScroll1, PaintArea.Height(), Back.Height()}));
}

void ImageDocument::Form_Resize() {
  if (WindowState() == kMinimised) return;
  const Single h = HScroll1.Height(), w = VScroll1.Width();
  HScroll1.Move(0, ScaleHeight() - h, ScaleWidth() - w, h);
  VScroll1.Move(ScaleWidth() - w, 0, w, ScaleHeight() - h);
  Back.Move(0, 0, ScaleWidth() - w, ScaleHeight() - h);
  LayOutAxis(true);
  LayOutAxis(false);
}

void ImageDocument::RealignZoom(double vertical, double horizontal) {
  const int multiple_before = PaintArea.Multiple();
  PaintArea.SetSource(&Buffer, ZoomMultiple());
  Form_Resize();
  const auto put = [](ScrollBar& bar, double fraction) {
    if (fraction < 0) return;
    With(ToInt16(bar.Max() * fraction), [&](int16_t value) { bar.SetValue(value); });
  };
  put(VScroll1, vertical);
  put(HScroll1, horizontal);
  MoveMarquees();
  if (PaintArea.Multiple() != multiple_before) MoveTextInput(multiple_before);
  PaintArea.Refresh();
}

/// Onto the layer of the selection, which stands in image pixels.
void ImageDocument::PlaceMarquee(ShapeOverlay& marquee) {
  const Single s = ZoomMultiple();
  marquee.Move(BufferSelected.Left() * s, BufferSelected.Top() * s, BufferSelected.Width() * s,
               BufferSelected.Height() * s);
}

void ImageDocument::PlaceSelectArea() {
  PlaceMarquee(SelectArea);
  if (Down) return;
  Assign(State.SelectionLeft, ToInt16(SelectArea.Left()));
  Assign(State.SelectionTop, ToInt16(SelectArea.Top()));
}

/// One that is still being drawn follows the pointer.
void ImageDocument::MoveMarquees() {
  if (BufferSelected.Image().IsEmpty()) return;
  if (CropArea.Visible()) PlaceMarquee(CropArea);
  if (SelectArea.Visible()) PlaceSelectArea();
}

/// It stays on its pixel of the picture.
void ImageDocument::MoveTextInput(int multiple_before) {
  const Single left = TextInput.Left() / static_cast<Single>(multiple_before);
  const Single top = TextInput.Top() / static_cast<Single>(multiple_before);
  TextInput.Move(left * ZoomMultiple(), top * ZoomMultiple());
  SetTextFont(Buffer.Font());
}

/// Scrolling doesn't keep the keyboard from the picture or from the text that is typed on it.
void ImageDocument::FocusPicture() {
  if (!TextInput.HasFocus()) PaintArea.SetFocus();
}

/// What comes into view is painted by itself, and the marquees move along with the picture.
void ImageDocument::HScroll1_Change() {
  FocusPicture();
  PaintArea.SetLeft(static_cast<Single>(-HScroll1.Value()));
}

void ImageDocument::VScroll1_Change() {
  FocusPicture();
  PaintArea.SetTop(static_cast<Single>(-VScroll1.Value()));
}

Rect ImageDocument::SelectedPlace() const {
  return Shifted(BufferSelected.Image().Bounds(), static_cast<int>(BufferSelected.Left()),
                 static_cast<int>(BufferSelected.Top()));
}

void ImageDocument::TakeAsMerged() {
  BufferSelected.TakeDamage();
  merged_place_ = SelectedPlace();
}

void ImageDocument::MergeSelection() {
  if (!SelectArea.Visible()) {
    merged_place_ = {};
    return;
  }
  const Rect place = SelectedPlace();
  const int left = place.left, top = place.top;
  const Rect drawn = Shifted(BufferSelected.TakeDamage(), left, top);
  const bool is_merged = place == merged_place_;
  const Rect changed = is_merged ? drawn.United(Buffer.Damage().Intersected(place)) : place;
  Buffer.BitBlt(changed.left, changed.top, changed.Width(), changed.Height(), BufferSelected,
                changed.left - left, changed.top - top);
  merged_place_ = place;
}

void RefreshPaintArea(PictureSurface& surface) {
  ImageDocument& document = DocumentOf(surface);
  document.MergeSelection();
  document.PaintArea.Refresh(Times(surface.TakeDamage(), document.ZoomMultiple()));
}

}  // namespace zelvane
