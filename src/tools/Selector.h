#pragma once

#include <cstdint>
#include <memory>

#include "surface/forms/picture/DropDown.h"
#include "surface/forms/windows/Form.h"
#include "tools/NumericOptions.h"

namespace zelvane {

/// The slider that drops down from a numeric option: a track and a handle on it. Its `Tag` holds the index of
/// the entry of `OptionTable` that it serves, as text.
struct SelectorControls {
  explicit SelectorControls(Control& main_window);

  DropDown Window;
  PictureSurface ScrollBar;
  PictureSurface ScrollBlock;
  bool Dragging = false;
  int16_t GrabOffset = 0;  ///< pixels from the handle's left edge
};

/// Stands while the main window does.
inline std::unique_ptr<SelectorControls> frmSelector;

/// Puts a window that drops down from the option bars beneath them, its right edge at `right` of the top bar
/// as far as the left bar lets it.
void PlaceDropDown(DropDown& window, Single right);
/// Makes the slider do what it is for.
void WireSelector();
/// Opens the slider for an option's box, or closes it where it's open for that one.
void CmdDropDown_Click(int16_t index);
/// Draws an option's button pressed or raised; raising one closes an open picker of the text bar too.
void DrawButton(int index, bool down);
/// Closes the slider.
void UnClickButton();
/// Closes the slider once neither its handle nor the box that it serves has the keyboard.
void CloseUnlessHeld();
/// Puts the handle where the value of the option is on the track.
void PlaceHandle(NumericOption index);
/// Takes a place of the handle's left edge into the track.
int16_t ClampHandle(int16_t position);
/// Takes the value of the handle's place into the option and its box.
void ApplySlider();

}  // namespace zelvane
