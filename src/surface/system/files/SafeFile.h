#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>

#include "surface/system/files/Draft.h"
#include "surface/system/files/Files.h"

namespace zelvane {

FileStamp StampOf(const struct stat& found);
/// What the number of an error means, as a phrase for a person.
std::string PhraseFor(int error);

/// A file being written beside the one that it will replace, piece by piece. The old file stands until
/// `Commit` has put the new one, whole and on the disk, in its place; without a commit nothing remains.
///
/// A file of several names, and one in a folder that takes no new ones, is written in place: what stood in it
/// is kept, whole and on the disk, beside it or in the temporary folder until the new bytes are on the disk
/// too. It's put back where they don't get there; if even that fails, the reason tells where it lies.
class SafeFile {
 public:
  explicit SafeFile(const WriteTarget& target);

  /// After a failure nothing more is written.
  void Write(const void* bytes, size_t count);
  WriteResult Commit();
  bool Failed() const { return !reason_.empty(); }

 private:
  struct Place {
    std::string path;
    Descriptor folder;
  };

  /// The regular file behind symbolic links; sets `reason_` where there is something else.
  void FindTarget(std::filesystem::path path);
  void LookAt(const std::filesystem::path& path);
  void CreateDraft();
  int OpenTemporary();
  void StartFlushing();
  void LookAgain();
  void Put();
  int KeepBeside();
  int KeepCopy(const Place& place);
  void KeepForNow();
  void DropKept();
  void WriteInPlace();
  void Overwrite(int target, off_t old_size);
  void TakeStamp(int file);
  void Check(int error);
  void Fail(int error);

  WriteTarget wanted_;
  std::string name_, reason_;
  Place own_, temporary_;  ///< the file's own folder, and one for what that doesn't take
  Draft draft_, copy_;     ///< the new file; the old one's copy
  struct stat old_ = {};
  FileStamp stamp_;
  std::string kept_;  ///< the name that the old file is kept under
  const Place* kept_in_ = &own_;
  size_t written_ = 0, flushing_ = 0;
  bool replaces_ = false, in_place_ = false, keep_ = false;
};

/// Hands out the bytes of a file one piece after the other; false where there won't be a whole file.
using PieceSource = std::function<bool(const std::function<bool(const void* bytes, size_t count)>& sink)>;

/// Writes what `source` hands out as a `SafeFile`. Memory that doesn't suffice is a failure like others.
WriteResult WriteSafely(const WriteTarget& target, const PieceSource& source);

}  // namespace zelvane
