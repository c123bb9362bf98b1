#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

namespace zelvane {

inline constexpr int kRecentFiles = 5;

/// The last files opened or saved, the most recent first. Free entries are empty and stand at the end.
struct RecentList {
  std::array<std::string, kRecentFiles> RecentFiles;
  int16_t RecentCount = 0;
  /// The list has been read anew.
  std::function<void()> OnLoaded;
};
inline RecentList Recent;

/// Reads the list from the settings.
void LoadRecentList();
/// Puts a path at the front, or moves it there; names that differ in case alone count as one. Writes the list
/// to the settings and reads it anew, unless the path leads it already.
void AddToRecentList(const std::string& NewFile);

}  // namespace zelvane
