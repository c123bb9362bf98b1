#include "selection/Selection.h"

#include <utility>

#include "colour/ColorPanel.h"

namespace zelvane {
namespace {

Color BackgroundColor() {
  return ColorPanel->SelColor[1].BackColor();
}

void StandAt(ImageDocument& document, Single left, Single top) {
  for (PictureSurface* layer : {&document.BufferSelected, &document.SelectedBack}) {
    layer->Move(left, top);
    layer->SetCurrentX(document.Buffer.CurrentX() - layer->Left());
    layer->SetCurrentY(document.Buffer.CurrentY() - layer->Top());
  }
}

int32_t LeftOf(const PictureSurface& layer) {
  return static_cast<int32_t>(layer.Left());
}
int32_t TopOf(const PictureSurface& layer) {
  return static_cast<int32_t>(layer.Top());
}

/// What lies off the picture is neither kept nor put back.
void KeepBeneath(ImageDocument& document) {
  PictureSurface& back = document.SelectedBack;
  back.BitBlt(0, 0, back.ScaleWidth(), back.ScaleHeight(), document.Buffer, LeftOf(back), TopOf(back));
}

void PutBack(ImageDocument& document) {
  const PictureSurface& back = document.SelectedBack;
  document.Buffer.BitBlt(LeftOf(back), TopOf(back), back.ScaleWidth(), back.ScaleHeight(), back, 0, 0);
}

/// The whole picture is shared until one of the two is written to.
void CopyPart(const PictureSurface& picture, const Rect& area, PictureSurface& part) {
  if (area == picture.Image().Bounds()) return part.SetImage(picture.Image());
  part.ResizeToOverwrite(area.Width(), area.Height());
  part.BitBlt(0, 0, area.Width(), area.Height(), picture, area.left, area.top);
}

bool StandsAt(const PictureSurface& layer, Single left, Single top) {
  return layer.Left() == RoundHalfEven(left) && layer.Top() == RoundHalfEven(top);
}

}  // namespace

void LiftSelection(ImageDocument& document, const Rect& area) {
  if (area.IsEmpty()) return DropSelection(document);
  PictureSurface &selected = document.BufferSelected, &back = document.SelectedBack;
  document.SelectArea.SetVisible(false);
  CopyPart(document.Buffer, area, selected);
  back.ResizeToOverwrite(area.Width(), area.Height());
  back.SetBackColor(BackgroundColor());
  StandAt(document, static_cast<Single>(area.left), static_cast<Single>(area.top));
  document.TakeAsMerged();
  document.PlaceSelectArea();
  document.SelectArea.SetVisible(true);
}

void FloatSelection(ImageDocument& document, Bitmap pixels, Single left, Single top) {
  Bitmap back(pixels.Width(), pixels.Height(), ToPixel(BackgroundColor()));
  document.SelectedBack.SetImage(std::move(back));
  document.BufferSelected.SetImage(std::move(pixels));
  StandAt(document, left, top);
  KeepBeneath(document);
  document.PlaceSelectArea();
  document.SelectArea.SetVisible(true);
  RefreshPaintArea(document.Buffer);
}

void ReplaceSelection(ImageDocument& document, Bitmap pixels) {
  PictureSurface& selected = document.BufferSelected;
  if (pixels.Bounds() == selected.Image().Bounds()) return selected.SetImage(std::move(pixels));
  const Single left = selected.Left(), top = selected.Top();
  PutBack(document);
  FloatSelection(document, std::move(pixels), left, top);
}

/// A selection that is put back where it stands leaves every layer as it was.
void MoveSelection(ImageDocument& document, Single left, Single top) {
  PictureSurface& selected = document.BufferSelected;
  if (!StandsAt(selected, left, top)) {
    PutBack(document);
    StandAt(document, left, top);
    KeepBeneath(document);
    RefreshPaintArea(document.Buffer);
  }
  document.PlaceSelectArea();
}

void WipeSelection(ImageDocument& document) {
  document.BufferSelected.SetBackColor(BackgroundColor());
  RefreshPaintArea(document.Buffer);
  DropSelection(document);
}

void DropSelection(ImageDocument& document) {
  document.SelectArea.SetVisible(false);
  document.BufferSelected.SetImage({});
  document.SelectedBack.SetImage({});
}

}  // namespace zelvane
