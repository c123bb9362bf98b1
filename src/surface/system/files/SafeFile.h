#pragma once

#include <cstddef>
#include <string>

#include "surface/system/files/Files.h"

namespace zelvane {

/// A file being written beside the one that it will replace, piece by piece. The old file stands until
/// `Commit` has put the new one, whole and on the disk, in its place; without a commit nothing remains.
class SafeFile {
 public:
  explicit SafeFile(const std::string& path);
  ~SafeFile();
  SafeFile(const SafeFile&) = delete;
  SafeFile& operator=(const SafeFile&) = delete;

  /// After a failure nothing more is written.
  void Write(const void* bytes, size_t count);
  WriteResult Commit();
  bool Failed() const { return !reason_.empty(); }

 private:
  /// The regular file behind symbolic links; sets `reason_` where there is something else.
  void FindTarget(const std::string& path);
  void CreateBeside();
  void TakeOverRights();
  void StartFlushing();
  void Fail(int error);
  void FlushFolder() const;

  std::string target_, folder_, draft_;
  std::string reason_;
  int file_ = -1;
  size_t written_ = 0, flushing_ = 0;
  bool replaces_ = false;
};

}  // namespace zelvane
