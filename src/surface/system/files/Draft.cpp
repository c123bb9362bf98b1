#include "surface/system/files/Draft.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <random>
#include <string_view>

namespace zelvane {

namespace {

constexpr std::string_view kDraftStart = ".zelvane-";
constexpr std::string_view kDigits = "0123456789abcdefghijklmnopqrstuv";
constexpr size_t kDraftDigits = 12;
constexpr int kTries = 100;

/// Hidden, short whatever the target's name, and not one that another process takes.
std::string DraftName() {
  std::random_device random;
  std::string name(kDraftStart);
  for (size_t i = 0; i < kDraftDigits; ++i) name += kDigits[random() % kDigits.size()];
  return name;
}

bool IsDraft(std::string_view name) {
  return name.size() == kDraftStart.size() + kDraftDigits && name.starts_with(kDraftStart) &&
         name.find_first_not_of(kDigits, kDraftStart.size()) == std::string_view::npos;
}

/// A draft is locked as long as somebody writes it. False only where somebody else holds the lock.
bool Lock(const Descriptor& file) {
  return ::flock(file.Get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

/// Removes the draft where it's this user's and nobody holds its lock any more.
void Sweep(int folder, const char* name) {
  const Descriptor file(::openat(folder, name, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  struct stat found = {};
  const bool ours = file.IsOpen() && ::fstat(file.Get(), &found) == 0 && S_ISREG(found.st_mode) &&
                    found.st_uid == ::geteuid();
  if (ours && ::flock(file.Get(), LOCK_EX | LOCK_NB) == 0) ::unlinkat(folder, name, 0);
}

void SweepDrafts(const Descriptor& folder) {
  Descriptor list(::openat(folder.Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  DIR* entries = ::fdopendir(list.Get());
  if (!entries) return;
  list.Release();
  while (const dirent* entry = ::readdir(entries)) {
    if (IsDraft(entry->d_name)) Sweep(folder.Get(), entry->d_name);
  }
  ::closedir(entries);
}

}  // namespace

Draft::~Draft() {
  Discard();
}

void Draft::Discard() {
  if (!name_.empty()) ::unlinkat(folder_->Get(), name_.c_str(), 0);
  name_.clear();
}

int Draft::Create(const Descriptor& folder, mode_t mode) {
  Discard();
  folder_ = &folder;
  SweepDrafts(folder);
  return CreateUnnamed(mode) ? 0 : CreateNamed(mode);
}

/// False where the file system knows no files without a name, or the name couldn't be given later.
bool Draft::CreateUnnamed(mode_t mode) {
  Descriptor file(::openat(folder_->Get(), ".", O_TMPFILE | O_RDWR | O_CLOEXEC, mode));
  if (!file.IsOpen() || ::access(PathOf(file).c_str(), F_OK) != 0) return false;
  file_ = std::move(file);
  return Lock(file_);
}

int Draft::CreateNamed(mode_t mode) {
  int error = EEXIST;
  for (int i = 0; i < kTries && error == EEXIST; ++i) {
    const std::string name = DraftName();
    Descriptor file(::openat(folder_->Get(), name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    error = file.IsOpen() ? 0 : errno;
    if (!file.IsOpen()) continue;
    // Until it's locked, another process may take it for a dead one and sweep it.
    struct stat made = {};
    if (Lock(file) && ::fstat(file.Get(), &made) == 0 && made.st_nlink > 0) {
      file_ = std::move(file);
      name_ = name;
    } else {
      error = EEXIST;
    }
  }
  return error;
}

int Draft::LinkAs(const std::string& name) const {
  const std::string unnamed = PathOf(file_);
  const int flags = AT_SYMLINK_FOLLOW;
  return ::linkat(AT_FDCWD, unnamed.c_str(), folder_->Get(), name.c_str(), flags) == 0 ? 0 : errno;
}

/// A name can't be given over an existing one, so the draft gets one of its own before it replaces a file.
int Draft::TakeDraftName() {
  int error = EEXIST;
  for (int i = 0; i < kTries && error == EEXIST; ++i) {
    const std::string name = DraftName();
    error = LinkAs(name);
    if (error == 0) name_ = name;
  }
  return error;
}

int Draft::TakeName(const std::string& name) {
  if (name_.empty()) return LinkAs(name);
  const int folder = folder_->Get();
  if (::renameat2(folder, name_.c_str(), folder, name.c_str(), RENAME_NOREPLACE) != 0) {
    if (errno != EINVAL && errno != ENOSYS) return errno;
    if (::faccessat(folder, name.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0) return EEXIST;
    if (::renameat(folder, name_.c_str(), folder, name.c_str()) != 0) return errno;
  }
  name_.clear();
  return 0;
}

int Draft::Replace(const std::string& name) {
  int error = name_.empty() ? TakeDraftName() : 0;
  if (error == 0) error = FinishWriting();
  const int folder = folder_->Get();
  if (error == 0 && ::renameat(folder, name_.c_str(), folder, name.c_str()) != 0) error = errno;
  if (error == 0) name_.clear();
  return error;
}

/// Closing tells what went wrong late. The second handle keeps the draft locked until it has its place.
int Draft::FinishWriting() {
  Descriptor lock(::dup(file_.Get()));
  if (!lock.IsOpen()) return errno;
  const int error = file_.Close();
  file_ = std::move(lock);
  return error;
}

}  // namespace zelvane
