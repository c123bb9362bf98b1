#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "surface/system/files/Files.h"

struct stat;

namespace zelvane {

FileStamp StampOf(const struct stat& found);

/// A file being written beside the one that it will replace, piece by piece. The old file stands until
/// `Commit` has put the new one, whole and on the disk, in its place; without a commit nothing remains. The
/// draft has no name until then, so that not even a killed process leaves one; where the file system knows no
/// such files, it has a name and a lock on it, and the next save into the folder clears away what died.
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
  void CreateDraft();
  bool CreateUnnamed();
  void CreateNamed();
  void GiveName();
  void TakeOverRights();
  void StartFlushing();
  void Replace();
  void Fail(int error);
  void FlushFolder() const;

  std::string target_, folder_, draft_;
  std::string reason_;
  int file_ = -1;
  size_t written_ = 0, flushing_ = 0;
  bool replaces_ = false;
};

/// Hands out the bytes of a file one piece after the other; false where there won't be a whole file.
using PieceSource = std::function<bool(const std::function<bool(const void* bytes, size_t count)>& sink)>;

/// Writes what `source` hands out as a `SafeFile`. Memory that doesn't suffice is a failure like others.
WriteResult WriteSafely(const std::string& path, const PieceSource& source);

}  // namespace zelvane
