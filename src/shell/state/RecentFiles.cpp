#include "shell/state/RecentFiles.h"

#include <algorithm>

#include "shell/state/Settings.h"
#include "shell/state/State.h"
#include "surface/system/files/Files.h"

namespace zelvane {
namespace {

std::string KeyOf(size_t entry) {
  return "RecentFile" + std::to_string(entry + 1);
}

void SaveRecentList() {
  for (size_t i = 0; i < State.RecentFiles.size(); ++i) WriteSetting(KeyOf(i), State.RecentFiles[i]);
}

}  // namespace

void LoadRecentList() {
  State.RecentCount = 0;
  for (size_t i = 0; i < State.RecentFiles.size(); ++i) {
    State.RecentFiles[i] = ReadSetting(KeyOf(i), "");
    if (!State.RecentFiles[i].empty()) ++State.RecentCount;
  }
  if (State.OnRecentFilesRead) State.OnRecentFilesRead();
}

void AddToRecentList(const std::string& NewFile) {
  auto& files = State.RecentFiles;
  const auto same = [&](const std::string& file) {
    return !file.empty() && ToLower(file) == ToLower(NewFile);
  };
  auto place = std::find_if(files.begin(), files.end(), same);
  if (place == files.begin()) return;
  if (place == files.end()) --place;
  std::move_backward(files.begin(), place, place + 1);
  files.front() = NewFile;
  SaveRecentList();
  LoadRecentList();
}

}  // namespace zelvane
