#include "tools/SelectTool.h"

#include <algorithm>

#include "document/layers/ImageDocument.h"
#include "document/layers/ReadOuts.h"
#include "surface/forms/controls/Events.h"
#include "tools/OptionBars.h"
#include "tools/Selector.h"
#include "tools/TextPickers.h"
#include "tools/TextTool.h"
#include "tools/ToolButtons.h"

namespace zelvane {
namespace {

/// Raises the old button of a group and presses the new one.
void Choose(ButtonGroup& group, int16_t& option, PressedFlags& pressed, int16_t index) {
  group.Draw(option, ButtonLook::Idle);
  pressed.at(static_cast<size_t>(option)) = false;
  pressed.at(static_cast<size_t>(index)) = true;
  option = index;
  group.Draw(index, ButtonLook::Pressed);
}

/// Buttons on a bar that isn't seen need nobody to look after them; those on a bar that comes up look right
/// at once.
void RunHover(IntervalTimer& timer, Tool tool) {
  timer.SetEnabled(State.CurrentTool == tool);
  if (State.CurrentTool == tool) FireEvent(timer.OnTimer);
}
void RunHoverTimers() {
  RunHover(frmControls->CmdTimer, kRectangleTool);
  RunHover(frmControls->CircleTimer, kCircleTool);
  RunHover(frmControls->BrushTimer, kPenTool);
  RunHover(frmControls->LightTimer, kBrightenTool);
}

}  // namespace

void ShowToolPointer(ImageDocument& document) {
  if (State.CurrentTool == kCursorTool) {
    document.PaintArea.SetMousePointer(kPointerDefault);
    return;
  }
  document.PaintArea.SetMouseIcon(&frmControls->MyCursor[static_cast<size_t>(State.CurrentTool)]);
  document.PaintArea.SetMousePointer(kPointerCustom);
}

void SelectTool(int16_t index) {
  const int16_t old = State.CurrentTool;
  Choose(ToolButtons->Cmd, State.CurrentTool, State.ToolButtonDown, index);
  PlaceReadOuts();
  if (old != index) frmControls->DrawToolbar[old].SetVisible(false);
  frmControls->DrawToolbar[index].SetVisible(true);
  ImageDocument* document = ActiveDocument();
  if (document) ShowToolPointer(*document);
  if (document && State.CurrentTool != kTextTool) CancelText(*document);
  if (State.CurrentTool == kTextTool) LoadFonts();
  UnClickButton();
  RunHoverTimers();
}

/// The old button on the Circle bar goes idle when that bar comes up, or with the next tick of its timer.
void SelectOption(int16_t index) {
  Choose(frmControls->Cmd, State.OptionButton, State.OptionButtonDown, index);
  frmControls->Cmd2.Draw(index, ButtonLook::Pressed);
}
void SelectOption3(int16_t index) {
  Choose(frmControls->Cmd3, State.OptionButton3, State.OptionButton3Down, index);
}
void SelectOption4(int16_t index) {
  Choose(frmControls->Cmd4, State.OptionButton4, State.OptionButton4Down, index);
}

void PlaceReadOuts() {
  PictureSurface& read_outs = ReadOuts->CoordsInfo;
  const PictureSurface& bar = frmControls->DrawToolbar[State.CurrentTool];
  const auto& top_bar = dynamic_cast<const PictureSurface&>(*read_outs.Parent());
  const Single right_aligned = static_cast<Single>(top_bar.ScaleWidth()) - read_outs.Width();
  read_outs.SetLeft(std::max(right_aligned, bar.Left() + bar.Width()));
}

}  // namespace zelvane
