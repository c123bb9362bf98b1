#include "surface/system/files/Folders.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <QStandardPaths>
#include <cstdlib>
#include <memory>

#include "surface/system/files/Errand.h"
#include "surface/system/text/QtText.h"

namespace zelvane {
namespace {

/// Most file systems tell with the name.
mode_t KindOf(int folder, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN) return DTTOIF(entry.d_type);
  struct stat found = {};
  return ::fstatat(folder, entry.d_name, &found, AT_SYMLINK_NOFOLLOW) == 0 ? found.st_mode : 0;
}

std::string WithoutEndSeparator(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

std::string Place(QStandardPaths::StandardLocation which) {
  constexpr int kPatience = 150;  // milliseconds
  const std::string named = FromQt(QStandardPaths::writableLocation(which));
  if (IsFolder(named, kPatience).value_or(true)) return WithoutEndSeparator(named);
  const char* home = std::getenv("HOME");
  return home && *home ? WithoutEndSeparator(home) : "/";
}

}  // namespace

bool IsFolder(const std::string& path) {
  struct stat found = {};
  return ::stat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode);
}

std::optional<bool> IsFolder(const std::string& path, int milliseconds) {
  const auto answer = std::make_shared<bool>(false);
  Errand question;
  const bool is_answered = question.Begin([answer, path] { *answer = IsFolder(path); }, milliseconds);
  return is_answered ? std::optional(*answer) : std::nullopt;
}

FolderNames FoldersIn(const std::string& folder) {
  FolderNames names;
  DIR* const entries = ::opendir(folder.c_str());
  if (!entries) return names;
  while (const dirent* entry = ::readdir(entries)) {
    if (entry->d_name[0] == '.') continue;
    const mode_t kind = KindOf(::dirfd(entries), *entry);
    if (S_ISDIR(kind)) names.folders.emplace_back(entry->d_name);
    if (S_ISLNK(kind)) names.links.emplace_back(entry->d_name);
  }
  ::closedir(entries);
  return names;
}

std::string DesktopFolder() {
  return Place(QStandardPaths::DesktopLocation);
}

std::string DocumentsFolder() {
  return Place(QStandardPaths::DocumentsLocation);
}

}  // namespace zelvane
