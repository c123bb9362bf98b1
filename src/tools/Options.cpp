#include "tools/Options.h"

#include "shell/state/State.h"
#include "tools/OptionBars.h"
#include "tools/Selector.h"

namespace zelvane {
namespace {

constexpr ToolOption kPressure{0, 100, 50}, kSize{1, 100, 10}, kThin{1, 100, 1}, kEraserWidth{1, 100, 5};

ToolOption& OptionOf(int index) {
  return State.OptionTable.at(static_cast<size_t>(index));
}

}  // namespace

void FillOptions() {
  State.OptionTable = {kPressure, kPressure, kSize, kSize,        kThin,        kThin,
                       kThin,     kSize,     kSize, kEraserWidth, ToolOption{}, ToolOption{}};
  for (int i = 0; i < kOptionCount; ++i) {
    NumberBox& box = frmControls->pixelSelector[i];
    box.SetMaxValue(OptionOf(i).Max);
    box.SetMinValue(OptionOf(i).Min);
    box.SetValue(OptionOf(i).Value);
    box.SetUseMaxMinValues(true);
    DrawButtonLook(frmControls->CmdDropDown[i], ButtonLook::Hover);
  }
}

void WireOptionBars() {
  for (int16_t i = 0; i < kOptionCount; ++i) {
    frmControls->pixelSelector[i].OnChange = [i] {
      OptionOf(i).Value = frmControls->pixelSelector[i].Value();
    };
    frmControls->CmdDropDown[i].OnClick = [i] { CmdDropDown_Click(i); };
  }
  frmControls->CmdTimer.OnTimer = [] { frmControls->Cmd.Hover(State.OptionButtonDown); };
  frmControls->CircleTimer.OnTimer = [] { frmControls->Cmd2.Hover(State.OptionButtonDown); };
  frmControls->BrushTimer.OnTimer = [] { frmControls->Cmd3.Hover(State.OptionButton3Down); };
  frmControls->LightTimer.OnTimer = [] { frmControls->Cmd4.Hover(State.OptionButton4Down); };
}

}  // namespace zelvane
