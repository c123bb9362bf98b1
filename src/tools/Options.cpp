#include "tools/Options.h"

#include "document/layers/ImageDocument.h"
#include "surface/forms/controls/Events.h"
#include "tools/NumericOptions.h"
#include "tools/OptionBars.h"
#include "tools/Selector.h"
#include "tools/TextPickers.h"

namespace zelvane {
namespace {

/// The handle of an open slider follows what is typed.
void pixelSelector_Change(NumericOption option) {
  const NumberBox& box = frmControls->pixelSelector[option];
  OptionOf(option).Value = box.Value();
  if (frmControls->OpenSelector == option && box.HasFocus()) PlaceHandle(option);
  if (option == kTextSize) TakeTextSize();
  FireEvent(frmControls->OnOptionChange);
}

void WireNumber(NumericOption option) {
  NumberBox& box = frmControls->pixelSelector[option];
  box.OnChange = [option] { pixelSelector_Change(option); };
  box.OnLostFocus = CloseUnlessHeld;
  box.OnKeyDown = [option](int16_t KeyCode, int16_t) {
    const bool closes = KeyCode == kKeyEscape && frmControls->OpenSelector == option;
    if (KeyCode == kKeyEnter || closes) ReturnToPicture();
  };
  frmControls->CmdDropDown[option].OnClick = [option] { CmdDropDown_Click(option); };
}

}  // namespace

void FillOptions() {
  for (int i = 0; i < kOptionCount; ++i) {
    ToolOption& option = OptionOf(NumericOption(i));
    option = FactsOf(NumericOption(i)).start;
    NumberBox& box = frmControls->pixelSelector[i];
    box.SetMaxValue(option.Max);
    box.SetMinValue(option.Min);
    box.SetValue(option.Value);
    box.SetUseMaxMinValues(true);
    DrawButtonLook(frmControls->CmdDropDown[i], ButtonLook::Hover);
  }
}

void ReturnToPicture() {
  ImageDocument* document = ActiveDocument();
  if (!document) return frmControls->DrawToolbar[State.CurrentTool].SetFocus();
  if (document->TextInput.Visible()) return document->TextInput.SetFocus();
  document->PaintArea.SetFocus();
}

void WireOptionBars() {
  for (int16_t i = 0; i < kOptionCount; ++i) WireNumber(NumericOption{i});
  frmControls->CmdTimer.OnTimer = [] { frmControls->Cmd.Hover(State.OptionButtonDown); };
  frmControls->CircleTimer.OnTimer = [] { frmControls->Cmd2.Hover(State.OptionButtonDown); };
  frmControls->BrushTimer.OnTimer = [] { frmControls->Cmd3.Hover(State.OptionButton3Down); };
  frmControls->LightTimer.OnTimer = [] { frmControls->Cmd4.Hover(State.OptionButton4Down); };
}

}  // namespace zelvane
