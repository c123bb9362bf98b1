#include "tools/TextPickers.h"

#include <algorithm>

#include "document/layers/ImageDocument.h"
#include "surface/forms/controls/TextGrowth.h"
#include "surface/system/desktop/Fonts.h"
#include "tools/OptionBars.h"
#include "tools/Options.h"
#include "tools/Selector.h"

namespace zelvane {
namespace {

constexpr Single kFontsWidth = 280, kStylesWidth = 120;
constexpr Single kTallest = 360, kAboveEdge = 8, kFrames = 2;

/// A picker with what belongs to it on the text bar.
struct Picker {
  PickerControls& controls;
  PictureSurface& button;
  Label& choice;
  bool& is_open;
};
Picker Fonts() {
  return {*frmFonts, frmControls->CmdFont, frmControls->lblFont, frmControls->FontsOpen};
}
Picker Styles() {
  return {*frmFontStyle, frmControls->CmdFontStyle, frmControls->lblFontStyle, frmControls->FontStyleOpen};
}

void Close(const Picker& picker) {
  picker.is_open = false;
  DrawButtonLook(picker.button, ButtonLook::Hover);
  if (picker.controls.Window.HoldsFocus()) ReturnToPicture();
  picker.controls.Window.SetVisible(false);
}

/// As tall as its rows, as far as the main window and a pointer's way have room.
void FitToRoom(PickerControls& controls) {
  DropDown& window = controls.Window;
  const Control::ScreenRect main = window.Parent()->WindowRect();
  const Single room = static_cast<Single>(main.bottom + 1 - main.top) - window.Top() - kAboveEdge;
  const auto rows = static_cast<Single>(controls.List.ContentHeight());
  window.SetHeight(std::min({rows + kFrames, room, kTallest}));
  controls.List.Move(0, 0, static_cast<Single>(window.ScaleWidth()),
                     static_cast<Single>(window.ScaleHeight()));
}

/// The choice that the text bar shows is the highlighted one.
void HighlightChoice(const Picker& picker) {
  PickList& list = picker.controls.List;
  int index = list.Count() - 1;
  while (index >= 0 && ' ' + list[index].text != picker.choice.Caption()) --index;
  list.SetHighlight(index);
}

void Open(const Picker& picker) {
  DropDown& window = picker.controls.Window;
  UnClickButton();
  DrawButtonLook(picker.button, ButtonLook::Pressed);
  const Single bar = frmControls->DrawToolbar[kTextTool].Left();
  PlaceDropDown(window, bar + picker.button.Left() + picker.button.Width() + 1);
  FitToRoom(picker.controls);
  window.BringToFront();
  window.SetVisible(true);
  HighlightChoice(picker);
  picker.controls.List.SetFocus();
  picker.is_open = true;
}

void CloseUnlessHeld(const Picker& picker) {
  if (picker.is_open && !picker.controls.List.HasFocus()) Close(picker);
}

/// Text of the active document, where there is one, is in a changed font from now on.
template <class Change>
void ChangeTextFont(Change change) {
  ImageDocument* document = ActiveDocument();
  if (!document) return;
  TextFont font = document->Buffer.Font();
  change(font);
  document->SetTextFont(font);
}

void lblFont_Click(int Index) {
  const std::string name = frmFonts->List[Index].text;
  frmControls->lblFont.SetCaption(' ' + name);
  ShowHideFonts();
  ChangeTextFont([&](TextFont& font) { font.Name = name; });
}

void lblStyle_Click(int Index) {
  const PickList::Choice& style = frmFontStyle->List[Index];
  ShowHideFontStyle();
  frmControls->lblFontStyle.SetCaption(' ' + style.text);
  frmControls->lblFontStyle.SetFontBold(style.bold);
  frmControls->lblFontStyle.SetFontItalic(style.italic);
  ChangeTextFont([&](TextFont& font) {
    font.Bold = style.bold;
    font.Italic = style.italic;
  });
}

void ListStyles() {
  frmFontStyle->List.SetChoices({{.text = "Normal"},
                                 {.text = "Bold", .bold = true},
                                 {.text = "Italic", .italic = true},
                                 {.text = "Bold Italic", .bold = true, .italic = true}});
  frmControls->lblFontStyle.SetCaption(' ' + frmFontStyle->List[0].text);
}

}  // namespace

PickerControls::PickerControls(Control& main_window, const std::string& name, const std::string& list)
    : Window(main_window, name), List(Window, list) {}

void LoadFonts() {
  if (frmFonts->List.Count() > 0) return;
  std::vector<PickList::Choice> choices;
  for (const ScreenFont& font : ScreenFonts())
    choices.push_back({.text = font.name, .face = font.name, .above = font.above, .below = font.below});
  frmFonts->List.SetChoices(std::move(choices));
  frmControls->lblFont.SetCaption(' ' + frmFonts->List[0].text);
}

void ShowHideFonts() {
  if (frmControls->FontsOpen) return Close(Fonts());
  LoadFonts();
  Open(Fonts());
}

void ShowHideFontStyle() {
  if (frmControls->FontStyleOpen) return Close(Styles());
  Open(Styles());
}

void TakeTextSize() {
  ChangeTextFont([](TextFont& font) { font.Size = OptionOf(kTextSize).Value; });
}

void WireTextPickers() {
  const auto wire = [](Picker (*picker)(), const char* name, Single width) {
    const auto [controls, button, choice, is_open] = picker();
    controls.Window.SetWidth(Widened(width));
    controls.List.SetAccessibleName(name);
    controls.List.OnLostFocus = [picker] {
      if (frmFonts && frmControls.IsLoaded()) CloseUnlessHeld(picker());
    };
  };
  wire(Fonts, "Font", kFontsWidth);
  wire(Styles, "Font style", kStylesWidth);
  ListStyles();
  frmFonts->List.OnPick = lblFont_Click;
  frmFontStyle->List.OnPick = lblStyle_Click;
  frmControls->CmdFont.OnClick = ShowHideFonts;
  frmControls->CmdFontStyle.OnClick = ShowHideFontStyle;
}

}  // namespace zelvane
