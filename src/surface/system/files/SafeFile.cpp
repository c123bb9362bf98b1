#include "surface/system/files/SafeFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

#include "surface/raster/Bitmap.h"

namespace zelvane {

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
    case EBUSY:
    case ETXTBSY:
      return "the file is in use";
    case ENOMEM:
      return "there isn't enough memory";
    case EIO:
      return "the device reported an error";
    default:
      return std::strerror(error);
  }
}

namespace {

constexpr mode_t kReadWrite = 0666;  // less what the user's mask takes away
constexpr mode_t kOwnerOnly = 0600;  // until it has the old file's rights

/// The folder takes no new names, or the name stands for more than a file of this folder.
bool IsPlaceRefused(int error) {
  return error == EACCES || error == EPERM || error == EBUSY;
}

bool KnowsNoLinks(int error) {
  return error == EPERM || error == EOPNOTSUPP || error == EMLINK || error == ENOSYS;
}

/// "name~", then "name~1~", "name~2~"; the name is cut between characters where the whole would be too long.
std::string KeptName(const Descriptor& folder, const std::string& name, int number) {
  const std::string tail = number == 0 ? "~" : '~' + std::to_string(number) + '~';
  const long most = ::fpathconf(folder.Get(), _PC_NAME_MAX);
  const size_t room = static_cast<size_t>(most > 0 ? most : NAME_MAX) - tail.size();
  if (name.size() <= room) return name + tail;
  size_t end = room;
  while (end > 1 && (name[end] & 0xC0) == 0x80) --end;
  return name.substr(0, end) + tail;
}

/// Tries names to keep `name` under until `take` finds one that nothing has, and returns that one in `kept`.
template <class Take>
int TakeKeptName(const Descriptor& folder, const std::string& name, std::string& kept, const Take& take) {
  constexpr int kMost = 10000;
  int error = EEXIST;
  for (int i = 0; i < kMost && error == EEXIST; ++i) {
    const std::string next = KeptName(folder, name, i);
    error = take(next);
    if (error == 0) kept = next;
  }
  return error;
}

Descriptor OpenOld(const Descriptor& folder, const std::string& name, int access) {
  // A pipe that has taken the name would block an ordinary open.
  constexpr int kOnlyFiles = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  return Descriptor(::openat(folder.Get(), name.c_str(), access | kOnlyFiles));
}

/// Room for what is longer than the old file, before anything of that is touched.
int Reserve(int file, off_t old_size, off_t size) {
  if (size <= old_size || ::fallocate(file, FALLOC_FL_KEEP_SIZE, 0, size) == 0) return 0;
  return errno == ENOSPC || errno == EDQUOT || errno == EFBIG || errno == EIO ? errno : 0;
}

}  // namespace

FileStamp StampOf(const struct stat& found) {
  return {found.st_dev, found.st_ino, found.st_size, found.st_mtim.tv_sec, found.st_mtim.tv_nsec};
}

SafeFile::SafeFile(const WriteTarget& target) : wanted_(target) {
  FindTarget(target.path);
  if (!Failed()) CreateDraft();
}

void SafeFile::FindTarget(std::filesystem::path path) {
  constexpr int kMostLinks = 40;  // as many as the kernel follows
  struct stat found = {};
  for (int links = 0; ::lstat(path.c_str(), &found) == 0 && S_ISLNK(found.st_mode); ++links) {
    std::error_code error;
    const std::filesystem::path link = std::filesystem::read_symlink(path, error);
    if (error || links == kMostLinks) return Fail(error ? error.value() : ELOOP);
    path = path.parent_path() / link;
  }
  LookAt(path);
}

void SafeFile::LookAt(const std::filesystem::path& path) {
  name_ = path.filename().string();
  own_.path = path.has_parent_path() ? path.parent_path().string() : ".";
  own_.folder = OpenFolder(own_.path);
  if (!own_.folder.IsOpen()) return Fail(errno);
  if (name_.empty()) {
    reason_ = path.empty() ? "the file has no name" : "it is a folder";
    return;
  }
  replaces_ = ::fstatat(own_.folder.Get(), name_.c_str(), &old_, AT_SYMLINK_NOFOLLOW) == 0;
  if (!replaces_) {
    if (errno != ENOENT) Fail(errno);
  } else if (S_ISDIR(old_.st_mode)) {
    reason_ = "it is a folder";
  } else if (!S_ISREG(old_.st_mode)) {
    reason_ = "it is a device or the like, not a file";
  } else if (::faccessat(own_.folder.Get(), name_.c_str(), W_OK, AT_EACCESS) != 0) {
    Fail(errno);  // a replacement would get round the protection of the file
  }
}

void SafeFile::CreateDraft() {
  in_place_ = replaces_ && old_.st_nlink > 1;
  int error = draft_.Create(own_.folder, replaces_ ? kOwnerOnly : kReadWrite);
  if (replaces_ && IsPlaceRefused(error)) {
    in_place_ = true;
    error = OpenTemporary();
    if (error == 0) error = draft_.Create(temporary_.folder, kOwnerOnly);
  }
  if (error == 0 && replaces_ && !in_place_) {
    error = CopyRights(old_, OpenOld(own_.folder, name_, O_RDONLY).Get(), draft_.File());
  }
  Check(error);
}

int SafeFile::OpenTemporary() {
  if (temporary_.folder.IsOpen()) return 0;
  temporary_.path = OwnTemporaryFolder();
  temporary_.folder = OpenFolder(temporary_.path);
  return temporary_.folder.IsOpen() ? 0 : errno;
}

