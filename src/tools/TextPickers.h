#pragma once

#include <memory>
#include <string>

#include "surface/forms/controls/PickList.h"
#include "surface/forms/picture/DropDown.h"

namespace zelvane {

/// A list that drops down from a button of the text bar.
struct PickerControls {
  PickerControls(Control& main_window, const std::string& name, const std::string& list);

  DropDown Window;
  PickList List;
};

/// All fonts, each by its name and beneath in its own face; the four styles. Both stand while the main window
/// does.
inline std::unique_ptr<PickerControls> frmFonts, frmFontStyle;

/// Lists the fonts, the first time, and has the first of them be the font of the text bar.
void LoadFonts();
/// Open a picker, or close it where it's open.
void ShowHideFonts();
void ShowHideFontStyle();
/// Text of the active document has the size of `OptionTable` from now on, also what is being typed.
void TakeTextSize();
/// Makes the pickers do what they are for.
void WireTextPickers();

}  // namespace zelvane
