#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "surface/codecs/RangeReader.h"

/// Files, folders and where they are. Paths are UTF-8.
namespace zelvane {

/// A file (not a folder) of that name exists.
bool FileExists(const std::string& path);
/// One that this user may start.
bool IsExecutable(const std::string& path);
/// Both: false where it failed.
bool DeleteFile(const std::string& path);
bool RenameFile(const std::string& from, const std::string& to);

/// Reads pieces of a regular file, which stays open as long as the reader does; no bytes of any other.
RangeReader RangesOf(const std::string& path);
/// The first bytes of a regular file, `count` at most; none where it can't be read.
std::vector<unsigned char> FileStart(const std::string& path, size_t count);

/// The names of the files in the folder, links to files among them, that match one of `patterns` such as
/// "*.jpg;*.jpe", whatever their case; "*.*" is all. Without hidden ones, sorted by their bytes. Empty where
/// the folder can't be read.
std::vector<std::string> FilesIn(const std::string& folder, const std::string& patterns);

/// Without a separator at the end, but for the root. The folder of the running executable.
std::string ApplicationFolder();
std::string CurrentFolder();
bool ChangeFolder(const std::string& folder);
/// The user's own folder, the root where there is none.
std::string HomeFolder();
/// The user's own folder for what programs keep.
std::string UserDataFolder();
/// The system's folder for temporary files, with its separator at the end.
std::string TemporaryFolder();
/// Makes sure that the folder is this user's and nobody else may enter it; makes it where there is none.
bool MakeOwnFolder(const std::string& folder);
/// Makes a folder, and those that it lies in, with one file in it: all of it or nothing, on the disk. False
/// too where something of that name is there.
bool MakeFolderWith(const std::string& folder, const std::string& name,
                    const std::vector<unsigned char>& bytes);
/// A folder within the temporary one that is this user's alone, with its separator at the end; empty where
/// there can't be one.
std::string OwnTemporaryFolder();
/// Against the current folder; an empty path stays empty. What leads through ".." stays as it is, since a
/// link may stand before it.
std::string AbsolutePath(const std::string& path);

/// The text before the last separator (the root keeps it) and the text after it.
std::string FolderOf(const std::string& path);
std::string NameOf(const std::string& path);
/// Folder and name with one separator between them.
std::string JoinPath(const std::string& folder, const std::string& name);
/// The text after the last "." of the name, in lower case; empty without one.
std::string ExtensionOf(const std::string& path);
std::string ToLower(const std::string& text);
/// With its first letter in upper case.
std::string Capitalised(const std::string& text);

/// From now on a file that would outgrow what the process may write is a failed write, as on a full disk;
/// the system would end the program instead.
void SurviveFileSizeLimit();

/// Which file, and which state of it: what another program writes has another stamp.
struct FileStamp {
  uint64_t device = 0, inode = 0;
  int64_t size = -1;
  int64_t changed_seconds = 0, changed_nanoseconds = 0;
  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// Where to write, and what becomes of a file that stands there: it's kept beside, as its name with "~"
/// behind, where `keep` says so or where its state isn't the one `known`.
struct WriteTarget {
  WriteTarget(std::string file) : path(std::move(file)) {}
  std::string path;
  std::optional<FileStamp> known;
  bool keep = false;
};

/// How the writing of a file went. `reason` is a phrase for a person, empty where it worked.
struct WriteResult {
  std::string reason;
  FileStamp stamp = {};  ///< of what stands there now; a size of -1 where nothing was put in place
  bool Done() const { return reason.empty(); }
};

/// Puts `bytes` into the file: the one that stood there stands until the new one is whole and on the disk,
/// and stays where anything fails. Follows symbolic links; refuses anything but a regular file. What the file
/// bore besides its bytes stays: mode, owner, group, attributes, access list, all of its names.
WriteResult WriteFileSafely(const WriteTarget& target, const std::vector<unsigned char>& bytes);

}  // namespace zelvane
