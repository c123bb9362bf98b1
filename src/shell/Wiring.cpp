#include "shell/Wiring.h"

#include "colour/ColorBars.h"
#include "colour/PanelKeys.h"
#include "colour/Swatches.h"
#include "colour/frmColor.h"
#include "document/layers/ImageDocument.h"
#include "document/window/Clear.h"
#include "document/window/ReadingDisplay.h"
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

}  // namespace

void WirePanels() {
  OnLongReading = ShowReading;
  OnMemoryShort = [] { MsgBox("There is not enough memory for this.", 48, "Zelvane"); };
  WireTools();
  WireSelector();
  WireTextPickers();
  WireColorPanel();
  WireSwatchPanel();
  WirePanelKeys();
  ColorPanel->OnEditColor = [](int16_t Index) { frmColor->Edit(Index); };
}

}  // namespace zelvane
