#include "surface/system/files/Files.h"

#include <fcntl.h>
#include <fnmatch.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "surface/system/files/SafeFile.h"
#include "surface/text/QtText.h"

namespace zelvane {

namespace {

namespace fs = std::filesystem;

std::string WithoutEndSeparator(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

/// A folder of this user that nobody else may look into; made where there is none.
bool IsPrivate(const std::string& folder) {
  constexpr mode_t kOwnerOnly = 0700, kOthers = 0077;
  ::mkdir(folder.c_str(), kOwnerOnly);
  const int file = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  if (file < 0) return false;
  struct stat found = {};
  const bool ours = ::fstat(file, &found) == 0 && found.st_uid == ::geteuid();
  const bool closed = ours && ((found.st_mode & kOthers) == 0 || ::fchmod(file, kOwnerOnly) == 0);
  ::close(file);
  return closed;
}

}  // namespace

bool FileExists(const std::string& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  return fs::exists(status) && !fs::is_directory(status);
}

bool FolderExists(const std::string& path) {
  std::error_code error;
  return fs::is_directory(path, error);
}

bool DeleteFile(const std::string& path) {
  return ::unlink(path.c_str()) == 0;
}

bool RenameFile(const std::string& from, const std::string& to) {
  return ::rename(from.c_str(), to.c_str()) == 0;
}

std::vector<unsigned char> FileStart(const std::string& path, size_t count) {
  // A pipe without a writer would block an ordinary open.
  const int file = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (file < 0) return {};
  std::vector<unsigned char> bytes(count);
  struct stat found = {};
  const bool is_file = ::fstat(file, &found) == 0 && S_ISREG(found.st_mode);
  const ssize_t got = is_file ? ::pread(file, bytes.data(), count, 0) : 0;
  ::close(file);
  bytes.resize(got > 0 ? static_cast<size_t>(got) : 0);
  return bytes;
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

std::string HomeFolder() {
  const char* home = std::getenv("HOME");
  return home && home[0] == '/' ? WithoutEndSeparator(home) : "/";
}

std::string TemporaryFolder() {
  std::error_code error;
  const std::string folder = fs::temp_directory_path(error).string();
  const std::string bare = WithoutEndSeparator(error ? "/tmp" : folder);
  return bare == "/" ? bare : bare + '/';
}

std::string OwnTemporaryFolder() {
  const std::string system = TemporaryFolder();
  std::string own = system + "zelvane-" + std::to_string(::geteuid());
  if (IsPrivate(own)) return own + '/';
  // Somebody else took the name: one that nobody can foresee.
  own = system + "zelvane-XXXXXX";
  return ::mkdtemp(own.data()) ? own + '/' : std::string();
}

std::string AbsolutePath(const std::string& path) {
  if (path.empty()) return {};
  std::error_code error;
  const fs::path whole = fs::absolute(path, error);
  return error ? path : whole.string();
}

std::string FolderOf(const std::string& path) {
  const size_t at = path.rfind('/');
  if (at == std::string::npos) return {};
  return at == 0 ? "/" : path.substr(0, at);
}

std::string NameOf(const std::string& path) {
  return path.substr(path.rfind('/') + 1);  // npos + 1 is 0
}

std::string JoinPath(const std::string& folder, const std::string& name) {
  return folder.ends_with('/') ? folder + name : folder + '/' + name;
}

std::string ExtensionOf(const std::string& path) {
  const std::string name = NameOf(path);
  const size_t at = name.rfind('.');
  return at == std::string::npos ? std::string() : ToLower(name.substr(at + 1));
}

std::string ToLower(const std::string& text) {
  return FromQt(LowerCase(ToQt(text)));
}

void SurviveFileSizeLimit() {
  ::signal(SIGXFSZ, SIG_IGN);
}

WriteResult WriteFileSafely(const std::string& path, const std::vector<unsigned char>& bytes) {
  return WriteSafely(path, [&](const auto& sink) { return sink(bytes.data(), bytes.size()); });
}

}  // namespace zelvane
