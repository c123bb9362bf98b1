#include "shell/state/DataFile.h"

#include <future>
#include <memory>
#include <string>
#include <vector>

#include "shell/state/State.h"
#include "surface/raster/FailingStep.h"
#include "surface/system/files/Files.h"
#include "surface/system/files/Folders.h"
#include "ui/MsgBox.h"

namespace zelvane {
namespace {

constexpr char kDataFile[] = "Korvath.KVD", kDraft[] = "KorvathTemp.KVD";
constexpr char kUserFolder[] = "Korvath", kTemplateFolder[] = "Template";
constexpr char kTitle[] = "Zelvane";  // there is no main window yet that would give its own

/// A folder that is there without the file is left alone: the person may have moved the file.
void MakeUserFolder(const std::string& folder) {
  if (IsFolder(folder)) return;
  constexpr size_t kLargest = size_t{1} << 24;  // bytes of a template
  const std::string standard = JoinPath(JoinPath(ApplicationFolder(), kTemplateFolder), kDataFile);
  const std::vector<unsigned char> bytes = FileStart(standard, kLargest);
  if (!bytes.empty()) MakeFolderWith(folder, kDataFile, bytes);
}

std::string DataFolder() {
  const std::string beside = ApplicationFolder();
  if (FileExists(JoinPath(beside, kDataFile))) return beside;
  std::string own = JoinPath(UserDataFolder(), kUserFolder);
  MakeUserFolder(own);
  return own;
}

/// One that was cut off may have left it.
void DeleteDraft() {
  if (FileExists(State.DataTempPath)) DeleteFile(State.DataTempPath);
}

/// What `OpenDataFileAhead` has begun.
std::future<std::unique_ptr<DataStore>> ahead;

void NameDataFile() {
  const std::string folder = DataFolder();
  State.DataFilePath = JoinPath(folder, kDataFile);
  State.DataTempPath = JoinPath(folder, kDraft);
  State.DataPassword = kDataPassword;
}

bool Open() {
  State.DataConnection =
      ahead.valid() ? ahead.get() : DataStore::Open(State.DataFilePath, State.DataPassword);
  return State.DataConnection != nullptr;
}

/// What can't be read any more would otherwise be missed without a word.
bool Repair() {
  DeleteDraft();
  const auto kept = RepairDataFile(State.DataFilePath, State.DataTempPath, State.DataPassword);
  if (!Open()) return false;
  if (!kept) return true;
  MsgBox(
      "The Korvath data file was damaged. What could be read of it is in use again.\r\n"
      "The damaged file is kept as \"" +
          NameOf(*kept) + "\" in the same folder.",
      kOkOnly + kExclamationIcon, kTitle);
  return true;
}

}  // namespace

void OpenDataFileAhead() {
  NameDataFile();
  Attempt([] { ahead = std::async(std::launch::async, DataStore::Open, State.DataFilePath, kDataPassword); });
}

bool OpenDataFile() {
  if (!ahead.valid()) NameDataFile();
  if (FileExists(State.DataFilePath) && (Open() || Repair())) return true;
  MsgBox("The Korvath data file is missing or corrupted!", kOkOnly + kStopIcon, kTitle);
  return false;
}

void CloseDataFile() {
  State.DataConnection.reset();
  DeleteDraft();
  CompactDataFile(State.DataFilePath, State.DataTempPath, State.DataPassword);
}

}  // namespace zelvane
