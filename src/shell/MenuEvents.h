#pragma once

#include <cstdint>

namespace zelvane {

struct MainMenu;

/// Gives every entry its routine.
void WireMenus(MainMenu& menu);

// A top menu is about to open: which of its entries can act.
void File_Click();
void Edit_Click();
void Image_Click();
void Effects_Click();

// Entries. Each checks for itself whether it can act, since a shortcut fires it whatever its menu shows.
void NewImage_Click();
void FileOpen_Click();
void Close_Click();
void mnuIcon_Click();
void PasteSpecial_Click();
void Effect_Click(int16_t Index);
void ImageSize_Click();
void Manager_Click();
void Splash_Click();
void Exit_Click();
void ArrHorizontal_Click();
void ArrVertival_Click();
void Cascade_Click();
void AboutKorvath_Click();

/// The recent entries take the list as it has been read.
void ShowRecentList();

}  // namespace zelvane
