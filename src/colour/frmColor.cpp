#include "colour/frmColor.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "colour/ColorBars.h"
#include "colour/ColorFields.h"
#include "colour/SwatchPanel.h"
#include "document/layers/ImageDocument.h"
#include "shell/state/State.h"
#include "surface/forms/windows/MdiForm.h"
#include "surface/raster/FailingStep.h"
#include "surface/raster/Units.h"
#include "surface/system/desktop/Screen.h"
#include "ui/KeptDialog.h"

namespace zelvane {
namespace {

constexpr int kCancel = 0, kOk = 1;
constexpr Single kSide = 255, kStripWidth = 18;                          // pixels inside the frames
constexpr Single kOuterMark = 13, kInnerMark = 11, kMarkTop = 112;       // pixels
constexpr Single kOuterReach = 6, kInnerReach = 5, kOutOfSight = -20;    // pixels
constexpr Single kMargin = 120, kFieldTop = 360, kGap = 135;             // twips
constexpr Single kSamples = 1035, kSampleHeight = 435, kRow = 300;       // twips
constexpr Single kFramedSide = (kSide + 2) * kTwipsPerPixel;             // twips
constexpr Single kFramedStrip = (kStripWidth + 2) * kTwipsPerPixel;      // twips
constexpr double kBelowMenus = 720, kAboveEdge = 30, kBesideText = 300;  // twips
constexpr Single kFarStep = 10;

Single OnField(Single place) {
  return std::clamp(std::floor(place), Single{0}, kSide - 1);
}

void ShowSample(PictureSurface& sample, Color color) {
  sample.SetBackColor(color);
  sample.Refresh();
}

}  // namespace

ColorDialog::ColorDialog()
    : DialogForm("frmColor", DialogLook::Titled),
      lblTitle(*this, "lblTitle", "Select color:"),
      ColorSel(*this, "ColorSel", PictureSurface::Frame::Yes),
      SelObject(2, ColorSel, "SelObject"),
      ColorMap(*this, "ColorMap", PictureSurface::Frame::Yes),
      Line1(ColorMap, "Line1"),
      FocusMark(*this, "FocusMark"),
      Picture1(*this, "Picture1", PictureSurface::Frame::Yes),
      NewColor(Picture1, "NewColor"),
      OldColor(Picture1, "OldColor") {
  for (const char* name : {"Red:", "Green:", "Blue:"}) {
    lblNames.Add(*this, "lblName", name);
    lblRGB.Add(*this, "lblRGB", "0");
  }
  for (const char* caption : {"Cancel", "&OK"}) Command1.Add(*this, "Command1", caption);
  Form_Load();
}

void ColorDialog::Form_Load() {
  SetCaption(" Color Selection");
  SetScaleMode(Scale::Twips);
  Picture1.SetScaleMode(Scale::Twips);
  SetKeyPreview(true);
  SetResizable(false);
  Command1[kOk].SetDefault(true);
  ColorSel.SetAccessibleName("Color field");
  ColorMap.SetAccessibleName("Hue");
  NewColor.SetAccessibleName("New color");
  OldColor.SetAccessibleName("Old color");
  SelObject[0].SetForeColor(kBlack);
  SelObject[1].SetForeColor(kWhite);
  Line1.SetForeColor(kBlack);
  FocusMark.SetForeColor(SystemColor::ActiveCaption);
  FocusMark.SetVisible(false);
  LayOut();
  WireEvents();
  // Once Tab comes to the pictures too: in a ring of two buttons each is after the other already.
  Command1[kCancel].SetTabAfter(Command1[kOk]);
  PaintHueStrip(ColorMap);
  ColorMap.Refresh();
  ShowHue(0);
  const Color color = ColorPanel->SelColor[State.ColorDialogTarget].BackColor();
  ShowSample(NewColor, color);
  ShowNumbers(color);
  PaintColorField(ColorSel, ColorMap.Point(1, Hue));
  ColorSel.Refresh();
}

void ColorDialog::LayOut() {
  lblTitle.Move(kMargin, kMargin, kFramedSide, kFieldTop - kMargin);
  ColorSel.Move(kMargin, kFieldTop, kFramedSide, kFramedSide);
  SelObject[0].Move(kOutOfSight, kMarkTop, kOuterMark, kOuterMark);
  SelObject[1].Move(kOutOfSight, kMarkTop + 1, kInnerMark, kInnerMark);
  const Single strip = kMargin + kFramedSide + kGap, right = strip + kFramedStrip + kGap;
  ColorMap.Move(strip, kFieldTop, kFramedStrip, kFramedSide);
  const Single caption = lblTitle.TextWidth(Command1[kCancel].Caption());
  const Single width = std::max(kSamples, caption + static_cast<Single>(kBesideText));
  const Single inside = width - 2 * kTwipsPerPixel;
  Picture1.Move(right, kFieldTop, width, 2 * kSampleHeight + 2 * kTwipsPerPixel);
  NewColor.Move(0, 0, inside, kSampleHeight);
  OldColor.Move(0, kSampleHeight, inside, kSampleHeight);
  for (int i = 0; i < kChannelCount; ++i) {
    const Single top = Picture1.Top() + Picture1.Height() + kGap + static_cast<Single>(i) * kRow;
    lblNames[i].Move(right, top, width, kRow);
    lblRGB[i].Move(right + width / 2, top, width / 2, kRow);
    lblRGB[i].SetAlignment(kAlignRight);
  }
  Single top = kFieldTop + kFramedSide;
  for (int i = 0; i < Command1.Count(); ++i) {
    top -= Command1[i].NaturalHeight();
    Command1[i].Move(right, top, width, Command1[i].NaturalHeight());
    top -= kGap / 2;
  }
  SetWidth(right + width + kMargin);
  SetHeight(kFieldTop + kFramedSide + kMargin);
}

/// Beside the right edge of the main window, below its colour panel, and never beyond the work area.
void ColorDialog::PlaceColorDialog() {
  const MdiForm* main = MdiForm::Main();
  if (!main) return;
  const double below = SwatchPanel->Picture3.Top() * kTwipsPerPixel;
  double top = RoundHalfEven(below + main->Top() + State.TitleBarHeight + kBelowMenus);
  if (Screen::WorkAreaHeight() < top + Height()) top = Screen::WorkAreaHeight() - Height() - kAboveEdge;
  Move(main->Left() + main->Width() - Width(), static_cast<Single>(top));
}

void ColorDialog::WireEvents() {
  OnQueryUnload = [this](bool& Cancel, UnloadModes) { Form_QueryUnload(Cancel); };
  for (int16_t i = 0; i < Command1.Count(); ++i) Command1[i].OnClick = [this, i] { Command1_Click(i); };
  WireField();
  WireStrip();
  for (PictureSurface* picture : {&ColorSel, &ColorMap}) ShowFocus(*picture);
}

/// Tab comes to the picture, which then shows that keys go there.
void ColorDialog::ShowFocus(PictureSurface& picture) {
  constexpr Single kReach = 2 * kTwipsPerPixel;
  picture.SetTabStop(true);
  picture.OnGotFocus = [this, &picture] {
    FocusMark.Move(picture.Left() - kReach, picture.Top() - kReach, picture.Width() + 2 * kReach,
                   picture.Height() + 2 * kReach);
    FocusMark.SetVisible(true);
  };
  picture.OnLostFocus = [this] { FocusMark.SetVisible(false); };
}

void ColorDialog::WireField() {
  ColorSel.OnMouseDown = [this](int16_t, int16_t, Single X, Single Y) {
    FieldDragging = true;
    PickInside(X, Y);
  };
  ColorSel.OnMouseMove = [this](int16_t, int16_t, Single X, Single Y) {
    if (FieldDragging) PickInside(X, Y);
  };
  ColorSel.OnMouseUp = [this](int16_t, int16_t, Single X, Single Y) {
    FieldDragging = false;
    PickInside(X, Y);
  };
  ColorSel.OnKeyDown = [this](int16_t KeyCode, int16_t Shift) { MovePick(KeyCode, Shift); };
}

void ColorDialog::WireStrip() {
  ColorMap.OnMouseDown = [this](auto...) { HueDragging = true; };
  ColorMap.OnMouseMove = [this](int16_t, int16_t, Single, Single Y) {
    if (HueDragging) ShowHue(OnField(Y));
  };
  ColorMap.OnMouseUp = [this](int16_t, int16_t, Single, Single Y) {
    ShowHue(OnField(Y));
    HueDragging = false;
    TakeHue();
  };
  ColorMap.OnKeyDown = [this](int16_t KeyCode, int16_t Shift) { MoveHue(KeyCode, Shift); };
}

void ColorDialog::Edit(int16_t Index) {
  State.ColorDialogTarget = Index;
  if (MdiForm* main = MdiForm::Main()) main->SetEnabled(false);
  PlaceColorDialog();
  ShowSample(OldColor, ColorPanel->SelColor[Index].BackColor());
  lblTitle.SetCaption(Index == 0 ? "Select foreground color:" : "Select background color:");
  Show();
}

// Picking.

/// A frame of three rows round the hue's own.
void ColorDialog::ShowHue(Single y) {
  Hue = y;
  Line1.Move(0, y - 1, kStripWidth, 3);
}

/// The pick stays where it is, in the field of another hue. It runs through before any event comes.
void ColorDialog::TakeHue() {
  PaintColorField(ColorSel, ColorMap.Point(1, Hue));
  ColorSel.Refresh();
  PickFieldColor(SelObject[0].Left() + kOuterReach, SelObject[0].Top() + kOuterReach);
}

void ColorDialog::PickFieldColor(Single x, Single y) {
  SelObject[0].Move(x - kOuterReach, y - kOuterReach);
  SelObject[1].Move(x - kInnerReach, y - kInnerReach);
  const Color picked = ColorSel.Point(std::max(x, Single{0}), std::max(y, Single{0}));
  ShowNumbers(picked);
  ShowSample(NewColor, picked);
  Preview(picked);
}

void ColorDialog::PickInside(Single x, Single y) {
  PickFieldColor(OnField(x), OnField(y));
}

/// The document shows it at once, whichever of the two colours it is.
void ColorDialog::Preview(Color picked) {
  ImageDocument* document = ActiveDocument();
  if (!document) return;
  document->Buffer.SetForeColor(picked);
  document->TextInput.SetForeColor(picked);
}

void ColorDialog::ShowNumbers(Color color) {
  const Channels split = Split(color);
  const int values[kChannelCount] = {split.red, split.green, split.blue};
  for (int i = 0; i < kChannelCount; ++i) {
    lblRGB[i].SetCaption(std::to_string(values[i]));
    lblRGB[i].SetAccessibleName(lblNames[i].Caption() + ' ' + lblRGB[i].Caption());
  }
}

void ColorDialog::MovePick(int16_t KeyCode, int16_t Shift) {
  const Single step = Shift == kShift ? kFarStep : 1;
  const Single x = SelObject[0].Left() + kOuterReach, y = SelObject[0].Top() + kOuterReach;
  if (KeyCode == kKeyLeft) PickInside(x - step, y);
  if (KeyCode == kKeyRight) PickInside(x + step, y);
  if (KeyCode == kKeyUp) PickInside(x, y - step);
  if (KeyCode == kKeyDown) PickInside(x, y + step);
}

void ColorDialog::MoveHue(int16_t KeyCode, int16_t Shift) {
  if (KeyCode != kKeyUp && KeyCode != kKeyDown) return;
  const Single step = Shift == kShift ? kFarStep : 1;
  ShowHue(OnField(KeyCode == kKeyUp ? Hue - step : Hue + step));
  TakeHue();
}

// Going.

void ColorDialog::Command1_Click(int16_t Index) {
  if (Index == kOk) {
    ColorPanel->SelColor[State.ColorDialogTarget].SetBackColor(NewColor.BackColor());
    SetColorBars();
    PaintGradient();
    SyncDocumentColors();
  }
  ReturnToMain(*this);
}

void ColorDialog::Form_QueryUnload(bool& Cancel) {
  if (State.Exiting) return;
  Cancel = true;
  ReturnToMain(*this);
}

}  // namespace zelvane
