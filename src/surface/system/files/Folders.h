#pragma once

#include <optional>
#include <string>
#include <vector>

/// Folders and where they are. Paths may be any bytes; those told have no separator at the end, but for the
/// root.
namespace zelvane {

/// A folder, or a link to one, is there. None where the disk hasn't answered within so many milliseconds.
std::optional<bool> IsFolder(const std::string& path, int milliseconds);
bool IsFolder(const std::string& path);

/// Names in a folder, without hidden ones, in no order. What a link leads to may be on a disk that doesn't
/// answer, so it isn't asked for.
struct FolderNames {
  std::vector<std::string> folders, links;
};
/// Empty where the folder can't be read.
FolderNames FoldersIn(const std::string& folder);

/// The user's folders, as the desktop names them: the home folder where it names none that is there.
std::string DesktopFolder();
std::string DocumentsFolder();

}  // namespace zelvane
