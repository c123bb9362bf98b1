#pragma once

#include <string>

namespace zelvane {

/// Reads the list of recent files, which is in `State`, from the settings.
void LoadRecentList();
/// Puts a path at the front, or moves it there; names that differ in case alone count as one. Writes the list
/// to the settings and reads it anew, unless the path leads it already.
void AddToRecentList(const std::string& NewFile);

}  // namespace zelvane
