#include "shell/KeyEvents.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "colour/ColorPanel.h"
#include "colour/PanelKeys.h"
#include "colour/SwatchPanel.h"
#include "document/layers/ImageDocument.h"
#include "imageops/ProgressDisplay.h"
#include "surface/forms/windows/FormMade.h"
#include "tools/OptionBars.h"
#include "tools/Options.h"
#include "tools/Selector.h"
#include "tools/TextPickers.h"
#include "tools/ToolButtons.h"
#include "ui/RouteKey.h"

namespace zelvane {
namespace {

/// On a part of the main window Esc is the same as closing it, with all its questions.
void MainKeyDown(int16_t KeyCode, int16_t Shift) {
  if (KeyCode == kKeyF2) return MainForm->SetWindowState(kMinimised);
  RouteKey(*MainForm, KeyCode, Shift);
}

/// A text that is being typed, or a stroke that is being drawn, isn't lost to Esc.
void DocumentKeyDown(Form& form, int16_t KeyCode, int16_t Shift) {
  if (KeyCode == kKeyF2) return form.SetWindowState(kMinimised);
  const auto& document = dynamic_cast<ImageDocument&>(form);
  if (!document.Down && !document.TextInput.HasFocus()) RouteKey(form, KeyCode, Shift);
}

/// Putting a picker or the slider away gives the keyboard back to the picture.
void PickerKeyDown(int16_t KeyCode, int16_t Shift) {
  if (KeyCode != kKeyEscape || (Shift != 0 && Shift != kShift)) return;
  ReturnToPicture();
  if (Shift == kShift) MainForm->Unload();
}
void SelectorKeyDown(int16_t KeyCode, int16_t Shift) {
  if (KeyCode == kKeyEnter || (KeyCode == kKeyEscape && Shift == 0)) return ReturnToPicture();
  if (KeyCode == kKeyEscape && Shift == kShift) MainForm->Unload();
  if (KeyCode == kKeyF2) MainForm->SetWindowState(kMinimised);
}

template <class Controls>
void OnEachKeyDown(Controls& controls, const Control::KeyEvent& handler) {
  for (int i = 0; i < controls.Count(); ++i) controls[i].OnKeyDown = handler;
}

void WireParts(MainWindow& window) {
  window.OnKeyDown = MainKeyDown;  // where no part of it has the keyboard
  window.TopBar.OnKeyDown = MainKeyDown;
  window.LeftBar.OnKeyDown = MainKeyDown;
  window.RightBar.OnKeyDown = MainKeyDown;
  ToolButtons->ColorsBg.OnKeyDown = MainKeyDown;
  OnEachKeyDown(ToolButtons->Cmd, MainKeyDown);
  ColorPanel->SwatchesBg.OnKeyDown = MainKeyDown;
  ColorPanel->Gradient.OnKeyDown = MainKeyDown;
  for (int16_t i = 0; i < ColorPanel->SelColor.Count(); ++i)
    ColorPanel->SelColor[i].OnKeyDown = [i](int16_t KeyCode, int16_t Shift) {
      SelColor_KeyDown(i, KeyCode, Shift);
      MainKeyDown(KeyCode, Shift);
    };
  OnEachKeyDown(ColorPanel->lblColor, MainKeyDown);
  OnEachKeyDown(ColorPanel->ColorBar, MainKeyDown);
  OnEachKeyDown(ColorPanel->ColorScroll, MainKeyDown);
  SwatchPanel->Picture3.OnKeyDown = MainKeyDown;
  SwatchPanel->Background.OnKeyDown = MainKeyDown;
  SwatchPanel->ScrollSwatch.OnKeyDown = MainKeyDown;
  // The scroll bar passes the keyboard on to it.
  SwatchPanel->SwatchScroll.OnKeyDown = [](int16_t KeyCode, int16_t Shift) {
    SwatchScroll_KeyDown(KeyCode, Shift);
    MainKeyDown(KeyCode, Shift);
  };
  Progress->Process.OnKeyDown = MainKeyDown;
  // The bars are the inside of `frmControls`.
  frmControls->OnKeyDown = MainKeyDown;
  OnEachKeyDown(frmControls->DrawToolbar, MainKeyDown);
  frmFonts->Window.OnKeyDown = frmFontStyle->Window.OnKeyDown = PickerKeyDown;
  frmSelector->Window.OnKeyDown = SelectorKeyDown;
}

/// The others have keys of their own.
void WireWindow(Form& form) {
  constexpr std::array<std::string_view, 5> kRouted = {"frmColor", "frmNew", "frmNewSwatch", "frmSize",
                                                       "frmPalette"};
  if (form.Name() == "frmPaint")
    form.OnKeyDown = [&form](int16_t KeyCode, int16_t Shift) { DocumentKeyDown(form, KeyCode, Shift); };
  else if (std::ranges::find(kRouted, form.Name()) != kRouted.end())
    form.OnKeyDown = [&form](int16_t KeyCode, int16_t Shift) { RouteKey(form, KeyCode, Shift); };
}

}  // namespace

void WireKeys(MainWindow& window) {
  WireParts(window);
  OnFormMade = WireWindow;
}

}  // namespace zelvane
