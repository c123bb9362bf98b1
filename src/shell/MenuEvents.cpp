#include "shell/MenuEvents.h"

#include "document/window/OpenPicture.h"
#include "shell/MainForm.h"
#include "shell/state/RecentFiles.h"
#include "shell/state/Settings.h"
#include "shell/state/State.h"
#include "surface/forms/windows/Application.h"
#include "surface/system/desktop/Clipboard.h"
#include "surface/system/desktop/Programs.h"
#include "surface/system/files/Files.h"

namespace zelvane {
namespace {

constexpr char kSiblingTitle[] = " Korvath", kSiblingProgram[] = "Korvath.exe";

bool SplashIsOn() {
  return ReadNumber("ShowSplashScreen", 1) == 1.0;
}

}  // namespace

void File_Click() {
  MainMenu& menu = MainForm->Menus;
  State.KorvathWindow = FindWindowByTitle(kSiblingTitle);
  menu.Manager.SetEnabled(State.KorvathWindow == 0);
  menu.Splash.SetChecked(SplashIsOn());
  const bool document = ActiveDocument() != nullptr;
  for (Menu* entry : {&menu.Save, &menu.SaveAs, &menu.Close}) entry->SetEnabled(document);
}

void Edit_Click() {
  MainMenu& menu = MainForm->Menus;
  const bool bitmap = Clipboard::HasBitmap();
  menu.PasteSpecial.SetEnabled(bitmap);
  const ImageDocument* document = ActiveDocument();
  for (Menu* entry : {&menu.Copy, &menu.Cut, &menu.Undo, &menu.SelectAll})
    entry->SetEnabled(document != nullptr);
  menu.ClearSelection.SetEnabled(document && document->SelectArea.Visible());
  menu.Paste.SetEnabled(document && bitmap);
}

void Image_Click() {
  MainMenu& menu = MainForm->Menus;
  const bool document = ActiveDocument() != nullptr;
  for (Menu* entry : {&menu.FlipHorizontal, &menu.FlipVertical, &menu.InvertImage, &menu.ImageSize,
                      &menu.ImagePalette, &menu.GreyScalemenu})
    entry->SetEnabled(document);
}

/// A second dialog can't open while one is up.
void FileOpen_Click() {
  Menu& entry = MainForm->Menus.FileOpen;
  if (!entry.Enabled()) return;
  entry.SetEnabled(false);
  OpenAskedFile();
  if (MainForm.IsLoaded()) MainForm->Menus.FileOpen.SetEnabled(true);
}

void Close_Click() {
  if (ImageDocument* document = ActiveDocument()) document->Unload();
}

void Manager_Click() {
  StartProgram(AbsolutePath(kSiblingProgram), {});
}

void Splash_Click() {
  Menu& entry = MainForm->Menus.Splash;
  entry.SetChecked(!SplashIsOn());
  WriteSetting("ShowSplashScreen", entry.Checked() ? "1" : "0");
}

/// By the event loop, so that the menu's own handler has returned when the window goes.
void Exit_Click() {
  Defer([] { MainForm->Unload(); });
}

void ArrHorizontal_Click() {
  MainForm->Arrange(kTileHorizontal);
}
void ArrVertival_Click() {
  MainForm->Arrange(kTileVertical);
}
void Cascade_Click() {
  MainForm->Arrange(kCascade);
}

void ShowRecentList() {
  const auto entries = MainForm->Menus.RecentEntries();
  for (size_t i = 0; i < entries.size(); ++i) {
    const std::string& path = Recent.RecentFiles[i];
    entries[i]->SetCaption(path.empty() ? ";File" + std::to_string(i + 1) : NameOf(path));
    entries[i]->SetEnabled(!path.empty());
    if (i > 0) entries[i]->SetVisible(!path.empty());
  }
  MainForm->Menus.mnuRecent.SetEnabled(Recent.RecentCount >= 1);
}

}  // namespace zelvane
