#include "colour/frmNewSwatch.h"

#include <algorithm>

#include "colour/ColorPanel.h"
#include "colour/Swatches.h"
#include "document/layers/InfoPanel.h"
#include "shell/state/State.h"
#include "surface/forms/windows/MdiForm.h"
#include "surface/raster/Units.h"
#include "surface/system/desktop/Screen.h"
#include "ui/KeptDialog.h"
#include "ui/MsgBox.h"

namespace zelvane {
namespace {

constexpr int kOk = 0, kLongestName = 40;
constexpr Single kMargin = 180, kGap = 120, kLine = 60;    // twips
constexpr double kBesideEdge = 90, kBelowInfoFrame = 630;  // twips

}  // namespace

NewSwatchDialog::NewSwatchDialog()
    : DialogForm("frmNewSwatch", DialogLook::Titled),
      lblName(*this, "lblName", "Enter the name for the new swatch:"),
      txtSwatch(*this, "txtSwatch"),
      SwatchColor(*this, "SwatchColor", PictureSurface::Frame::Yes) {
  for (const char* caption : {"&OK", "Cancel"}) Command1.Add(*this, "Command1", caption);
  Form_Load();
}

void NewSwatchDialog::Form_Load() {
  SetCaption(" New Swatch");
  SetKeyPreview(true);
  SetResizable(false);
  Command1[kOk].SetDefault(true);
  txtSwatch.SetMaxLength(kLongestName);
  txtSwatch.SetAccessibleName(lblName.Caption());
  SwatchColor.SetAccessibleName("Foreground color");
  SwatchColor.SetBackColor(ColorPanel->SelColor[0].BackColor());
  LayOut();
  PlaceAtPanel();
  OnQueryUnload = [this](bool&, UnloadModes) { ReturnToMain(*this); };
  for (int16_t i = 0; i < Command1.Count(); ++i) Command1[i].OnClick = [this, i] { Command1_Click(i); };
}

/// The colour stands beside the name, as high as the box.
void NewSwatchDialog::LayOut() {
  SetScaleMode(Scale::Twips);
  const Single row = txtSwatch.NaturalHeight(), text = lblName.NaturalHeight();
  const Single button = std::max(Command1[0].NaturalWidth(), Command1[1].NaturalWidth());
  const Single name = std::max(lblName.NaturalWidth(), 2 * button + kGap - row - kGap);
  const Single right = kMargin + name + kGap + row, box = kMargin + text + kLine;
  lblName.Move(kMargin, kMargin, right - kMargin, text);
  txtSwatch.Move(kMargin, box, name, row);
  SwatchColor.Move(kMargin + name + kGap, box, row, row);
  const Single buttons = box + row + kMargin;
  Command1[1].Move(right - button, buttons, button, Command1[1].NaturalHeight());
  Command1[0].Move(right - 2 * button - kGap, buttons, button, Command1[0].NaturalHeight());
  SetWidth(right + kMargin);
  SetHeight(buttons + Command1[0].Height() + kMargin);
}

/// At the main window's right edge, beside the facts of the picture, and on the screen.
void NewSwatchDialog::PlaceAtPanel() {
  const MdiForm* main = MdiForm::Main();
  if (!main) return;
  const double left = main->Left() + main->Width() - Width() - kBesideEdge;
  const double top =
      InfoPanel->InfoFrame.Top() * kTwipsPerPixel + main->Top() + State.TitleBarHeight + kBelowInfoFrame;
  const Screen::Area place =
      Screen::BroughtOnto(Screen::WorkAreas(), {left, top, Width(), Height() + Screen::kTitleBar});
  Move(static_cast<Single>(place.left), static_cast<Single>(place.top));
}

void NewSwatchDialog::Command1_Click(int16_t Index) {
  if (Index == kOk && txtSwatch.Text().empty()) {
    MsgBox("You have to enter a name for the swatch.", kExclamationIcon, "Name required");
    return;
  }
  if (Index == kOk) {
    AddSwatch(txtSwatch.Text());
    SaveSwatches();
  }
  Unload();
}

}  // namespace zelvane
