#include "document/window/SavePicture.h"

#include "components/ImgEdit.h"
#include "document/window/BuildIcon.h"
#include "files/FileDialog.h"
#include "files/FileNames.h"
#include "shell/state/RecentFiles.h"
#include "shell/state/Settings.h"
#include "shell/state/State.h"
#include "surface/system/files/PictureFile.h"
#include "ui/MsgBox.h"

namespace zelvane {
namespace {

int16_t SaveTypeOf(const std::string& extension) {
  if (extension == "gif") return kSaveGif;
  if (extension == "jpg" || extension == "jpe" || extension == "jpeg") return kSaveJpeg;
  if (extension == "tif" || extension == "tiff" || extension == "jfx") return kSaveTiff;
  if (extension == "ico") return kSaveIcon;
  return kSaveBitmap;
}

/// What a name without a dot gets.
const char* ExtensionFor(int16_t type) {
  switch (type) {
    case kSaveGif:
      return ".gif";
    case kSaveJpeg:
      return ".jpg";
    case kSaveTiff:
      return ".tif";
    case kSaveIcon:
      return "";
    default:
      return ".bmp";
  }
}

std::string AskName(const ImageDocument& document, const std::string& title, const std::string& filters) {
  const std::string& path = document.Buffer.Tag();
  FileDialog dialog;
  dialog.SetDialogTitle(title);
  dialog.SetFilter(filters);
  dialog.SetInitDir(path.empty() ? State.ZelvaneFolder : FolderOf(path));
  dialog.SetFileName(NameOf(path));
  dialog.ShowSave();
  std::string name = dialog.FileName();
  if (!name.empty()) KeepZelvaneFolder(FolderOf(name));
  return name;
}

/// By `State.SaveType`.
constexpr WrittenKind kKinds[] = {WrittenKind::None, WrittenKind::Bitmap, WrittenKind::Gif,
                                  WrittenKind::Jpeg, WrittenKind::Tiff,   WrittenKind::Icon};

/// What stands in the document's own file is kept where the picture doesn't hold all of it, or where another
/// program has written it. Any other file has been asked about.
WriteTarget TargetFor(const ImageDocument& document, const std::string& path) {
  WriteTarget target(path);
  if (path != document.Buffer.Tag()) return target;
  target.known = document.File.stamp;
  target.keep = document.File.whole_as != kKinds[State.SaveType];
  return target;
}

WriteResult Write(const Bitmap& picture, const WriteTarget& target) {
  switch (State.SaveType) {
    case kSaveGif:
      return State.PicFormatObject->ConvertToGif(picture, target);
    case kSaveJpeg:
      return State.PicFormatObject->ConvertToJpeg(picture, target, ReadSetting("JPEGCompression", "65"));
    case kSaveTiff:
      return ImgEdit::SaveAs(picture, target);
    case kSaveIcon: {
      const IconParts icon = BuildIcon(picture);
      return SaveIcon(icon.picImage, icon.picMask, target);
    }
    default:
      return SavePicture(picture, target);
  }
}

/// A path as long as a person would read, in bytes.
std::string Readable(const std::string& path) {
  constexpr double kLongest = 400;
  return ShortenPath(path, kLongest, 1,
                     [](const std::string& text) { return static_cast<double>(text.size()); });
}

void TellFailure(const std::string& path, const std::string& reason) {
  MsgBox("The picture could not be saved as\r\n" + Readable(path) + "\r\n\r\nReason: " + reason + ".",
         kExclamationIcon, "Save failed.");
}

void NameAfter(ImageDocument& document, const std::string& path) {
  if (ToLower(path) != ToLower(document.Buffer.Tag())) AddToRecentList(path);
  document.Buffer.SetTag(path);
  document.SetTag(path);
  document.ShowCaption();
  document.SetDirtyFalse();
}

void SaveAsFlow(ImageDocument& document) {
  const std::string name = GetSaveName(document, "Save As...", kSaveFilter);
  if (MayReplace(document, name)) SaveFile(document, name);
}

}  // namespace

void SetSaveType(const std::string& path) {
  State.SaveType = SaveTypeOf(ExtensionOf(path));
}

std::string GetSaveName(ImageDocument& document, const std::string& WindowTitle, const std::string& Filters) {
  std::string name = AskName(document, WindowTitle, Filters);
  if (!name.empty() && NameOf(name).find('.') == std::string::npos) name += ExtensionFor(State.SaveType);
  SetSaveType(name);
  return name;
}

bool MayReplace(const ImageDocument& document, const std::string& name) {
  if (name.empty() || name == document.Buffer.Tag() || !FileExists(name)) return true;
  return MsgBox("Do you wish to replace the file?", kYesNo + kQuestionIcon, "File Already Exists") ==
         kAnswerYes;
}

bool SaveFile(ImageDocument& document, const std::string& path) {
  if (path.empty()) return false;
  const WriteResult result = Write(document.Buffer.Image(), TargetFor(document, path));
  const bool own = result.Done() || path == document.Buffer.Tag();
  if (own && result.stamp.size >= 0) document.File = {result.stamp, kKinds[State.SaveType]};
  if (!result.Done()) {
    TellFailure(path, result.reason);
    return false;
  }
  NameAfter(document, path);
  return true;
}

void Save_Click() {
  ImageDocument* document = ActiveDocument();
  if (!document) return;
  const std::string path = document->Buffer.Tag();
  SetSaveType(path);
  if (path.empty())
    SaveAsFlow(*document);
  else
    SaveFile(*document, path);
  document->Form_Activate();
}

void SaveAs_Click() {
  ImageDocument* document = ActiveDocument();
  if (!document) return;
  SetSaveType(document->Buffer.Tag());
  SaveAsFlow(*document);
  document->Form_Activate();
}

}  // namespace zelvane
