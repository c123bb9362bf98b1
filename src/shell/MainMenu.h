#pragma once

#include <array>
#include <memory>
#include <vector>

#include "surface/forms/windows/Menu.h"

namespace zelvane {

/// The menu tree of the main window. Captions, shortcuts and what is hidden stand in the table of the
/// constructor.
struct MainMenu {
  explicit MainMenu(MdiForm& window);

  Menu File, NewImage, FileOpen, Close, mnuIcon, split006, Save, SaveAs, separator1, mnuRecent;
  Menu mnuFile1, mnuFile2, mnuFile3, mnuFile4, mnuFile5;
  Menu separator9, Manager, Splash, split004, Exit;
  Menu Edit, Undo, split001, Cut, Copy, Paste, split002, PasteSpecial, split003, SelectAll, ClearSelection;
  Menu Image, FlipHorizontal, FlipVertical, split009, InvertImage, GreyScalemenu, split010, ImageSize,
      ImagePalette;
  std::vector<std::unique_ptr<Menu>> Greyscale;
  Menu Effects;
  std::vector<std::unique_ptr<Menu>> Effect;
  Menu Window, ArrHorizontal, ArrVertival, Cascade;
  Menu Help, AboutKorvath;

  /// `mnuFile1` to `mnuFile5`.
  std::array<Menu*, 5> RecentEntries() { return {&mnuFile1, &mnuFile2, &mnuFile3, &mnuFile4, &mnuFile5}; }
};

}  // namespace zelvane
