#include "imageops/frmSize.h"

#include <algorithm>

#include "shell/state/Settings.h"
#include "shell/state/State.h"
#include "surface/forms/controls/Events.h"
#include "surface/raster/FailingStep.h"
#include "surface/raster/Units.h"
#include "ui/KeptDialog.h"

namespace zelvane {
namespace {

constexpr int kCancel = 0, kOk = 1;
constexpr Single kMargin = 180, kGap = 120;  // twips
constexpr int kLinkSide = 24;                // pixels
constexpr char kProportionsKey[] = "ImageKeepProportions";

/// Away from the surface that shows: without the memory for it the picture stays as it was.
Bitmap Scaled(const PictureSurface& picture, int width, int height) {
  Canvas scaled;
  scaled.ResizeToOverwrite(width, height);
  scaled.StretchBlt(0, 0, width, height, picture, 0, 0, picture.ScaleWidth(), picture.ScaleHeight());
  return scaled.Image();
}

}  // namespace

ImageSizeDialog::ImageSizeDialog()
    : DialogForm("frmSize", DialogLook::Titled),
      lblWidth(*this, "lblWidth", "Width:"),
      txtWidth(*this, "txtWidth"),
      lblHeight(*this, "lblHeight", "Height:"),
      txtHeight(*this, "txtHeight"),
      Constrain(*this, "Constrain"),
      Check1(*this, "Check1", "Retain proportions?") {
  for (const char* caption : {"Cancel", "&OK"}) Command1.Add(*this, "Command1", caption);
  Form_Load();
}

void ImageSizeDialog::Form_Load() {
  SetCaption(" Image Size");
  SetKeyPreview(true);
  SetResizable(false);
  Command1[kOk].SetDefault(true);
  Command1[kCancel].SetTabAfter(Command1[kOk]);
  Constrain.SetBackColor(SystemColor::ButtonFace);
  Constrain.SetIcon("link", kLinkSide);
  Sides.Prepare();
  Check1.SetValue(ReadNumber(kProportionsKey, 0) == 1.0 ? 1 : 0);
  Constrain.SetVisible(Check1.Value() == 1);
  LayOut();
  PlaceAtMain(*this);
  WireEvents();
}

void ImageSizeDialog::WireEvents() {
  OnActivate = [this] { PlaceAtMain(*this); };
  OnQueryUnload = [this](bool& Cancel, UnloadModes) { Form_QueryUnload(Cancel); };
  // A person changes the number of the box that has the keyboard. Going by its keys, Tab into the other box
  // would bring back from there what had been cut to whole pixels, and the wheel would change one side only.
  txtWidth.OnChange = [this] {
    if (txtWidth.GotFocus()) FollowWidth();
  };
  txtHeight.OnChange = [this] {
    if (txtHeight.GotFocus()) FollowHeight();
  };
  Check1.OnClick = [this] { Check1_Click(); };
  for (int16_t i = 0; i < Command1.Count(); ++i) Command1[i].OnClick = [this, i] { Command1_Click(i); };
}

/// Everything is as large as the desktop's font needs it.
void ImageSizeDialog::LayOut() {
  SetScaleMode(Scale::Twips);
  const Single row = txtWidth.Entry().NaturalHeight() * kTwipsPerPixel;  // a box measures in pixels
  const SideBoxes::Corner boxes = Sides.PlaceAt(kMargin, kMargin, row);
  const auto link = static_cast<Single>(kLinkSide * kTwipsPerPixel);
  Constrain.Move(boxes.right + kGap, (kMargin + boxes.bottom - link) / 2, link, link);
  Check1.Move(kMargin, boxes.bottom + kGap, Check1.NaturalWidth(), Check1.NaturalHeight());
  const Single button = std::max(Command1[kOk].NaturalWidth(), Command1[kCancel].NaturalWidth());
  const Single right =
      std::max({Constrain.Left() + link, kMargin + Check1.Width(), kMargin + 2 * button + kGap});
  const Single top = Check1.Top() + Check1.Height() + kMargin, height = Command1[kOk].NaturalHeight();
  Command1[kCancel].Move(right - button, top, button, height);
  Command1[kOk].Move(right - 2 * button - kGap, top, button, height);
  SetWidth(right + kMargin);
  SetHeight(top + height + kMargin);
}

void ImageSizeDialog::FollowWidth() {
  const ImageDocument* document = ActiveDocument();
  if (!document || Check1.Value() != 1) return;
  const PictureSurface& picture = document->Buffer;
  txtHeight.SetValue(txtWidth.Value() / picture.ScaleWidth() * picture.ScaleHeight());
}

void ImageSizeDialog::FollowHeight() {
  const ImageDocument* document = ActiveDocument();
  if (!document || Check1.Value() != 1) return;
  const PictureSurface& picture = document->Buffer;
  txtWidth.SetValue(txtHeight.Value() / picture.ScaleHeight() * picture.ScaleWidth());
}

void ImageSizeDialog::Check1_Click() {
  WriteSetting(kProportionsKey, std::to_string(Check1.Value()));
  Constrain.SetVisible(Check1.Value() == 1);
  FollowWidth();
}

void ImageSizeDialog::Command1_Click(int16_t Index) {
  if (Index == kOk && !ScalePicture()) return;
  Unload();
}

/// What can't be made is told, and what was typed stays.
bool ImageSizeDialog::ScalePicture() {
  ImageDocument* document = ActiveDocument();
  if (!document) return true;
  if (!Sides.HoldSize()) return false;
  const int width = static_cast<int>(txtWidth.Value()), height = static_cast<int>(txtHeight.Value());
  PictureSurface& picture = document->Buffer;
  if (width == picture.ScaleWidth() && height == picture.ScaleHeight()) return true;
  Bitmap scaled;
  if (!Attempt([&] { scaled = Scaled(picture, width, height); })) {
    Sides.TellWantOfMemory();
    return false;
  }
  FireEvent(OnScaling, *document);
  picture.SetPicture(std::move(scaled));
  document->SizePaintArea();
  document->RealignZoom(-1, -1);
  RefreshPaintArea(picture);
  return true;
}

void ImageSizeDialog::Form_QueryUnload(bool& Cancel) {
  if (State.Exiting) return;
  Cancel = true;
  ReturnToMain(*this);
}

void ImageSizeDialog::ShowSize() {
  if (const ImageDocument* document = ActiveDocument()) {
    txtWidth.SetValue(document->Buffer.ScaleWidth());
    txtHeight.SetValue(document->Buffer.ScaleHeight());
  }
  Show();
}

}  // namespace zelvane
