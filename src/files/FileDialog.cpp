#include "files/FileDialog.h"

#include "files/SaveDialog.h"
#include "shell/state/Settings.h"
#include "surface/system/files/Files.h"

namespace zelvane {
FileDialog::FileDialog() {
  SaveDialog.Load();
}

FileDialog::~FileDialog() {
  if (SaveDialog.IsLoaded()) SaveDialog->Unload();
}

void FileDialog::SetDialogTitle(const std::string& title) {
  SaveDialog->SetCaption(" " + title);
}

void FileDialog::SetFilter(const std::string& filter) {
  SaveDialog->FilterText = filter;
  SaveDialog->SetFilter();
}

int16_t FileDialog::FilterIndex() const {
  return static_cast<int16_t>(SaveDialog->FileType.ListIndex());
}

void FileDialog::SetFilterIndex(int16_t index) {
  SaveDialog->WantedFilterIndex = index;
  SaveDialog->SetFilterIndex();
}

void FileDialog::SetInitDir(const std::string& folder) {
  SaveDialog->StartFolder = folder;
  SaveDialog->SetPath();
}

std::string FileDialog::FileName() const {
  if (!SaveDialog.IsLoaded() || SaveDialog->ChosenFile.empty()) return {};
  return JoinPath(SaveDialog->ChosenFolder, SaveDialog->ChosenFile);
}

void FileDialog::SetFileName(const std::string& name) {
  SaveDialog->ChosenFile = name;
  SaveDialog->SetFileName();
}

int16_t FileDialog::JPEGCompression() const {
  return ToInt16(ReadNumber("JPEGCompression", kDefaultCompression).value_or(kDefaultCompression))
      .value_or(kDefaultCompression);
}

void FileDialog::ShowOpen() {
  SaveDialog->DialogMode = "O";
  SaveDialog->Label1.SetCaption("Open from:");
  SaveDialog->Label3.SetCaption("Files of type:");
  SaveDialog->saveButton.SetCaption("&Open");
  SaveDialog->ShowCompression(false);
  SaveDialog->SetButton();
  SaveDialog->Ask();
}

void FileDialog::ShowSave() {
  SaveDialog->DialogMode = "S";
  SaveDialog->Label1.SetCaption("Save in:");
  SaveDialog->Label3.SetCaption("Save as type:");
  SaveDialog->saveButton.SetCaption("&Save");
  SaveDialog->ShowCompression(true);
  SaveDialog->SetButton();
  SaveDialog->Ask();
}

}  // namespace zelvane
