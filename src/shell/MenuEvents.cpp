#include "shell/MenuEvents.h"

#include "document/window/OpenPicture.h"
#include "document/window/SavePicture.h"
#include "document/window/frmNew.h"
#include "files/icons/IconExtractor.h"
#include "imageops/Flip.h"
#include "imageops/Greyscale.h"
#include "imageops/InvertImage.h"
#include "imageops/Undo.h"
#include "imageops/effects/RunEffect.h"
#include "imageops/frmPalette.h"
#include "imageops/frmSize.h"
#include "selection/Selection.h"
#include "selection/SelectionCommands.h"
#include "selection/clipboard/Paste.h"
#include "shell/MainForm.h"
#include "shell/frmAbout.h"
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

void WireRecentEntries(MainMenu& menu) {
  const auto entries = menu.RecentEntries();
  for (size_t i = 0; i < entries.size(); ++i)
    entries[i]->OnClick = [i] {
      const std::string path = State.RecentFiles[i];
      if (!path.empty()) OpenRecentFile(path);
    };
  State.OnRecentFilesRead = ShowRecentList;
}

void WireImageMenu(MainMenu& menu) {
  menu.Image.OnClick = Image_Click;
  menu.FlipHorizontal.OnClick = FlipHorizontal_Click;
  menu.FlipVertical.OnClick = FlipVertical_Click;
  menu.InvertImage.OnClick = InvertImage_Click;
  for (int16_t i = 0; i < static_cast<int16_t>(menu.Greyscale.size()); ++i)
    menu.Greyscale[static_cast<size_t>(i)]->OnClick = [i] { Greyscale_Click(i); };
  menu.ImageSize.OnClick = ImageSize_Click;
  menu.ImagePalette.OnClick = ImagePalette_Click;
}

}  // namespace

void WireMenus(MainMenu& menu) {
  menu.File.OnClick = File_Click;
  menu.NewImage.OnClick = NewImage_Click;
  menu.FileOpen.OnClick = FileOpen_Click;
  menu.Close.OnClick = Close_Click;
  menu.mnuIcon.OnClick = mnuIcon_Click;
  menu.Save.OnClick = Save_Click;
  menu.SaveAs.OnClick = SaveAs_Click;
  menu.Manager.OnClick = Manager_Click;
  menu.Splash.OnClick = Splash_Click;
  menu.Exit.OnClick = Exit_Click;
  menu.Edit.OnClick = Edit_Click;
  menu.Undo.OnClick = Undo_Click;
  menu.Cut.OnClick = Cut_Click;
  menu.Copy.OnClick = Copy_Click;
  menu.Paste.OnClick = Paste_Click;
  menu.PasteSpecial.OnClick = PasteSpecial_Click;
  menu.SelectAll.OnClick = SelectAll_Click;
  menu.ClearSelection.OnClick = ClearSelection_Click;
  menu.Effects.OnClick = Effects_Click;
  for (size_t i = 0; i < menu.Effect.size(); ++i)
    menu.Effect[i]->OnClick = [i] { Effect_Click(static_cast<int16_t>(i)); };
  WireImageMenu(menu);
  menu.ArrHorizontal.OnClick = ArrHorizontal_Click;
  menu.ArrVertival.OnClick = ArrVertival_Click;
  menu.Cascade.OnClick = Cascade_Click;
  menu.AboutKorvath.OnClick = AboutKorvath_Click;
  WireRecentEntries(menu);
}

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

void Effects_Click() {
  const ImageDocument* document = ActiveDocument();
  const bool holds_picture = document && (document->OpenedFile || document->Dirty);
  for (const auto& entry : MainForm->Menus.Effect) entry->SetEnabled(holds_picture);
}

void Effect_Click(int16_t Index) {
  RunEffect(MainForm->Menus.Effect.at(static_cast<size_t>(Index))->Tag());
}

/// The picture is scaled as it is seen, with what floats over it.
void ImageSize_Click() {
  if (!DocumentAtRest()) return;
  frmSize->OnScaling = DropSelection;
  MainForm->SetEnabled(false);
  frmSize->ShowSize();
}

void NewImage_Click() {
  NewImageDialog& dialog = *frmNew;
  dialog.OnMade = [] { MainForm->LeftBar.SetFocus(); };
  MainForm->SetEnabled(false);
  dialog.Show();
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

void mnuIcon_Click() {
  IconExtractor->Show();
}

void PasteSpecial_Click() {
  if (PasteSpecial()) MainForm->LeftBar.SetFocus();
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

void AboutKorvath_Click() {
  frmAbout.Load().ShowCentred();
}

void ShowRecentList() {
  const auto entries = MainForm->Menus.RecentEntries();
  for (size_t i = 0; i < entries.size(); ++i) {
    const std::string& path = State.RecentFiles[i];
    entries[i]->SetCaption(path.empty() ? ";File" + std::to_string(i + 1) : CaptionOf(NameOf(path)));
    entries[i]->SetEnabled(!path.empty());
    if (i > 0) entries[i]->SetVisible(!path.empty());
  }
  MainForm->Menus.mnuRecent.SetEnabled(State.RecentCount >= 1);
}

}  // namespace zelvane
