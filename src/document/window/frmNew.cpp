#include "document/window/frmNew.h"

#include <algorithm>

#include "colour/ColorPanel.h"
#include "document/window/MakeDocument.h"
#include "shell/state/Settings.h"
#include "shell/state/State.h"
#include "surface/forms/controls/Events.h"
#include "surface/raster/FailingStep.h"
#include "ui/KeptDialog.h"

namespace zelvane {
namespace {

constexpr double kFirstWidth = 400, kFirstHeight = 300;  // pixels of an image
constexpr int kCancel = 0, kOk = 1;
constexpr Single kMargin = 180, kGap = 120, kLine = 90;  // twips

}  // namespace

NewImageDialog::NewImageDialog()
    : DialogForm("frmNew", DialogLook::Titled),
      lblName(*this, "lblName", "Name:"),
      txtName(*this, "txtName"),
      SizeFrame(*this, "SizeFrame", "Size"),
      lblWidth(SizeFrame, "lblWidth", "Width:"),
      txtWidth(SizeFrame, "txtWidth"),
      lblHeight(SizeFrame, "lblHeight", "Height:"),
      txtHeight(SizeFrame, "txtHeight"),
      BackgroundFrame(*this, "BackgroundFrame", "Background"),
      Command2(*this, "Command2", "&Save As Default Settings") {
  for (const char* caption : {"White", "Foreground", "Background"})
    Option1.Add(BackgroundFrame, "Option1", caption);
  for (const char* caption : {"Cancel", "&OK"}) Command1.Add(*this, "Command1", caption);
  Form_Load();
}

void NewImageDialog::Form_Load() {
  SetCaption(" New Image");
  SetKeyPreview(true);
  SetResizable(false);
  Command1[kOk].SetDefault(true);
  Command1[kCancel].SetTabAfter(Command1[kOk]);
  txtName.SetAccessibleName(lblName.Caption());
  txtName.SetSelectsOnEntry(true);
  Sides.Prepare();
  TakeSettings();
  LayOut();
  PlaceAtMain(*this);
  WireEvents();
}

void NewImageDialog::TakeSettings() {
  txtName.SetText(ReadSetting("NewImageTitle", "Untitled"));
  txtHeight.SetValue(ReadNumber("NewImageHeight", kFirstHeight).value_or(kFirstHeight));
  txtWidth.SetValue(ReadNumber("NewImageWidth", kFirstWidth).value_or(kFirstWidth));
  Option1[0].SetValue(true);
  With(ReadNumber("ImageDefaultBackground", 0),
       [this](double index) { Attempt([&] { Option1[ToInt16(index).value()].SetValue(true); }); });
}

void NewImageDialog::WireEvents() {
  OnQueryUnload = [this](bool& Cancel, UnloadModes) { Form_QueryUnload(Cancel); };
  txtName.OnGotFocus = [this] { txtName.SelectAll(); };
  for (int16_t i = 0; i < Command1.Count(); ++i) Command1[i].OnClick = [this, i] { Command1_Click(i); };
  Command2.OnClick = [this] { Command2_Click(); };
}

/// Everything is as large as the desktop's font needs it.
void NewImageDialog::LayOut() {
  for (Control* scale : {static_cast<Control*>(this), static_cast<Control*>(&SizeFrame),
                         static_cast<Control*>(&BackgroundFrame)})
    scale->SetScaleMode(Scale::Twips);
  const Single row = txtName.NaturalHeight();
  FillSizeFrame(row);
  FillBackgroundFrame();
  const Single beside = kMargin + SizeFrame.Width() + kGap;
  const Single right = std::max(beside + BackgroundFrame.Width(), PlaceButtons());
  const Single height = std::max(SizeFrame.Height(), BackgroundFrame.Height());
  const Single name = kMargin + lblName.NaturalWidth() + kGap, frames = kMargin + row + kGap;
  lblName.Move(kMargin, kMargin, lblName.NaturalWidth(), row);
  txtName.Move(name, kMargin, right - name, row);
  SizeFrame.Move(kMargin, frames, SizeFrame.Width(), height);
  BackgroundFrame.Move(beside, frames, right - beside, height);
  const Single shift = right - (Command1[kCancel].Left() + Command1[kCancel].Width());
  for (CommandButton* button : {&Command1[kOk], &Command1[kCancel]}) button->SetLeft(button->Left() + shift);
  for (CommandButton* button : {&Command2, &Command1[kOk], &Command1[kCancel]})
    button->SetTop(frames + height + kMargin);
  SetWidth(right + kMargin);
  SetHeight(Command2.Top() + Command2.Height() + kMargin);
}

void NewImageDialog::FillSizeFrame(Single row) {
  const SideBoxes::Corner end = Sides.PlaceAt(kGap, SizeFrame.CaptionHeight() + kLine, row);
  SizeFrame.Move(0, 0, end.right + kGap, end.bottom + kLine);
}

void NewImageDialog::FillBackgroundFrame() {
  Single top = BackgroundFrame.CaptionHeight() + kLine, width = 0;
  for (int i = 0; i < Option1.Count(); ++i) {
    OptionButton& option = Option1[i];
    option.Move(kGap, top, option.NaturalWidth(), option.NaturalHeight());
    top += option.Height() + kLine;
    width = std::max(width, option.Width());
  }
  BackgroundFrame.Move(0, 0, kGap + width + kGap, top);
}

/// One beside the other; the right edge of the last.
Single NewImageDialog::PlaceButtons() {
  const Single answers = std::max(Command1[kOk].NaturalWidth(), Command1[kCancel].NaturalWidth());
  Single left = kMargin;
  for (CommandButton* button : {&Command2, &Command1[kOk], &Command1[kCancel]}) {
    const Single width = button == &Command2 ? button->NaturalWidth() + kGap : answers;
    button->Move(left, 0, width, button->NaturalHeight());
    left += width + (button == &Command2 ? 2 * kGap : kGap);
  }
  return left - kGap;
}

int16_t NewImageDialog::Background() const {
  int16_t index = 0;
  while (index + 1 < Option1.Count() && !Option1[index].Value()) ++index;
  return index;
}

void NewImageDialog::Command1_Click(int16_t Index) {
  if (Index == kOk && !MakeImage()) return;
  Unload();
  if (Index == kOk) FireEvent(OnMade);
}

/// What can't be made is told, and what was typed stays.
bool NewImageDialog::MakeImage() {
  if (!Sides.HoldSize()) return false;
  const Color background[] = {kWhite, ColorPanel->SelColor[0].BackColor(),
                              ColorPanel->SelColor[1].BackColor()};
  const bool is_made = Attempt([&] {
    MakeDocument(static_cast<int>(txtWidth.Value()), static_cast<int>(txtHeight.Value()),
                 background[Background()], {txtName.Text(), ""});
  });
  if (!is_made) Sides.TellWantOfMemory();
  return is_made;
}

void NewImageDialog::Command2_Click() const {
  WriteSetting("NewImageTitle", txtName.Text());
  WriteSetting("NewImageHeight", PlainText(txtHeight.Value()));
  WriteSetting("NewImageWidth", PlainText(txtWidth.Value()));
  WriteSetting("ImageDefaultBackground", std::to_string(Background()));
}

void NewImageDialog::Form_QueryUnload(bool& Cancel) {
  if (State.Exiting) return;
  Cancel = true;
  ReturnToMain(*this);
}

}  // namespace zelvane
