#include "surface/system/files/SafeFile.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <new>
#include <random>
#include <string_view>

#include "surface/raster/Bitmap.h"

namespace zelvane {

namespace {

std::string PhraseFor(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return "the folder doesn't exist";
    case EACCES:
    case EPERM:
      return "permission denied";
    case EROFS:
      return "the disk is read-only";
    case ENOSPC:
    case EDQUOT:
      return "no space left on the device";
    case EFBIG:
      return "the file would be too large";
    case ENAMETOOLONG:
      return "the name is too long";
    case ELOOP:
      return "the link leads back to itself";
    case ENOMEM:
      return "there isn't enough memory";
    case EIO:
      return "the device reported an error";
    default:
      return std::strerror(error);
  }
}

constexpr std::string_view kDraftStart = ".zelvane-";
constexpr std::string_view kDigits = "0123456789abcdefghijklmnopqrstuv";
constexpr size_t kDraftDigits = 12;
constexpr int kTries = 100;
constexpr mode_t kReadWrite = 0666;  // less what the user's mask takes away

/// Hidden, short whatever the target's name, and not one that another process takes.
std::string DraftIn(const std::string& folder) {
  std::random_device random;
  std::string name(kDraftStart);
  for (size_t i = 0; i < kDraftDigits; ++i) name += kDigits[random() % kDigits.size()];
  return (std::filesystem::path(folder) / name).string();
}

bool IsDraft(std::string_view name) {
  return name.size() == kDraftStart.size() + kDraftDigits && name.starts_with(kDraftStart) &&
         name.find_first_not_of(kDigits, kDraftStart.size()) == std::string_view::npos;
}

/// A draft is locked as long as somebody writes it. False only where somebody else holds the lock.
bool LockDraft(int file) {
  return ::flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

/// Removes the draft where it's this user's and nobody holds its lock any more.
void SweepDraft(int folder, const char* name) {
  const int file = ::openat(folder, name, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (file < 0) return;
  struct stat found = {};
  const bool ours = ::fstat(file, &found) == 0 && S_ISREG(found.st_mode) && found.st_uid == ::geteuid();
  if (ours && ::flock(file, LOCK_EX | LOCK_NB) == 0) ::unlinkat(folder, name, 0);
  ::close(file);
}

void SweepDrafts(const std::string& path) {
  DIR* folder = ::opendir(path.c_str());
  if (!folder) return;
  while (const dirent* entry = ::readdir(folder)) {
    if (IsDraft(entry->d_name)) SweepDraft(::dirfd(folder), entry->d_name);
  }
  ::closedir(folder);
}

std::string DescriptorPath(int file) {
  return "/proc/self/fd/" + std::to_string(file);
}

}  // namespace

FileStamp StampOf(const struct stat& found) {
  return {found.st_dev, found.st_ino, found.st_size, found.st_mtim.tv_sec, found.st_mtim.tv_nsec};
}

SafeFile::SafeFile(const std::string& path) {
  FindTarget(path);
  if (!Failed()) CreateDraft();
  if (!Failed() && replaces_) TakeOverRights();
}

SafeFile::~SafeFile() {
  if (file_ >= 0) ::close(file_);
  if (!draft_.empty()) ::unlink(draft_.c_str());
}

void SafeFile::FindTarget(const std::string& path) {
  constexpr int kMostLinks = 40;  // as many as the kernel follows
  std::filesystem::path target = path;
  struct stat found = {};
  for (int links = 0; ::lstat(target.c_str(), &found) == 0 && S_ISLNK(found.st_mode); ++links) {
    std::error_code error;
    const std::filesystem::path link = std::filesystem::read_symlink(target, error);
    if (error || links == kMostLinks) return Fail(error ? error.value() : ELOOP);
    target = target.parent_path() / link;
  }
  target_ = target.string();
  folder_ = target.has_parent_path() ? target.parent_path().string() : ".";
  if (::lstat(target.c_str(), &found) != 0) {
    if (errno != ENOENT) return Fail(errno);
    if (!target.has_filename()) reason_ = "the file has no name";
    return;
  }
  replaces_ = true;
  if (S_ISDIR(found.st_mode)) {
    reason_ = "it is a folder";
  } else if (!S_ISREG(found.st_mode)) {
    reason_ = "it is a device or the like, not a file";
  } else if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) {
    Fail(errno);  // a replacement would get round the protection of the file
  }
}

void SafeFile::CreateDraft() {
  SweepDrafts(folder_);
  if (!CreateUnnamed()) CreateNamed();
}

/// False where the file system knows no files without a name, or the name couldn't be given later.
bool SafeFile::CreateUnnamed() {
  file_ = ::open(folder_.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, kReadWrite);
  if (file_ < 0) return false;
  if (::access(DescriptorPath(file_).c_str(), F_OK) == 0) return LockDraft(file_);
  ::close(file_);
  file_ = -1;
  return false;
}

void SafeFile::CreateNamed() {
  int error = EEXIST;
  for (int i = 0; i < kTries && error == EEXIST; ++i) {
    const std::string draft = DraftIn(folder_);
    file_ = ::open(draft.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kReadWrite);
    error = file_ >= 0 ? 0 : errno;
    if (file_ < 0) continue;
    // Until it's locked, another process may take it for a dead one and sweep it.
    struct stat made = {};
    if (LockDraft(file_) && ::fstat(file_, &made) == 0 && made.st_nlink > 0) {
      draft_ = draft;
      return;
    }
    ::close(file_);
    file_ = -1;
    error = EEXIST;
  }
  Fail(error);
}

/// A name can't be given over an existing one, so the draft gets one of its own before it replaces the file.
void SafeFile::GiveName() {
  const std::string unnamed = DescriptorPath(file_);
  int error = EEXIST;
  for (int i = 0; i < kTries && error == EEXIST; ++i) {
    const std::string draft = DraftIn(folder_);
    error = ::linkat(AT_FDCWD, unnamed.c_str(), AT_FDCWD, draft.c_str(), AT_SYMLINK_FOLLOW) == 0 ? 0 : errno;
    if (error == 0) draft_ = draft;
  }
  if (error != 0) Fail(error);
}

void SafeFile::TakeOverRights() {
  struct stat old = {};
  if (::stat(target_.c_str(), &old) != 0) return Fail(errno);
  // Only the superuser gives files away; for others the new file is theirs, which is no reason to lose a
  // picture.
  const bool same_owner = ::fchown(file_, old.st_uid, old.st_gid) == 0;
  constexpr mode_t kRights = 0777, kAllBits = 07777;
  if (::fchmod(file_, old.st_mode & (same_owner ? kAllBits : kRights)) != 0) Fail(errno);
}

void SafeFile::Write(const void* bytes, size_t count) {
  const auto* at = static_cast<const unsigned char*>(bytes);
  while (count > 0 && !Failed()) {
    const ssize_t done = ::write(file_, at, count);
    if (done < 0 && errno == EINTR) continue;
    if (done <= 0) return Fail(done == 0 ? ENOSPC : errno);
    at += done;
    count -= static_cast<size_t>(done);
    written_ += static_cast<size_t>(done);
  }
  StartFlushing();
}

/// The disk works while the next pieces are made, so that the flush at the end has less left to wait for.
/// Only a hint; where it fails the flush does it all.
void SafeFile::StartFlushing() {
  constexpr size_t kPiece = size_t{4} << 20;
  if (Failed() || written_ - flushing_ < kPiece) return;
  ::sync_file_range(file_, static_cast<off_t>(flushing_), static_cast<off_t>(written_ - flushing_),
                    SYNC_FILE_RANGE_WRITE);
  flushing_ = written_;
}

WriteResult SafeFile::Commit() {
  struct stat made = {};
  if (!Failed() && ::fsync(file_) != 0) Fail(errno);
  if (!Failed() && ::fstat(file_, &made) != 0) Fail(errno);
  if (!Failed() && static_cast<uint64_t>(made.st_size) != written_) Fail(EIO);
  if (!Failed() && draft_.empty()) GiveName();
  if (!Failed()) Replace();
  if (Failed()) return {reason_};
  FlushFolder();
  return {};
}

/// Closing tells what went wrong late. The second handle keeps the draft locked until it has its place.
void SafeFile::Replace() {
  const int lock = ::dup(file_);
  if (::close(file_) != 0) Fail(errno);
  file_ = lock;
  if (!Failed() && ::rename(draft_.c_str(), target_.c_str()) != 0) Fail(errno);
  if (!Failed()) draft_.clear();
}

/// The new name to the disk too. The file is in its place by now, so a failure changes nothing: the old or
/// the new one will be found, each whole.
void SafeFile::FlushFolder() const {
  const int folder = ::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return;
  ::fsync(folder);
  ::close(folder);
}

void SafeFile::Fail(int error) {
  reason_ = PhraseFor(error);
}

WriteResult WriteSafely(const std::string& path, const PieceSource& source) {
  try {
    SafeFile file(path);
    const bool whole = file.Failed() || source([&](const void* bytes, size_t count) {
                         file.Write(bytes, count);
                         return !file.Failed();
                       });
    if (!whole && !file.Failed()) return {"the picture doesn't fit into this kind of file"};
    return file.Commit();
  } catch (const std::bad_alloc&) {
    return {PhraseFor(ENOMEM)};
  } catch (const SurfaceTooLarge&) {
    return {PhraseFor(ENOMEM)};
  }
}

}  // namespace zelvane
