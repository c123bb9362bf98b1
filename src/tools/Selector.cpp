#include "tools/Selector.h"

#include <algorithm>

#include "surface/forms/controls/Events.h"
#include "surface/forms/controls/TextGrowth.h"
#include "surface/raster/FailingStep.h"
#include "surface/raster/Units.h"
#include "tools/NumericOptions.h"
#include "tools/OptionBars.h"
#include "tools/TextPickers.h"
#include "tools/ToolButtons.h"

namespace zelvane {
namespace {

constexpr Single kWindowWidth = 132, kWindowHeight = 30, kTrackMargin = 8, kTrackHeight = 6;
constexpr Single kBlockWidth = 10, kBlockHeight = 18;
constexpr Single kTwips = kTwipsPerPixel;
constexpr Single kTopTwips = 420, kOverLeftBarTwips = 60, kBesideButton = 16;

NumericOption ServedOption() {
  return static_cast<NumericOption>(std::stoi(frmSelector->Window.Tag()));
}

void PressDropDown(int index, bool down) {
  frmControls->DropDownDown.at(static_cast<size_t>(index)) = down;
  DrawButton(index, down);
}

void RaiseDropDowns() {
  for (int j = 0; j < kOptionCount; ++j) PressDropDown(j, false);
}

void MoveHandle(Single position) {
  With(ToInt16(position), [](int16_t left) { frmSelector->ScrollBlock.SetLeft(ClampHandle(left)); });
  ApplySlider();
}

/// Where the pointer holds a handle that came to it.
Single Grip() {
  return frmSelector->ScrollBlock.Width() / 4;
}
void Window_Drag(Single X) {
  MoveHandle(X - Grip());
}
void Track_Drag(Single X) {
  MoveHandle(frmSelector->ScrollBar.Left() + X - Grip());
}
void Block_Drag(Single X) {
  MoveHandle(frmSelector->ScrollBlock.Left() + X - frmSelector->GrabOffset);
}

/// A press runs `press` and starts a drag, whose moves run `drag`.
template <class Press, class Drag>
void WireDrag(PictureSurface& surface, Press press, Drag drag) {
  surface.OnMouseDown = [press](int16_t, int16_t, Single X, Single) {
    frmSelector->Dragging = true;
    press(X);
  };
  surface.OnMouseMove = [drag](int16_t, int16_t, Single X, Single) {
    if (frmSelector->Dragging) drag(X);
  };
  surface.OnMouseUp = [](int16_t, int16_t, Single, Single) { frmSelector->Dragging = false; };
}

}  // namespace

SelectorControls::SelectorControls(Control& main_window)
    : Window(main_window, "frmSelector"), ScrollBar(Window, "ScrollBar"), ScrollBlock(Window, "ScrollBlock") {
  Window.Move(0, 0, kWindowWidth, kWindowHeight);
  Window.SetBackColor(SystemColor::ButtonFace);
  ScrollBar.Move(kTrackMargin, (kWindowHeight - 2 - kTrackHeight) / 2, kWindowWidth - 2 - 2 * kTrackMargin,
                 kTrackHeight);
  DrawButtonLook(ScrollBar, ButtonLook::Pressed);
  ScrollBlock.Move(kTrackMargin, (kWindowHeight - 2 - kBlockHeight) / 2, kBlockWidth, kBlockHeight);
  DrawButtonLook(ScrollBlock, ButtonLook::Hover);
  ScrollBlock.SetAccessibleName("Slider");
}

void PlaceDropDown(DropDown& window, Single right) {
  const Control& left_bar = *ToolButtons->ColorsBg.Parent();
  const Single limit = left_bar.Width() - kOverLeftBarTwips / kTwips;
  const int top_bar = frmControls->DrawToolbar[0].Parent()->WindowRect().top;
  const int menus = std::max(top_bar - window.Parent()->WindowRect().top, 0);
  window.Move(std::max(right - window.Width(), limit),
              static_cast<Single>(menus) + kTopTwips / kTwips + LineGrowth());
}

int16_t ClampHandle(int16_t position) {
  const auto lowest = static_cast<int16_t>(frmSelector->ScrollBar.Left());
  const Single room = frmSelector->ScrollBar.Width() - frmSelector->ScrollBlock.Width();
  return std::clamp(position, lowest, static_cast<int16_t>(lowest + room));
}

void PlaceHandle(NumericOption index) {
  const ToolOption& option = OptionOf(index);
  const PictureSurface& track = frmSelector->ScrollBar;
  PictureSurface& handle = frmSelector->ScrollBlock;
  const double room = track.Width() - handle.Width();
  const double place = track.Left() + room * option.Value / (option.Max - option.Min) - option.Min;
  With(ToInt16(place), [&](int16_t left) { handle.SetLeft(ClampHandle(left)); });
}

void ApplySlider() {
  const NumericOption k = ServedOption();
  ToolOption& option = OptionOf(k);
  const PictureSurface& track = frmSelector->ScrollBar;
  const PictureSurface& handle = frmSelector->ScrollBlock;
  const double share = (double{handle.Left()} - track.Left()) / (double{track.Width()} - handle.Width());
  const double value = share * (option.Max - option.Min) + option.Min;
  With(ToInt16(value), [&](int16_t whole) { frmControls->pixelSelector[k].SetValue(whole); });
  option.Value = value;
  if (k == kTextSize) TakeTextSize();
}

void DrawButton(int index, bool down) {
  DrawButtonLook(frmControls->CmdDropDown[index], down ? ButtonLook::Pressed : ButtonLook::Hover);
  if (down) return;
  if (frmControls->FontsOpen) ShowHideFonts();
  if (frmControls->FontStyleOpen) ShowHideFontStyle();
}

void UnClickButton() {
  frmControls->OpenSelector = -1;
  RaiseDropDowns();
  frmSelector->Window.SetVisible(false);
}

void CmdDropDown_Click(int16_t index) {
  if (frmControls->DropDownDown.at(static_cast<size_t>(index))) return UnClickButton();
  RaiseDropDowns();
  frmControls->OpenSelector = index;
  PressDropDown(index, true);
  const PictureSurface& button = frmControls->CmdDropDown[index];
  PlaceDropDown(frmSelector->Window, button.Left() + button.Width() + kBesideButton);
  PlaceHandle(NumericOption{index});
  With(ToInt16(OptionOf(NumericOption{index}).Value),
       [&](int16_t whole) { frmControls->pixelSelector[index].SetValue(whole); });
  frmSelector->Window.SetTag(std::to_string(index));
  frmSelector->Window.BringToFront();
  frmSelector->Window.SetVisible(true);
  frmSelector->ScrollBlock.SetFocus();
}

void CloseUnlessHeld() {
  if (!frmSelector || !frmControls.IsLoaded()) return;
  const int16_t open = frmControls->OpenSelector;
  if (open < 0 || frmSelector->ScrollBlock.HasFocus() || frmControls->pixelSelector[open].HasFocus()) return;
  UnClickButton();
}

void WireSelector() {
  WireDrag(frmSelector->Window, Window_Drag, Window_Drag);
  WireDrag(frmSelector->ScrollBar, Track_Drag, Track_Drag);
  WireDrag(
      frmSelector->ScrollBlock, [](Single X) { Assign(frmSelector->GrabOffset, ToInt16(X)); }, Block_Drag);
  frmSelector->ScrollBlock.OnLostFocus = CloseUnlessHeld;
}

}  // namespace zelvane
