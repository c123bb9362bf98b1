#include "files/icons/IconExtractor.h"

#include <algorithm>
#include <utility>

#include "document/window/MakeDocument.h"
#include "files/FileDialog.h"
#include "shell/state/Settings.h"
#include "shell/state/State.h"
#include "surface/forms/windows/Application.h"
#include "surface/forms/windows/MdiForm.h"
#include "surface/raster/FailingStep.h"
#include "surface/raster/Units.h"
#include "surface/system/files/Files.h"

namespace zelvane {
namespace {

constexpr Color kGround = RGB(192, 192, 192);
constexpr Single kMargin = 180, kGap = 120;             // twips
constexpr Single kBelowMain = 300, kBesideMain = 1050;  // twips from the main window's corner
constexpr char kWidestNumber[] = "00000";

constexpr char kFilter[] =
    "Supported files (*.exe;*.dll)|*.exe;*.dll|Executable files (*.exe)|*.exe|Dynamic Link Library files "
    "(*.dll)|*.dll|All files (*.*)|*.*";
constexpr int16_t kExecutableFiles = 1;

}  // namespace

IconExtractorWindow::IconExtractorWindow()
    : DialogForm("IconExtractor", DialogLook::Titled),
      Background(*this, "Background"),
      IconPic(*this, "IconPic", PictureSurface::Frame::Yes),
      lblDumb(*this, "lblDumb", "Total Icons in file:"),
      lblNumIcons(*this, "lblNumIcons"),
      IconScroll(*this, "IconScroll", ScrollBar::Direction::Horizontal),
      lblCurrentIcon(*this, "lblCurrentIcon"),
      openButton(*this, "openButton", "&Open"),
      selectButton(*this, "selectButton", "&Select"),
      closeButton(*this, "closeButton", "Close") {
  Form_Load();
}

void IconExtractorWindow::Form_Load() {
  SetCaption(" Icon Extraction");
  SetKeyPreview(true);
  SetResizable(false);
  Background.SetBackColor(kGround);
  for (Label* label : {&lblDumb, &lblNumIcons, &lblCurrentIcon}) label->SetForeColor(kBlack);
  for (Label* number : {&lblNumIcons, &lblCurrentIcon}) number->SetAlignment(kAlignRight);
  IconPic.SetBackColor(SystemColor::WindowBackground);
  IconPic.SetAccessibleName("Icon");
  IconScroll.SetAccessibleName("Which icon");
  IconScroll.SetTabStop(true);
  IconScroll.SetLargeChange(1);
  IconScroll.SetEnabled(false);
  selectButton.SetEnabled(false);
  selectButton.SetDefault(true);
  LayOut();
  if (const MdiForm* main = MdiForm::Main())
    Move(main->Left() + kBesideMain, main->Top() + static_cast<Single>(State.TitleBarHeight) + kBelowMain);
  WireEvents();
}

void IconExtractorWindow::WireEvents() {
  OnActivate = [this] {
    if (IconFile.empty()) openButton.SetFocus();
  };
  OnDeactivate = [this] {
    if (!ChoosingFile) closeButton_Click();
  };
  OnKeyDown = [this](int16_t KeyCode, int16_t) {
    if (KeyCode == kKeyEscape) closeButton_Click();
  };
  OnQueryUnload = [this](bool& Cancel, UnloadModes) { Form_QueryUnload(Cancel); };
  openButton.OnClick = [this] { openButton_Click(); };
  selectButton.OnClick = [this] { selectButton_Click(); };
  closeButton.OnClick = [this] { closeButton_Click(); };
  IconScroll.OnChange = IconScroll.OnScroll = [this] { IconScroll_Change(); };
}

/// The icon, beside it the count above the scroll bar, the buttons below; as large as the desktop's font
/// needs it. Numbers end at the right edge.
void IconExtractorWindow::LayOut() {
  SetScaleMode(Scale::Twips);
  CommandButton* const buttons[] = {&openButton, &selectButton, &closeButton};
  Single button = 0;
  for (const CommandButton* each : buttons) button = std::max(button, each->NaturalWidth());
  const auto icon = static_cast<Single>((IconLibrary::kSide + 2) * kTwipsPerPixel);
  const Single number = lblNumIcons.TextWidth(kWidestNumber), row = lblDumb.NaturalHeight();
  const Single beside = kMargin + icon + kGap;
  const Single right =
      std::max(beside + lblDumb.NaturalWidth() + kGap + number, kMargin + 3 * button + 2 * kGap);
  const Single bar = std::max(IconScroll.NaturalHeight(), row);
  const Single bar_top = kMargin + std::max(icon - bar, row + kGap / 2);

  IconPic.Move(kMargin, kMargin, icon, icon);
  lblDumb.Move(beside, kMargin, lblDumb.NaturalWidth(), row);
  lblNumIcons.Move(right - number, kMargin, number, row);
  IconScroll.Move(beside, bar_top, right - number - kGap - beside, bar);
  lblCurrentIcon.Move(right - number, bar_top, number, bar);
  Single left = kMargin;
  const Single top = std::max(kMargin + icon, bar_top + bar) + kMargin;
  const Single spare = (right - kMargin - 3 * button - 2 * kGap) / 3;
  for (CommandButton* each : buttons) {
    each->Move(left, top, button + spare, each->NaturalHeight());
    left += button + spare + kGap;
  }
  SetWidth(right + kMargin);
  SetHeight(top + openButton.Height() + kMargin);
  Background.Move(0, 0, Width(), Height());
}

std::string IconExtractorWindow::AskForFile() {
  FileDialog dialog;
  dialog.SetDialogTitle("Open...");
  dialog.SetFilter(kFilter);
  dialog.SetFilterIndex(kExecutableFiles);
  dialog.SetInitDir(State.ZelvaneFolder);
  dialog.SetFileName("");
  ChoosingFile = true;
  Attempt([&] { dialog.ShowOpen(); });
  ChoosingFile = false;
  std::string path = dialog.FileName();
  if (!path.empty()) KeepZelvaneFolder(FolderOf(path));
  return path;
}

void IconExtractorWindow::openButton_Click() {
  const std::string path = AskForFile();
  Activate();
  if (path.empty()) return;
  IconFile = path;
  ListIcons();
}

/// The bar goes to the first icon before it gets its new end, which would take it along: one change.
void IconExtractorWindow::ListIcons() {
  lblCurrentIcon.SetCaption("");
  Icons = IconLibrary(RangesOf(IconFile));
  IconCount = Icons.Count();
  lblNumIcons.SetCaption(std::to_string(IconCount));
  if (IconCount == 0) return ClearIcon();
  selectButton.SetEnabled(true);
  const bool stands_elsewhere = IconScroll.Value() != 0;
  IconScroll.SetValue(0);
  With(ToInt16(IconCount - 1), [this](int16_t last) { IconScroll.SetMax(last); });
  IconScroll.SetEnabled(IconCount > 1);
  if (IconCount > 1) {
    IconScroll.SetFocus();
  } else {
    selectButton.SetFocus();
  }
  if (!stands_elsewhere) IconScroll_Change();
}

void IconExtractorWindow::IconScroll_Change() {
  IconPic.Cls();
  const int16_t shown = IconScroll.Value();
  lblCurrentIcon.SetCaption(std::to_string(shown + 1));
  With(Icons.Draw(shown, ToPixel(IconPic.BackColor())), [this](Bitmap icon) { IconPic.SetPicture(icon); });
  IconPic.Refresh();
}

/// What shows the document may let events run; the window comes back for the next icon, where it still
/// stands.
void IconExtractorWindow::selectButton_Click() {
  MakeDocument(IconPic.Image(), {ReadSetting("NewImageTitle", "Untitled"), ""});
  DoEvents();
  if (Visible()) Activate();
}

void IconExtractorWindow::closeButton_Click() {
  Hide();
  Icons = {};
  ClearIcon();
  lblNumIcons.SetCaption("");
  IconFile.clear();
  IconCount = 0;
}

void IconExtractorWindow::ClearIcon() {
  selectButton.SetEnabled(false);
  IconScroll.SetValue(0);
  IconScroll.SetMax(0);
  IconScroll.SetEnabled(false);
  IconPic.Cls();
  IconPic.Refresh();
  lblCurrentIcon.SetCaption("");
}

void IconExtractorWindow::Form_QueryUnload(bool& Cancel) {
  if (State.Exiting) return;
  Cancel = true;
  closeButton_Click();
}

}  // namespace zelvane
