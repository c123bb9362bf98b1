#include "tools/Options.h"

#include "tools/NumericOptions.h"
#include "tools/OptionBars.h"
#include "tools/Selector.h"

namespace zelvane {

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

void WireOptionBars() {
  for (int16_t i = 0; i < kOptionCount; ++i) {
    frmControls->pixelSelector[i].OnChange = [i] {
      OptionOf(NumericOption{i}).Value = frmControls->pixelSelector[i].Value();
      if (frmControls->OnOptionChange) frmControls->OnOptionChange();
    };
    frmControls->CmdDropDown[i].OnClick = [i] { CmdDropDown_Click(i); };
  }
  frmControls->CmdTimer.OnTimer = [] { frmControls->Cmd.Hover(State.OptionButtonDown); };
  frmControls->CircleTimer.OnTimer = [] { frmControls->Cmd2.Hover(State.OptionButtonDown); };
  frmControls->BrushTimer.OnTimer = [] { frmControls->Cmd3.Hover(State.OptionButton3Down); };
  frmControls->LightTimer.OnTimer = [] { frmControls->Cmd4.Hover(State.OptionButton4Down); };
}

}  // namespace zelvane
