#include <algorithm>

#include "files/SaveDialog.h"
#include "shell/state/Settings.h"
#include "shell/state/State.h"
#include "surface/system/files/Files.h"
#include "surface/system/files/Folders.h"

namespace zelvane {
namespace {

constexpr int kDesktop = 1, kDocuments = 2;
constexpr int kRootLength = 1;       // of "/", which a shortened path keeps
constexpr Single kRaisedWider = 15;  // twips
constexpr Single kRaisedHigher[] = {0, -15, 15};
constexpr int kFolderAnswerMs = 150;

bool IsWithin(const std::string& folder, const std::string& outer) {
  return !outer.empty() && (ToLower(folder) + '/').starts_with(ToLower(outer) + '/');
}

/// The folder or, where it has gone, the nearest one above it that is left.
std::string NearestFolder(std::string folder) {
  while (folder.size() > 1 && IsFolder(folder, kFolderAnswerMs) == false) folder = FolderOf(folder);
  return folder.empty() ? "/" : folder;
}

}  // namespace

// What `FileDialog` sets.

void SaveDialogWindow::SetFilter() {
  Filters = ParseFilters(FilterText);
  FileType.Clear();
  for (const FileFilter& filter : Filters) FileType.AddItem(filter.description);
}

void SaveDialogWindow::SetFilterIndex() {
  FileType.SetListIndex(WantedFilterIndex);
}

void SaveDialogWindow::SetFileName() {
  InputFileName.SetText(ChosenFile);
}

void SaveDialogWindow::SetPath() {
  FolderTree.SetPath(NearestFolder(StartFolder));
}

void SaveDialogWindow::SetButton() {
  const bool can_confirm = CanConfirm(InputFileName.Text());
  saveButton.SetEnabled(can_confirm);
  (can_confirm ? saveButton : cancelButton).SetDefault(true);
}

void SaveDialogWindow::Ask() {
  TakeSize();
  Form_Activate();
  ShowModal();
}

/// What is to be seen stands before the window does.
void SaveDialogWindow::Form_Activate() {
  const bool is_proposed = !ChosenFile.empty();
  if (Saves()) FileType.SetListIndex(is_proposed ? FittingFilter(Filters, ChosenFile) : 0);
  if (!is_proposed) ApplyExtension();
  ChosenFile.clear();
  if (FileType.ListIndex() == -1) FileType.SetListIndex(0);
  InputFileName.SelectAll();
  if (Saves())
    InputFileName.SetFocus();
  else
    FolderTree.SetFocus();
}

/// The Esc that brought the window up, or closed a list in it, doesn't close it by being let go.
void SaveDialogWindow::Form_KeyUp(int16_t KeyCode) {
  if (KeyCode == kKeyEscape && escape_is_down_) cancelButton_Click();
  if (KeyCode != kKeyF5) return;
  FolderTreeRefresh();
  RefreshFileList();
}

// Folders and files.

void SaveDialogWindow::FolderTreeRefresh() {
  FolderTree.Refresh();
  const std::string left = NearestFolder(FolderTree.Path());
  if (left != FolderTree.Path()) FolderTree.SetPath(left);
}

void SaveDialogWindow::FolderTree_Change(const std::string& folder) {
  ShowPath();
  RefreshFileList();
  const bool on_desktop = IsWithin(folder, DesktopFolder), in_documents = IsWithin(folder, DocumentsFolder);
  // One may hold the other, as the home folder does where it stands for it.
  if (on_desktop && !(in_documents && DocumentsFolder.size() > DesktopFolder.size()))
    return RaiseLocation(kDesktop);
  if (in_documents) return RaiseLocation(kDocuments);
  FlattenLocation(kDesktop);
  FlattenLocation(kDocuments);
}

void SaveDialogWindow::ShowPath() {
  CurrentPath.SetCaption(
      ShortenPath(FolderTree.Path() + ' ', RoundHalfEven(CurrentPath.Width()), kRootLength,
                  [this](const std::string& text) { return CurrentPath.TextWidth(text); }));
}

/// The list is empty first, in case the folder can't be read.
void SaveDialogWindow::RefreshFileList() {
  File1.Clear();
  ShowCount();
  File1.SetPath(FolderTree.Path());
  File1.SetPattern(Patterns());
  ShowCount();
}

void SaveDialogWindow::ShowCount() {
  FileCount.SetCaption(FormatCount(File1.ListCount()));
}

void SaveDialogWindow::RaiseLocation(int index) {
  if (Location[index].Appearance() == kFlat) {
    Location[index].SetAppearance(kRaised);
    Location[index].SetWidth(Location[index].Width() + kRaisedWider);
    Location[index].SetHeight(Location[index].Height() + kRaisedHigher[index]);
  }
  FlattenLocation(index == kDesktop ? kDocuments : kDesktop);
}

void SaveDialogWindow::FlattenLocation(int index) {
  if (Location[index].Appearance() == kFlat) return;
  Location[index].SetAppearance(kFlat);
  Location[index].SetWidth(Location[index].Width() - kRaisedWider);
  Location[index].SetHeight(Location[index].Height() - kRaisedHigher[index]);
}

void SaveDialogWindow::Location_Click(int index) {
  FolderTree.SetPath(index == kDesktop ? DesktopFolder : DocumentsFolder);
  FolderTree.SetFocus();
}

// The file type, and what hangs on it.

std::string SaveDialogWindow::Patterns() const {
  const int index = FileType.ListIndex();
  return index >= 0 && index < static_cast<int>(Filters.size()) ? Filters[static_cast<size_t>(index)].patterns
                                                                : std::string();
}

void SaveDialogWindow::ApplyExtension() {
  if (Saves()) InputFileName.SetText(zelvane::ApplyExtension(InputFileName.Text(), Patterns()));
}

void SaveDialogWindow::FileType_Click() {
  EnableCompression(FileType.Text().starts_with("JPEG"));
  RefreshFileList();
  ApplyExtension();
}

void SaveDialogWindow::ShowCompression(bool visible) {
  for (Control* control : {static_cast<Control*>(&Label4), static_cast<Control*>(&CompressionNumber),
                           static_cast<Control*>(&CompressionScroll)})
    control->SetVisible(visible);
  EnableCompression(visible && FileType.Text().starts_with("JPEG"));
}

void SaveDialogWindow::EnableCompression(bool enabled) {
  Label4.SetEnabled(enabled);
  CompressionNumber.SetEnabled(enabled);
  CompressionScroll.SetEnabled(enabled);
}

void SaveDialogWindow::CompressionNumber_Change() {
  const std::optional<int16_t> value = ToInt16(CompressionNumber.Value());
  const bool fits = value && *value >= CompressionScroll.Min() && *value <= CompressionScroll.Max();
  if (fits) CompressionScroll.SetValue(*value);
}

void SaveDialogWindow::KeepCompression() {
  if (!CompressionNumber.Enabled()) return;
  CompressionNumber.SetValue(
      std::clamp(CompressionNumber.Value(), CompressionNumber.MinValue(), CompressionNumber.MaxValue()));
  WriteSetting("JPEGCompression", PlainText(CompressionNumber.Value()));
}

// The answer.

void SaveDialogWindow::saveButton_Click() {
  if (!saveButton.Enabled()) return;
  const TypedPath typed = ResolveTyped(FolderTree.Path(), InputFileName.Text());
  if (typed.name.empty() || IsFolder(JoinPath(typed.folder, typed.name), kFolderAnswerMs).value_or(false))
    return GoTo(JoinPath(typed.folder, typed.name));
  KeepCompression();
  ChosenFile = ConfirmedName(typed.name, Patterns(), Saves());
  ChosenFolder = typed.folder;
  if (!ChosenFile.empty()) AddToHistory(InputFileName.Text());
  Hide();
}

/// A folder is no file to open or to write: the person wants to look into it.
void SaveDialogWindow::GoTo(const std::string& folder) {
  FolderTree.SetPath(folder);
  InputFileName.SetText("");
  ApplyExtension();
}

void SaveDialogWindow::AddToHistory(const std::string& name) {
  const std::string lower = ToLower(name);
  if (std::find(HistoryNames.begin(), HistoryNames.end(), lower) != HistoryNames.end()) return;
  HistoryNames.push_back(lower);
  InputFileName.AddItem(name);
}

void SaveDialogWindow::cancelButton_Click() {
  ChosenFile.clear();
  Hide();
}

}  // namespace zelvane
