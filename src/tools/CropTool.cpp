#include <algorithm>

#include "selection/Selection.h"
#include "tools/SpannedBox.h"
#include "ui/MsgBox.h"

namespace zelvane {
namespace {

void Drag(const Stroke& stroke) {
  SpanMarquee(stroke.Document.CropArea, stroke);
  stroke.Document.CropArea.SetVisible(true);
}

/// The marquee stays up meanwhile, to show what is asked about.
bool MayCrop(ShapeOverlay& marquee) {
  marquee.SetVisible(true);
  const bool is_yes =
      MsgBox("Are you sure you wish to crop?", kYesNo + kExclamationIcon, "Crop?") == kAnswerYes;
  marquee.SetVisible(false);
  return is_yes;
}

/// Where there is no memory for the part that stays, the picture stays whole.
void CutDown(ImageDocument& document, const Rect& kept) {
  PictureSurface& carrier = document.BufferSelected;
  carrier.ResizeToOverwrite(kept.Width(), kept.Height());
  carrier.BitBlt(0, 0, kept.Width(), kept.Height(), document.Buffer, kept.left, kept.top);
  document.Buffer.SetPicture(carrier.Image());
  carrier.SetImage({});
  document.SizePaintArea();
  RefreshPaintArea(document.Buffer);
}

/// What lies at the place of the release stays in view.
void LookAtRelease(const Stroke& stroke, const Rect& kept) {
  const auto fraction = [](int place, int size) {
    return std::clamp(static_cast<double>(place) / size, 0.0, 1.0);
  };
  stroke.Document.RealignZoom(fraction(stroke.Y - kept.top, kept.Height()),
                              fraction(stroke.X - kept.left, kept.Width()));
}

void Release(const Stroke& stroke) {
  const Rect kept = PixelsOf(stroke.Document.CropArea, stroke.R);
  if (!IsDragged(stroke) || kept.IsEmpty() || !MayCrop(stroke.Document.CropArea)) return;
  CutDown(stroke.Document, kept);
  LookAtRelease(stroke, kept);
}

}  // namespace

/// The frame of the engine has hidden the marquee.
void CropTool(const Stroke& stroke) {
  DropSelection(stroke.Document);
  if (stroke.Down)
    Drag(stroke);
  else
    Release(stroke);
}

}  // namespace zelvane
