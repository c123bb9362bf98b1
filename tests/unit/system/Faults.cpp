#include "system/Faults.h"

#include <dlfcn.h>
#include <sys/types.h>

#include <cerrno>
#include <cstdarg>

// The test's own functions of these names come before the system's, whose headers would declare them
// otherwise.
extern "C" [[noreturn]] void _exit(int);

namespace zelvane::test {

thread_local Faults faults;

static bool Fails() {
  const bool now = faults.call == 1 || (faults.lasting && faults.reached);
  if (faults.call > 0) --faults.call;
  if (!now) return false;
  if (faults.error == Faults::kEnd) ::_exit(0);
  faults.reached = true;
  errno = faults.error;
  return true;
}

static bool Refuses(bool unknown) {
  if (unknown) errno = EOPNOTSUPP;
  return unknown;
}

}  // namespace zelvane::test

using zelvane::test::faults, zelvane::test::Fails, zelvane::test::Refuses;

#define FAILING(result, name, parameters, arguments)                                          \
  extern "C" result name parameters {                                                         \
    static const auto real = reinterpret_cast<result(*) parameters>(dlsym(RTLD_NEXT, #name)); \
    return Fails() ? -1 : real arguments;                                                     \
  }

FAILING(ssize_t, write, (int file, const void* bytes, size_t count), (file, bytes, count))
FAILING(ssize_t, pwrite64, (int file, const void* bytes, size_t count, off_t at), (file, bytes, count, at))
FAILING(ssize_t, pread, (int file, void* bytes, size_t count, off_t at), (file, bytes, count, at))
FAILING(int, ftruncate, (int file, off_t size), (file, size))
FAILING(int, ftruncate64, (int file, off_t size), (file, size))
FAILING(int, fallocate, (int file, int how, off_t at, off_t size), (file, how, at, size))
FAILING(int, dup, (int file), (file))
FAILING(int, fchmod, (int file, mode_t mode), (file, mode))
FAILING(int, fchown, (int file, uid_t owner, gid_t group), (file, owner, group))
FAILING(int, fsetxattr, (int file, const char* name, const void* value, size_t size, int how),
        (file, name, value, size, how))
FAILING(int, unlink, (const char* name), (name))
FAILING(int, link, (const char* from, const char* to), (from, to))
FAILING(int, rename, (const char* from, const char* to), (from, to))
FAILING(int, renameat, (int from, const char* name, int to, const char* next), (from, name, to, next))
FAILING(int, renameat2, (int from, const char* name, int to, const char* next, unsigned how),
        (from, name, to, next, how))

extern "C" int fsync(int) {  // the tests don't wait for the disk
  return Fails() ? -1 : 0;
}

extern "C" int fdatasync(int) {
  return Fails() ? -1 : 0;
}

extern "C" int linkat(int from, const char* name, int to, const char* next, int how) {
  static const auto real = reinterpret_cast<decltype(&linkat)>(dlsym(RTLD_NEXT, "linkat"));
  return Refuses(faults.plain) || Fails() ? -1 : real(from, name, to, next, how);
}

extern "C" int openat(int folder, const char* name, int how, ...) {
  constexpr int kUnnamed = 020000000;
  static const auto real = reinterpret_cast<decltype(&openat)>(dlsym(RTLD_NEXT, "openat"));
  va_list more;
  va_start(more, how);
  const auto mode = va_arg(more, mode_t);
  va_end(more);
  return Refuses(faults.plain && how & kUnnamed) || Fails() ? -1 : real(folder, name, how, mode);
}
