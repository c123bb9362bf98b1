#include "surface/system/files/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <vector>

namespace zelvane {

namespace {

constexpr char kAccessList[] = "system.posix_acl_access";

/// What the system or the file system doesn't let this user do. A picture isn't given up for it.
bool IsRefusal(int error) {
  return error == EPERM || error == EACCES || error == EOPNOTSUPP || error == ENOSYS || error == EINVAL;
}

/// What vouches for the old bytes, or lets a program do more, isn't carried over to the new ones.
bool IsCarriedOver(std::string_view attribute) {
  return !attribute.starts_with("security.") || attribute == "security.selinux";
}

std::vector<std::string> AttributesOf(int file) {
  const ssize_t size = ::flistxattr(file, nullptr, 0);
  std::string list(size > 0 ? static_cast<size_t>(size) : 0, '\0');
  const ssize_t got = ::flistxattr(file, list.data(), list.size());
  std::vector<std::string> names;
  for (size_t at = 0; got > 0 && at < static_cast<size_t>(got); at += names.back().size() + 1) {
    names.emplace_back(list.c_str() + at);
  }
  return names;
}

int CopyAttribute(const char* name, int from, int to) {
  const ssize_t size = ::fgetxattr(from, name, nullptr, 0);
  std::string value(size > 0 ? static_cast<size_t>(size) : 0, '\0');
  const ssize_t got = size < 0 ? size : ::fgetxattr(from, name, value.data(), value.size());
  if (got < 0) return errno == ENODATA || IsRefusal(errno) ? 0 : errno;
  if (::fsetxattr(to, name, value.data(), static_cast<size_t>(got), 0) == 0) return 0;
  return IsRefusal(errno) ? 0 : errno;
}

int CopyAttributes(int from, int to) {
  ::fremovexattr(to, kAccessList);  // one that the folder gave
  for (const std::string& name : AttributesOf(from)) {
    if (!IsCarriedOver(name)) continue;
    if (const int error = CopyAttribute(name.c_str(), from, to)) return error;
  }
  return 0;
}

}  // namespace

Descriptor::~Descriptor() {
  Close();
}

int Descriptor::Close() {
  const int number = Release();
  return number < 0 || ::close(number) == 0 ? 0 : errno;
}

std::string PathOf(const Descriptor& file) {
  return "/proc/self/fd/" + std::to_string(file.Get());
}

Descriptor OpenFolder(const std::string& path) {
  Descriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.IsOpen() || errno != EACCES) return folder;
  return Descriptor(::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));  // may be entered all the same
}

int WriteAll(int file, const void* bytes, size_t count) {
  const auto* at = static_cast<const unsigned char*>(bytes);
  while (count > 0) {
    const ssize_t done = ::write(file, at, count);
    if (done < 0 && errno == EINTR) continue;
    if (done <= 0) return done == 0 ? ENOSPC : errno;
    at += done;
    count -= static_cast<size_t>(done);
  }
  return 0;
}

int Sync(int file) {
  while (::fsync(file) != 0) {
    if (errno == EINTR) continue;
    return errno == EINVAL || errno == EOPNOTSUPP || errno == EBADF ? 0 : errno;
  }
  return 0;
}

int CopyContents(int from, off_t size, int to) {
  if (::ftruncate(to, size) != 0 || ::lseek(to, 0, SEEK_SET) != 0) return errno;
  std::array<unsigned char, size_t{1} << 16> piece{};
  for (off_t at = 0; at < size;) {
    const size_t wanted = std::min(piece.size(), static_cast<size_t>(size - at));
    const ssize_t got = ::pread(from, piece.data(), wanted, at);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return got == 0 ? EIO : errno;
    if (const int error = WriteAll(to, piece.data(), static_cast<size_t>(got))) return error;
    at += got;
  }
  return Sync(to);
}

int CopyRights(const struct stat& old, int from, int to) {
  constexpr uid_t kSameOwner = static_cast<uid_t>(-1);
  constexpr mode_t kAll = 07777, kRights = 0777, kGroup = 070;
  const bool owned = ::fchown(to, old.st_uid, old.st_gid) == 0;
  if (!owned && !IsRefusal(errno)) return errno;
  const bool grouped = owned || ::fchown(to, kSameOwner, old.st_gid) == 0;
  if (!grouped && !IsRefusal(errno)) return errno;
  if (const int error = CopyAttributes(from, to)) return error;
  mode_t mode = old.st_mode & (owned ? kAll : kRights);
  if (!grouped) mode &= ~kGroup | mode << 3;  // another group's members are strangers
  return ::fchmod(to, mode) == 0 || IsRefusal(errno) ? 0 : errno;
}

}  // namespace zelvane
