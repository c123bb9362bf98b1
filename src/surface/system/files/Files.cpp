#include "surface/system/files/Files.h"

#include <fnmatch.h>
#include <unistd.h>

#include <QString>
#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "surface/system/files/SafeFile.h"

namespace zelvane {

namespace {

namespace fs = std::filesystem;

std::string WithoutEndSeparator(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

}  // namespace

bool FileExists(const std::string& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  return fs::exists(status) && !fs::is_directory(status);
}

bool DeleteFile(const std::string& path) {
  return ::unlink(path.c_str()) == 0;
}

bool RenameFile(const std::string& from, const std::string& to) {
  return ::rename(from.c_str(), to.c_str()) == 0;
}

std::vector<std::string> FilesIn(const std::string& folder, const std::string& pattern) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
    const std::string name = at->path().filename().string();
    std::error_code ignored;
    if (at->is_directory(ignored)) continue;
    if (::fnmatch(pattern.c_str(), name.c_str(), FNM_PERIOD | FNM_CASEFOLD) == 0) names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string ApplicationFolder() {
  std::error_code error;
  return FolderOf(fs::read_symlink("/proc/self/exe", error).string());
}

std::string CurrentFolder() {
  std::error_code error;
  return WithoutEndSeparator(fs::current_path(error).string());
}

bool ChangeFolder(const std::string& folder) {
  return ::chdir(folder.c_str()) == 0;
}

std::string TemporaryFolder() {
  std::error_code error;
  const std::string folder = fs::temp_directory_path(error).string();
  const std::string bare = WithoutEndSeparator(error ? "/tmp" : folder);
  return bare == "/" ? bare : bare + '/';
}

std::string AbsolutePath(const std::string& path) {
  if (path.empty()) return {};
  std::error_code error;
  const fs::path whole = fs::absolute(path, error);
  return error ? path : WithoutEndSeparator(whole.lexically_normal().string());
}

std::string FolderOf(const std::string& path) {
  const size_t at = path.rfind('/');
  if (at == std::string::npos) return {};
  return at == 0 ? "/" : path.substr(0, at);
}

std::string NameOf(const std::string& path) {
  return path.substr(path.rfind('/') + 1);  // npos + 1 is 0
}

std::string ExtensionOf(const std::string& path) {
  const std::string name = NameOf(path);
  const size_t at = name.rfind('.');
  return at == std::string::npos ? std::string() : ToLower(name.substr(at + 1));
}

std::string ToLower(const std::string& text) {
  return QString::fromStdString(text).toLower().toStdString();
}

WriteResult WriteFileSafely(const std::string& path, const std::vector<unsigned char>& bytes) {
  SafeFile file(path);
  file.Write(bytes.data(), bytes.size());
  return file.Commit();
}

}  // namespace zelvane
