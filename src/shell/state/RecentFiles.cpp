#include "shell/state/RecentFiles.h"

#include <algorithm>

#include "shell/state/Settings.h"
#include "surface/system/files/Files.h"

namespace zelvane {
namespace {

std::string KeyOf(size_t entry) {
  return "RecentFile" + std::to_string(entry + 1);
}

void SaveRecentList() {
  for (size_t i = 0; i < Recent.RecentFiles.size(); ++i) WriteSetting(KeyOf(i), Recent.RecentFiles[i]);
}

}  // namespace

void LoadRecentList() {
  Recent.RecentCount = 0;
  for (size_t i = 0; i < Recent.RecentFiles.size(); ++i) {
    Recent.RecentFiles[i] = ReadSetting(KeyOf(i), "");
    if (!Recent.RecentFiles[i].empty()) ++Recent.RecentCount;
  }
  if (Recent.OnLoaded) Recent.OnLoaded();
}

void AddToRecentList(const std::string& NewFile) {
  auto& files = Recent.RecentFiles;
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
