#include "shell/Wiring.h"

#include "colour/ColorBars.h"
#include "colour/Swatches.h"
#include "colour/frmColor.h"
#include "document/layers/ImageDocument.h"
#include "document/window/Clear.h"
#include "document/window/ReadingDisplay.h"
#include "shell/MainForm.h"
#include "surface/forms/windows/Application.h"
#include "tools/OptionBars.h"
#include "tools/Options.h"
#include "tools/SelectTool.h"
#include "tools/Selector.h"
#include "tools/TextPickers.h"
#include "tools/TextTool.h"
#include "tools/ToolButtons.h"
#include "ui/MsgBox.h"

namespace zelvane {
namespace {

void ShowBrush() {
  if (ImageDocument* document = ActiveDocument()) document->ShowReach();
}

void comboZoom_Click() {
  if (ImageDocument* document = ActiveDocument()) document->ChangeZoomFactor();
}

void CancelText_Click() {
  if (ImageDocument* document = ActiveDocument()) CancelText(*document);
}

template <class Select>
void WireGroup(ButtonGroup& group, Select select) {
  for (int16_t i = 0; i < group.Count(); ++i) group[i].OnClick = [select, i] { select(i); };
}

void WireTools() {
  WireGroup(ToolButtons->Cmd, SelectTool);
  WireGroup(frmControls->Cmd, SelectOption);
  WireGroup(frmControls->Cmd2, SelectOption);
  WireGroup(frmControls->Cmd3, SelectOption3);
  WireGroup(frmControls->Cmd4, SelectOption4);
  WireOptionBars();
  frmControls->OnOptionChange = ShowBrush;
  frmControls->comboZoom.OnClick = comboZoom_Click;
  frmControls->clearButton.OnClick = clearButton_Click;
  frmControls->CmdButton[0].OnClick = ApplyText;
  frmControls->CmdButton[1].OnClick = CancelText_Click;
}

void WireSliderKeys(MainWindow& window) {
  WireSelector();
  frmSelector->Window.OnKeyDown = [&window](int16_t KeyCode, int16_t Shift) {
    if (KeyCode == kKeyEnter || (KeyCode == kKeyEscape && Shift == 0)) return ReturnToPicture();
    if (KeyCode == kKeyEscape && Shift == kShift) window.Unload();
    if (KeyCode == kKeyF2) window.SetWindowState(kMinimised);
  };
}

void WirePickerKeys(MainWindow& window) {
  WireTextPickers();
  for (DropDown* picker : {&frmFonts->Window, &frmFontStyle->Window}) {
    picker->OnKeyDown = [&window](int16_t KeyCode, int16_t Shift) {
      if (KeyCode != kKeyEscape || (Shift != 0 && Shift != kShift)) return;
      UnClickButton();
      if (Shift == kShift) window.Unload();
    };
  }
}

}  // namespace

void WirePanels(MainWindow& window) {
  OnLongReading = ShowReading;
  OnMemoryShort = [] { MsgBox("There is not enough memory for this.", 48, "Zelvane"); };
  WireTools();
  WireSliderKeys(window);
  WirePickerKeys(window);
  WireColorPanel();
  WireSwatchPanel();
  ColorPanel->OnEditColor = [](int16_t Index) { frmColor->Edit(Index); };
}

}  // namespace zelvane
