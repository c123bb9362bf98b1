#include "surface/system/files/Files.h"

#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <signal.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <sstream>

#include "surface/system/files/Descriptor.h"
#include "surface/system/files/SafeFile.h"
#include "surface/system/text/QtText.h"

namespace zelvane {

namespace {

namespace fs = std::filesystem;

std::string WithoutEndSeparator(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

/// What names may look like, parted by ";". Case is ignored, and "*.*" fits all.
class NamePatterns {
 public:
  explicit NamePatterns(const std::string& patterns) {
    std::istringstream list(patterns);
    for (std::string pattern; std::getline(list, pattern, ';');) Add(pattern == "*.*" ? "*" : pattern);
  }

  bool IsEmpty() const { return endings_.empty() && patterns_.empty(); }

  /// A hidden name fits none.
  bool Match(const char* name) const {
    if (name[0] == '.') return false;
    const size_t length = std::strlen(name);
    const auto ends = [&](const std::string& ending) {
      return length >= ending.size() && ::strcasecmp(name + length - ending.size(), ending.c_str()) == 0;
    };
    const auto fits = [&](const std::string& pattern) {
      return ::fnmatch(pattern.c_str(), name, FNM_CASEFOLD | FNM_NOESCAPE) == 0;
    };
    return std::any_of(endings_.begin(), endings_.end(), ends) ||
           std::any_of(patterns_.begin(), patterns_.end(), fits);
  }

 private:
  void Add(const std::string& pattern) {
    if (pattern.empty()) return;
    const auto is_plain = [](unsigned char byte) {
      return std::isalnum(byte) != 0 || byte == '.' || byte == '_' || byte == '-';
    };
    const bool is_ending = pattern[0] == '*' && std::all_of(pattern.begin() + 1, pattern.end(), is_plain);
    is_ending ? endings_.push_back(pattern.substr(1)) : patterns_.push_back(pattern);
  }

  /// A list of all kinds of pictures is matched many thousand times.
  std::vector<std::string> endings_, patterns_;
};

/// A regular file or a link to one. Most file systems tell with the name.
bool IsFile(int folder, const dirent& entry) {
  if (entry.d_type == DT_REG) return true;
  if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return false;
  struct stat found = {};
  return ::fstatat(folder, entry.d_name, &found, 0) == 0 && S_ISREG(found.st_mode);
}

}  // namespace

bool FileExists(const std::string& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  return fs::exists(status) && !fs::is_directory(status);
}

bool IsExecutable(const std::string& path) {
  return FileExists(path) && ::access(path.c_str(), X_OK) == 0;
}

bool DeleteFile(const std::string& path) {
  return ::unlink(path.c_str()) == 0;
}

bool RenameFile(const std::string& from, const std::string& to) {
  return ::rename(from.c_str(), to.c_str()) == 0;
}

RangeReader RangesOf(const std::string& path) {
  // A pipe without a writer would block an ordinary open.
  const auto file =
      std::make_shared<Descriptor>(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  struct stat found = {};
  const bool is_file = file->IsOpen() && ::fstat(file->Get(), &found) == 0 && S_ISREG(found.st_mode);
  const uint64_t size = is_file ? static_cast<uint64_t>(found.st_size) : 0;
  return [file, size](uint64_t at, size_t count) {
    std::vector<unsigned char> bytes(at < size ? std::min<uint64_t>(count, size - at) : 0);
    const ssize_t got = ::pread(file->Get(), bytes.data(), bytes.size(), static_cast<off_t>(at));
    bytes.resize(got > 0 ? static_cast<size_t>(got) : 0);
    return bytes;
  };
}

std::vector<unsigned char> FileStart(const std::string& path, size_t count) {
  return RangesOf(path)(0, count);
}

std::vector<std::string> FilesIn(const std::string& folder, const std::string& patterns) {
  std::vector<std::string> names;
  const NamePatterns wanted(patterns);
  DIR* const entries = wanted.IsEmpty() ? nullptr : ::opendir(folder.c_str());
  if (!entries) return names;
  while (const dirent* entry = ::readdir(entries)) {
    if (wanted.Match(entry->d_name) && IsFile(::dirfd(entries), *entry)) names.emplace_back(entry->d_name);
  }
  ::closedir(entries);
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

std::string UserDataFolder() {
  const char* named = std::getenv("XDG_DATA_HOME");
  return named && named[0] == '/' ? WithoutEndSeparator(named) : JoinPath(HomeFolder(), ".local/share");
}

std::string TemporaryFolder() {
  std::error_code error;
  const std::string folder = fs::temp_directory_path(error).string();
  const std::string bare = WithoutEndSeparator(error ? "/tmp" : folder);
  return bare == "/" ? bare : bare + '/';
}

bool MakeOwnFolder(const std::string& folder) {
  constexpr mode_t kOwnerOnly = 0700, kOthers = 0077;
  // A separator behind the name would follow a link.
  const std::string bare = WithoutEndSeparator(folder);
  ::mkdir(bare.c_str(), kOwnerOnly);
  const Descriptor file(::open(bare.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  struct stat found = {};
  const bool ours = file.IsOpen() && ::fstat(file.Get(), &found) == 0 && found.st_uid == ::geteuid();
  return ours && ((found.st_mode & kOthers) == 0 || ::fchmod(file.Get(), kOwnerOnly) == 0);
}

bool MakeFolderWith(const std::string& folder, const std::string& name,
                    const std::vector<unsigned char>& bytes) {
  std::error_code error;
  if (fs::exists(fs::symlink_status(folder, error))) return false;
  const std::string parent = FolderOf(folder);
  fs::create_directories(parent, error);
  std::string draft = folder + "-XXXXXX";
  if (!::mkdtemp(draft.data())) return false;
  const std::string file = JoinPath(draft, name);
  if (WriteFileSafely(file, bytes).Done() && RenameFile(draft, folder)) {
    Sync(OpenFolder(parent).Get());
    return true;
  }
  DeleteFile(file);
  ::rmdir(draft.c_str());
  return false;
}

std::string OwnTemporaryFolder() {
  const std::string system = TemporaryFolder();
  std::string own = system + "zelvane-" + std::to_string(::geteuid());
  if (MakeOwnFolder(own)) return own + '/';
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

std::string Capitalised(const std::string& text) {
  QString capitalised = ToQt(text);
  if (!capitalised.isEmpty()) capitalised[0] = capitalised[0].toUpper();
  return FromQt(capitalised);
}

void SurviveFileSizeLimit() {
  ::signal(SIGXFSZ, SIG_IGN);
}

WriteResult WriteFileSafely(const WriteTarget& target, const std::vector<unsigned char>& bytes) {
  return WriteSafely(target, [&](const auto& sink) { return sink(bytes.data(), bytes.size()); });
}

}  // namespace zelvane
