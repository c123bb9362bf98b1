#pragma once

/// What goes wrong with the system calls of a save, on the thread that sets it, whichever code makes them.
namespace zelvane::test {

struct Faults {
  int call = 0;          ///< which one fails, from 1
  int error = 0;         ///< how; `kEnd`: the process ends there, as if killed
  bool lasting = false;  ///< all behind it fail too
  bool plain = false;    ///< the file system knows no files without a name, and one name a file
  bool reached = false;  ///< there was such a call
  static constexpr int kEnd = -1;
};
extern thread_local Faults faults;

}  // namespace zelvane::test
