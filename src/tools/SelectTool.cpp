#include "tools/SelectTool.h"

#include <algorithm>

#include "document/layers/ImageDocument.h"
#include "document/layers/ReadOuts.h"
#include "surface/system/Screen.h"
#include "tools/OptionBars.h"
#include "tools/ToolButtons.h"

namespace zelvane {
namespace {

/// What the buttons show, so that a tick paints only what has changed.
std::array<ButtonLook, kToolCount> shown{};

void ShowLook(int tool, ButtonLook look) {
  auto& now = shown[static_cast<size_t>(tool)];
  if (now == look) return;
  now = look;
  DrawButtonLook(ToolButtons->Cmd[tool], look);
}

void ShowPointer(ImageDocument& document) {
  if (State.CurrentTool == kCursorTool) {
    document.PaintArea.SetMousePointer(kPointerDefault);
    return;
  }
  document.PaintArea.SetMouseIcon(&frmControls->MyCursor[static_cast<size_t>(State.CurrentTool)]);
  document.PaintArea.SetMousePointer(kPointerCustom);
}

/// Text that was being typed is dropped.
void DropText(ImageDocument& document) {
  document.TextInput.SetText("");
  document.lblTextSize.SetCaption("M");
  document.TextInput.SetVisible(false);
}

void Choose(int16_t& option, std::array<bool, 21>& down, int16_t index) {
  down.at(static_cast<size_t>(option)) = false;
  down.at(static_cast<size_t>(index)) = true;
  option = index;
}

}  // namespace

void SelectTool(int16_t index) {
  frmControls->DrawToolbar[State.CurrentTool].SetVisible(false);
  frmControls->DrawToolbar[index].SetVisible(true);
  ShowLook(State.CurrentTool, ButtonLook::Idle);
  Choose(State.CurrentTool, State.ToolButtonDown, index);
  ShowLook(index, ButtonLook::Pressed);
  ImageDocument* document = ActiveDocument();
  if (document) ShowPointer(*document);
  PlaceReadOuts();
  if (document && State.CurrentTool != kTextTool) DropText(*document);
}

void SelectOption(int16_t index) {
  Choose(State.OptionButton, State.OptionButtonDown, index);
}
void SelectOption3(int16_t index) {
  Choose(State.OptionButton3, State.OptionButton3Down, index);
}
void SelectOption4(int16_t index) {
  Choose(State.OptionButton4, State.OptionButton4Down, index);
}

void PlaceReadOuts() {
  PictureSurface& read_outs = ReadOuts->CoordsInfo;
  const PictureSurface& bar = frmControls->DrawToolbar[State.CurrentTool];
  const auto& top_bar = dynamic_cast<const PictureSurface&>(*read_outs.Parent());
  const Single right_aligned = static_cast<Single>(top_bar.ScaleWidth()) - read_outs.Width();
  read_outs.SetLeft(std::max(right_aligned, bar.Left() + bar.Width()));
}

void HoverToolButtons() {
  const Screen::Point pointer = Screen::CursorPosition();
  for (int tool = 0; tool < kToolCount; ++tool) {
    if (State.ToolButtonDown[static_cast<size_t>(tool)]) continue;
    const bool over = ToolButtons->Cmd[tool].WindowRect().Contains(pointer.x, pointer.y);
    ShowLook(tool, over ? ButtonLook::Hover : ButtonLook::Idle);
  }
}

}  // namespace zelvane
