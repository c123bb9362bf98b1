#include "document/window/OpenPicture.h"

#include "components/ImgEdit.h"
#include "document/window/MakeDocument.h"
#include "files/FileDialog.h"
#include "shell/state/RecentFiles.h"
#include "shell/state/Settings.h"
#include "shell/state/State.h"
#include "surface/forms/windows/Application.h"
#include "ui/MsgBox.h"

namespace zelvane {
namespace {

constexpr char kOpenFilter[] =
    "All picture "
    "files|*.bmp;*.dib;*.rle;*.xbm;*.gif;*.jpeg;*.jpg;*.jpe;*.wmf;*.emf;*.png;*.mng;*.tif;*.jfx;*.pcx;"
    "*.xif;*.ico;*.cur|Bitmaps (*.bmp;*.dib;*.rle;*.xbm)|*.bmp;*.dib;*.rle;*.xbm|GIF images "
    "(*.gif)|*.gif|JPEG images "
    "(*.jpg;*.jpe;*.jpeg)|*.jpg;*.jpe;*.jpeg|Metafiles (*.wmf;*.emf)|*.wmf;*.emf|Network graphics images "
    "(*.png;*.mng)|*.png;*.mng|Tagged image format files (*.tif;*.tiff;*.jfx)|*.tif;*.tiff;*.jfx|PC "
    "Paintbrush images "
    "(*.pcx)|*.pcx|XIF images  (*.xif)|*.xif|Icons (*.ico) and Cursors (*.cur)|*.ico;*.cur|All files "
    "(*.*)|*.*";

enum class Reader { PicFormat, ImgEdit, Platform };

Reader ReaderOf(const std::string& path) {
  const std::string kind = ExtensionOf(path).substr(0, 3);
  for (const char* known : {"png", "mng", "jpg", "jpe", "bmp", "xbm", "gif"})
    if (kind == known) return Reader::PicFormat;
  for (const char* known : {"tif", "jfx", "pcx", "xif"})
    if (kind == known) return Reader::ImgEdit;
  return Reader::Platform;
}

std::optional<LoadedPicture> ReadWithPicFormat(const std::string& path) {
  const int32_t number = State.PicFormatObject->ReadPicture(path);
  if (number == 0) return std::nullopt;
  return State.PicFormatObject->TakePicture(number);
}

std::optional<LoadedPicture> ReadWithImgEdit(const std::string& path) {
  ImgEdit reader;
  reader.SetImage(path);
  return reader.Display() ? reader.TakePicture() : std::nullopt;
}

/// A second try once events have run: what was being written may stand by then.
std::optional<LoadedPicture> ReadWithPlatform(const std::string& path) {
  if (std::optional<LoadedPicture> picture = LoadPicture(path)) return picture;
  DoEvents();
  return LoadPicture(path);
}

std::string GetOpenName(const std::string& title, const std::string& filter, const std::string& name) {
  FileDialog dialog;
  dialog.SetDialogTitle(title);
  dialog.SetFilter(filter);
  dialog.SetFilterIndex(State.OpenFilterIndex);
  dialog.SetInitDir(State.ZelvaneFolder);
  dialog.SetFileName(name);
  dialog.ShowOpen();
  State.OpenFilterIndex = dialog.FilterIndex();
  std::string path = dialog.FileName();
  if (!path.empty()) KeepZelvaneFolder(FolderOf(path));
  return path;
}

}  // namespace

std::optional<LoadedPicture> LoadPictureFile(const std::string& path) {
  switch (ReaderOf(path)) {
    case Reader::PicFormat:
      return ReadWithPicFormat(path);
    case Reader::ImgEdit:
      return ReadWithImgEdit(path);
    case Reader::Platform:
      return ReadWithPlatform(path);
  }
  return std::nullopt;
}

frmPaint* OpenPicture(const std::string& path) {
  std::optional<LoadedPicture> picture = LoadPictureFile(path);
  // Events have run if that took long.
  if (!MdiForm::Main()) return nullptr;
  if (picture) {
    const FileState file = picture->file;
    frmPaint& document = MakeDocument(std::move(*picture), {path, path});
    document.File = file;
    return &document;
  }
  MsgBox("The selected picture file is missing or invalid", kExclamationIcon, "Zelvane");
  return nullptr;
}

void OpenAskedFile() {
  const std::string path = GetOpenName("Open...", kOpenFilter, "");
  if (path.empty()) return;
  OpenPickedFiles({path});
}

void OpenPickedFiles(const std::vector<std::string>& paths) {
  for (const std::string& path : paths) {
    // A message about the one before may have seen the program's end.
    if (!MdiForm::Main()) return;
    frmPaint* document = OpenPicture(path);
    if (!document) continue;
    document->OpenedFile = true;
    AddToRecentList(path);
  }
}

void OpenRecentFile(const std::string& path) {
  if (OpenPicture(path)) AddToRecentList(path);
}

}  // namespace zelvane