void SafeFile::Write(const void* bytes, size_t count) {
  if (Failed()) return;
  if (const int error = WriteAll(draft_.File(), bytes, count)) return Fail(error);
  written_ += count;
  StartFlushing();
}

/// The disk works while the next pieces are made, so that the flush at the end has less left to wait for.
/// Only a hint; where it fails the flush does it all.
void SafeFile::StartFlushing() {
  constexpr size_t kPiece = size_t{4} << 20;
  if (written_ - flushing_ < kPiece) return;
  ::sync_file_range(draft_.File(), static_cast<off_t>(flushing_), static_cast<off_t>(written_ - flushing_),
                    SYNC_FILE_RANGE_WRITE);
  flushing_ = written_;
}

WriteResult SafeFile::Commit() {
  struct stat made = {};
  if (!Failed()) Check(Sync(draft_.File()));
  if (!Failed() && ::fstat(draft_.File(), &made) != 0) Fail(errno);
  if (!Failed() && static_cast<uint64_t>(made.st_size) != written_) Fail(EIO);
  if (!Failed()) LookAgain();
  if (!Failed()) in_place_ ? WriteInPlace() : Put();
  return {reason_, stamp_};
}

/// Another program may have written the file since it was found.
void SafeFile::LookAgain() {
  struct stat now = {};
  if (::fstatat(own_.folder.Get(), name_.c_str(), &now, AT_SYMLINK_NOFOLLOW) != 0) {
    return errno == ENOENT ? void() : Fail(errno);
  }
  keep_ = wanted_.keep || (wanted_.known && StampOf(now) != *wanted_.known);
}

void SafeFile::Put() {
  int error = keep_ ? KeepBeside() : 0;
  if (error == 0) error = draft_.Replace(name_);
  if (error == 0) {
    TakeStamp(draft_.File());
    return Check(Sync(own_.folder.Get()));
  }
  DropKept();
  replaces_&& IsPlaceRefused(error) ? WriteInPlace() : Fail(error);
}

/// A second name, since a file that is renamed would leave its name without any for a while.
int SafeFile::KeepBeside() {
  const int folder = own_.folder.Get();
  const int error = TakeKeptName(own_.folder, name_, kept_, [&](const std::string& kept) {
    return ::linkat(folder, name_.c_str(), folder, kept.c_str(), 0) == 0 ? 0 : errno;
  });
  kept_in_ = &own_;
  return KnowsNoLinks(error) ? KeepCopy(own_) : error;
}

/// The copy has its name once it's whole and on the disk.
int SafeFile::KeepCopy(const Place& place) {
  const Descriptor old = OpenOld(own_.folder, name_, O_RDONLY);
  struct stat found = {};
  if (!old.IsOpen() || ::fstat(old.Get(), &found) != 0) return errno;
  kept_in_ = &place;
  int error = copy_.Create(place.folder, kOwnerOnly);
  if (error == 0) error = CopyContents(old.Get(), found.st_size, copy_.File());
  if (error == 0) error = CopyRights(found, old.Get(), copy_.File());
  const auto take = [this](const std::string& name) { return copy_.TakeName(name); };
  if (error == 0) error = TakeKeptName(place.folder, name_, kept_, take);
  return error == 0 ? Sync(place.folder.Get()) : error;
}

/// Beside the file or, where it's only until the new bytes are on the disk, in the temporary folder.
void SafeFile::KeepForNow() {
  int error = KeepCopy(own_);
  if (error != 0) DropKept();
  if (IsPlaceRefused(error) && keep_) {
    reason_ = "the old file holds what the new one doesn't, and can't be kept beside it";
    return;
  }
  if (IsPlaceRefused(error)) {
    error = OpenTemporary();
    if (error == 0) error = KeepCopy(temporary_);
  }
  Check(error);
}

void SafeFile::DropKept() {
  if (!kept_.empty()) ::unlinkat(kept_in_->folder.Get(), kept_.c_str(), 0);
  kept_.clear();
}

void SafeFile::WriteInPlace() {
  const Descriptor target = OpenOld(own_.folder, name_, O_RDWR);
  struct stat found = {};
  if (!target.IsOpen() || ::fstat(target.Get(), &found) != 0) return Fail(errno);
  KeepForNow();
  if (!Failed()) Overwrite(target.Get(), found.st_size);
  if (Failed() || !keep_) DropKept();
}

void SafeFile::Overwrite(int target, off_t old_size) {
  const auto size = static_cast<off_t>(written_);
  if (const int error = Reserve(target, old_size, size)) return Fail(error);
  const int error = CopyContents(draft_.File(), size, target);
  if (error == 0) return TakeStamp(target);
  Fail(error);
  if (CopyContents(copy_.File(), old_size, target) == 0) return;
  reason_ += "; what stood in the file is kept as " + JoinPath(kept_in_->path, kept_);
  kept_.clear();
}

void SafeFile::TakeStamp(int file) {
  struct stat made = {};
  if (::fstat(file, &made) == 0) stamp_ = StampOf(made);
}

void SafeFile::Check(int error) {
  if (error != 0) Fail(error);
}

void SafeFile::Fail(int error) {
  reason_ = PhraseFor(error);
}

WriteResult WriteSafely(const WriteTarget& target, const PieceSource& source) {
  try {
    SafeFile file(target);
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
