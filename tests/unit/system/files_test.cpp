#include "surface/system/files/Files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <new>
#include <ranges>
#include <sstream>
#include <utility>

#include "codecs/PictureSamples.h"
#include "surface/system/files/SafeFile.h"
#include "system/Faults.h"

namespace zelvane::test {
namespace {

namespace fs = std::filesystem;

std::string TextOf(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}
/// Hidden ones too.
std::vector<std::string> NamesIn(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}
/// The reason that the file couldn't be written for.
std::string Fault(const std::string& path, const Bytes& bytes = {'n', 'e', 'w'}) {
  return WriteFileSafely(path, bytes).reason;
}

TEST(Paths, FolderNameAndExtension) {
  constexpr const char* kCases[][4] = {
      {"/a/b.PNG", "/a", "b.PNG", "png"}, {"/b", "/", "b", ""},  {"b.c.d", "", "b.c.d", "d"},
      {"/a.b/c", "/a.b", "c", ""},        {"/a/", "/a", "", ""}, {"x.", "", "x.", ""},
      {"/ä/Ü.ÄÖ", "/ä", "Ü.ÄÖ", "äö"}};
  for (const auto& [path, folder, name, extension] : kCases) {
    EXPECT_EQ(FolderOf(path), folder) << path;
    EXPECT_EQ(NameOf(path), name) << path;
    EXPECT_EQ(ExtensionOf(path), extension) << path;
  }
}

TEST(Paths, StayThoseOfTheFileMeant) {
  const Folder folder;
  fs::create_directories(folder.Path("deep/inner"));
  fs::create_symlink("deep/inner", folder.Path("link"));
  folder.Put("deep/file", "meant");
  EXPECT_EQ(TextOf(AbsolutePath(folder.Path("link/../file"))), "meant");
  EXPECT_EQ(AbsolutePath(""), "");
  const std::string before = CurrentFolder();
  ASSERT_TRUE(ChangeFolder(folder.Path("deep")));
  EXPECT_EQ(TextOf(AbsolutePath("file")), "meant");
  EXPECT_EQ(AbsolutePath("file"), CurrentFolder() + "/file");
  EXPECT_TRUE(ChangeFolder(before));
  EXPECT_FALSE(ChangeFolder(folder.Path("missing")));
}

TEST(Folders, TellFilesFromFolders) {
  const Folder folder;
  for (const char* name : {"b.exe", "A.EXE", "c.txt"}) folder.Put(name, "");
  fs::create_directory(folder.Path("d.exe"));
  EXPECT_EQ(FilesIn(folder.Path("."), "*.exe"), (std::vector<std::string>{"A.EXE", "b.exe"}));
  EXPECT_TRUE(FilesIn(folder.Path("missing"), "*").empty());
  EXPECT_FALSE(FileExists(folder.Path("d.exe")));
  EXPECT_FALSE(DeleteFile(folder.Path("d.exe")));
  EXPECT_TRUE(RenameFile(folder.Path("c.txt"), folder.Path("e.txt")));
  EXPECT_TRUE(DeleteFile(folder.Path("e.txt")));
  EXPECT_FALSE(FileExists(folder.Path("e.txt")));
}

TEST(Folders, TheTemporaryOneIsThisUsersAlone) {
  const Folder folder;
  const std::string before = qEnvironmentVariable("TMPDIR").toStdString();
  qputenv("TMPDIR", QByteArray::fromStdString(folder.Path(".")));
  const auto is_private = [](const std::string& path) {
    const fs::file_status status = fs::symlink_status(path.substr(0, path.size() - 1));
    return fs::is_directory(status) && status.permissions() == fs::perms{0700} && path.back() == '/';
  };
  const std::string own = OwnTemporaryFolder(), bare = own.substr(0, own.size() - 1);
  EXPECT_TRUE(is_private(own)) << own;
  fs::permissions(bare, fs::perms{0777});
  EXPECT_EQ(OwnTemporaryFolder(), own);
  EXPECT_TRUE(is_private(own));
  // Somebody has put a link there.
  fs::create_directory(folder.Path("elsewhere"));
  fs::remove(bare);
  fs::create_symlink("elsewhere", bare);
  EXPECT_NE(OwnTemporaryFolder(), own);
  EXPECT_TRUE(is_private(OwnTemporaryFolder()));
  before.empty() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", QByteArray::fromStdString(before));
}

TEST(WriteFileSafely, KeepsLinksAndWhatTheFileBears) {
  const Folder folder;
  const std::string path = folder.Put("file", "old"), link = folder.Path("link");
  fs::create_symlink("file", folder.Path("inner link")), fs::create_symlink("inner link", link);
  constexpr uid_t kOwner = 1234;
  ::chown(path.c_str(), kOwner, kOwner);  // the superuser may
  fs::permissions(path, fs::perms{0751});
  // Read by the owner, by one more user, and nobody else: version, then what for whom with which rights.
  const Bytes list =
      Numbers({2}, 4) + Numbers({1,      6,      0xFFFF, 0xFFFF, 2,      4,      4321, 0, 4,      0,
                                 0xFFFF, 0xFFFF, 16,     4,      0xFFFF, 0xFFFF, 32,   0, 0xFFFF, 0xFFFF},
                                2);
  const bool listed = ::setxattr(path.c_str(), "system.posix_acl_access", list.data(), list.size(), 0) == 0;
  const bool noted = ::setxattr(path.c_str(), "user.note", "x", 1, 0) == 0;
  struct stat before = {}, after = {};
  ::stat(path.c_str(), &before);
  EXPECT_EQ(Fault(link), "");
  ::stat(path.c_str(), &after);
  EXPECT_EQ(TextOf(path), "new");
  EXPECT_EQ(after.st_mode, before.st_mode);
  EXPECT_EQ(after.st_uid + after.st_gid, before.st_uid + before.st_gid);
  Bytes got(list.size());
  EXPECT_EQ(::getxattr(path.c_str(), "user.note", got.data(), 1) == 1, noted);
  EXPECT_EQ(::getxattr(path.c_str(), "system.posix_acl_access", got.data(), got.size()) > 0, listed);
  EXPECT_EQ(got == list, listed);
  fs::create_symlink("later", folder.Path("dangling"));
  EXPECT_EQ(Fault(folder.Path("dangling"), {}), "");
  EXPECT_EQ(fs::file_size(folder.Path("later")), 0u);
  EXPECT_EQ(NamesIn(folder.Path(".")),
            (std::vector<std::string>{"dangling", "file", "inner link", "later", "link"}));
}

TEST(WriteFileSafely, KeepsUnderANameThatNothingHas) {
  std::string longest = "x";
  while (longest.size() < 255) longest += "ä";
  const std::array<std::string, 3> cases[] = {
      {"\xFF\xFE", "\xFF\xFE~", "\xFF\xFE~1~"},
      {longest, longest.substr(0, 253) + "~", longest.substr(0, 251) + "~1~"}};
  for (const auto& names : cases) {
    const Folder folder;
    WriteTarget target(folder.Path(".") + '/' + names[0]);
    for (const unsigned char byte : {'1', '2', '3'}) {
      EXPECT_EQ(WriteFileSafely(target, {byte}).reason, "");
      target.keep = true;
    }
    std::string texts;
    for (const std::string& name : names) {
      texts += TextOf(folder.Path(".") + '/' + name);
      fs::remove(folder.Path(".") + '/' + name);
    }
    EXPECT_EQ(texts, "312");
    EXPECT_TRUE(NamesIn(folder.Path(".")).empty());
  }
}

TEST(WriteFileSafely, KeepsAFileInAnotherStateThanTheOneKnown) {
  const Folder folder;
  WriteTarget target(folder.Path("file"));
  for (int i = 0; i < 3; ++i) target.known = WriteFileSafely(target, {'a'}).stamp;
  EXPECT_EQ(NamesIn(folder.Path(".")).size(), 1u);
  folder.Put("file", "another program's");
  target.known = WriteFileSafely(target, {'b'}).stamp;
  EXPECT_EQ(TextOf(folder.Path("file~")), "another program's");
  EXPECT_EQ(WriteFileSafely(target, {'c'}).reason, "");
  EXPECT_EQ(NamesIn(folder.Path(".")).size(), 2u);
}

TEST(WriteFileSafely, RefusesWhatIsNoFileOrHasNoPlace) {
  const Folder folder;
  fs::create_directory(folder.Path("inner"));
  ASSERT_EQ(::mkfifo(folder.Path("pipe").c_str(), 0600), 0);
  fs::create_symlink("circle", folder.Path("circle"));
  constexpr const char* kCases[][2] = {{"inner", "it is a folder"},
                                       {"inner/", "it is a folder"},
                                       {"pipe", "it is a device or the like, not a file"},
                                       {"gone/file", "the folder doesn't exist"},
                                       {"circle", "the link leads back to itself"}};
  for (const auto& [name, fault] : kCases) EXPECT_EQ(Fault(folder.Path(name)), fault) << name;
  EXPECT_EQ(Fault(folder.Path(std::string(300, 'x'))), "the name is too long");
  EXPECT_NE(Fault(""), "");
}

/// A file to be saved over, how, and on what kind of disk.
struct Case {
  const char* what;
  bool old, second_name, closed_folder, keep, plain;
};
constexpr Case kCases[] = {{"new", false, false, false, false, false},
                           {"replaced", true, false, false, false, false},
                           {"kept", true, false, false, true, false},
                           {"of two names", true, true, false, false, false},
                           {"of two names, kept", true, true, false, true, false},
                           {"in a closed folder", true, false, true, false, false},
                           {"in a closed folder, kept", true, false, true, true, false},
                           {"kept on a plain disk", true, false, false, true, true},
                           {"in a closed folder on a plain disk", true, false, true, false, true}};

/// Somebody whom rights keep out, in a temporary folder of his own.
class Disk {
 public:
  explicit Disk(const Case& how) : how_(how) {
    fs::create_directory(Path("in")), fs::create_directory(Path("tmp"));
    qputenv("TMPDIR", QByteArray::fromStdString(Path("tmp")));
    if (how.old) folder_.Put("in/file", kOld), ::setxattr(file.c_str(), "user.note", "x", 1, 0);
    if (how.second_name) fs::create_hard_link(file, Path("in/second"));
    for (const char* name : {".", "in", "tmp", "in/file"}) ::chown(Path(name).c_str(), kNobody, kNobody);
    if (how.closed_folder) fs::permissions(Path("in"), fs::perms{0555});
    ::seteuid(kNobody);
  }
  ~Disk() {
    ::seteuid(::getuid());
    fs::permissions(Path("in"), fs::perms{0755});
    qunsetenv("TMPDIR");
  }
  WriteResult Save(const Faults& planned = {}) {
    WriteTarget target(file);
    target.keep = how_.keep;
    faults = planned, faults.plain = how_.plain;
    const WriteResult result = WriteFileSafely(target, Bytes(kNew.begin(), kNew.end()));
    reached = std::exchange(faults, {}).reached;
    return result;
  }
  std::string Path(const std::string& name) const { return folder_.Path(name); }
  /// What lies beside the file, and in the temporary folder.
  std::vector<std::string> Leftovers() const {
    std::vector<std::string> paths;
    for (const char* folder : {"in", "tmp"})
      for (const auto& entry : fs::recursive_directory_iterator(Path(folder)))
        if (entry.is_regular_file() && entry.path().filename() != "file" &&
            entry.path().filename() != "second")
          paths.push_back(entry.path());
    return paths;
  }

  static constexpr uid_t kNobody = 65534;
  inline static const std::string kOld = std::string(70000, 'o'), kNew = std::string(80000, 'n');
  bool reached = false;

 private:
  Folder folder_;
  const Case& how_;

 public:
  const std::string file = Path("in/file");
};

bool IsKept(const std::vector<std::string>& paths) {
  return std::ranges::any_of(
      paths, [](const auto& path) { return path.ends_with('~') && TextOf(path) == Disk::kOld; });
}

TEST(WriteFileSafely, WhateverCallFailsTheOldFileOrTheNewOneStandsWhole) {
  for (const Case& how : kCases) {
    for (const Faults& kind : {Faults{0, EIO}, Faults{0, EPERM}, Faults{0, EIO, true}}) {
      bool reached = true;
      for (int call = 1; reached; ++call) {
        Disk disk(how);
        Faults planned = kind;
        planned.call = call;
        const WriteResult result = disk.Save(planned);
        reached = disk.reached;
        const std::string told = std::string(how.what) + ' ' + std::to_string(call) + ' ' +
                                 std::to_string(kind.error) + result.reason;
        const std::vector<std::string> left = disk.Leftovers();
        const bool placed = result.stamp.size >= 0;
        EXPECT_LE(result.Done(), placed) << told;
        if (const size_t at = result.reason.find('/'); at != std::string::npos) {
          EXPECT_EQ(left, std::vector{result.reason.substr(at)}) << told;
          EXPECT_TRUE(IsKept(left)) << told;
          continue;
        }
        EXPECT_EQ(FileExists(disk.file), placed || how.old) << told;
        EXPECT_EQ(TextOf(disk.file), placed ? Disk::kNew : how.old ? Disk::kOld : "") << told;
        EXPECT_EQ(IsKept(left), placed && how.keep) << told;
        EXPECT_EQ(left.size(), placed && how.keep ? 1u : 0u) << told;
        EXPECT_TRUE(!how.second_name || TextOf(disk.Path("in/second")) == TextOf(disk.file)) << told;
        EXPECT_TRUE(reached || result.Done() != (how.keep && how.closed_folder)) << told;
      }
    }
  }
}

TEST(WriteFileSafely, WhereverItIsKilledTheOldFileOrTheNewOneStandsWhole) {
  for (const Case& how : kCases) {
    int status = 0;
    for (int call = 1; status == 0; ++call) {
      Disk disk(how);
      if (const pid_t writer = ::fork(); writer != 0)
        ASSERT_EQ(::waitpid(writer, &status, 0), writer);
      else
        disk.Save({call, Faults::kEnd}), ::_exit(1);
      const std::string now = TextOf(disk.file);
      EXPECT_TRUE(now == Disk::kNew || now == (how.old ? Disk::kOld : "") || IsKept(disk.Leftovers()))
          << how.what << call;
      disk.Save();
      for (const std::string& path : disk.Leftovers())
        EXPECT_TRUE(path.ends_with('~')) << path << how.what << call;
    }
  }
}

TEST(WriteFileSafely, WhateverFailsLeavesTheOldFileAlone) {
  const Folder folder;
  const std::string path = folder.Put("file", "old");
  rlimit before = {};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const rlimit small{100000, before.rlim_max};
  SurviveFileSizeLimit();
  ::setrlimit(RLIMIT_FSIZE, &small);
  EXPECT_EQ(Fault(path, Bytes(200000)), "the file would be too large");
  ::setrlimit(RLIMIT_FSIZE, &before);
  const auto no_memory = [](const auto&) -> bool { throw std::bad_alloc(); };
  EXPECT_EQ(WriteSafely(path, no_memory).reason, "there isn't enough memory");
  EXPECT_NE(WriteSafely(path, [](const auto& sink) { return sink("half", 4), false; }).reason, "");
  EXPECT_EQ(TextOf(path), "old");
  EXPECT_EQ(NamesIn(folder.Path(".")), (std::vector<std::string>{"file"}));
}

TEST(WriteFileSafely, DeadDraftsAreSweptAndNobodyElses) {
  const Folder folder;
  const std::string path = folder.Path("file"), live = ".zelvane-ba9876543210";
  if (const pid_t writer = ::fork(); writer == 0) {
    SafeFile file(path);
    file.Write("half", 4);
    ::_exit(0);  // as if killed: nothing is tidied up
  } else {
    ASSERT_EQ(::waitpid(writer, nullptr, 0), writer);
  }
  std::vector<std::string> kept{".zelvane-0123456789a", ".zelvane-0123456789aX", live, ".zelvane-notes.txt"};
  for (const std::string& name : kept) folder.Put(name, "draft");
  folder.Put(".zelvane-0123456789ab", "dead");
  const int held = ::open(folder.Path(live).c_str(), O_RDONLY);
  ASSERT_EQ(::flock(held, LOCK_EX), 0);
  EXPECT_EQ(Fault(path), "");
  kept.push_back("file");
  EXPECT_EQ(NamesIn(folder.Path(".")), kept);
  ::close(held);
  EXPECT_EQ(Fault(path), "");
  EXPECT_FALSE(FileExists(folder.Path(live)));
}

TEST(WriteFileSafely, AFullOrReadOnlyDiskLeavesTheOldFile) {
  const Folder folder;
  const std::string disk = folder.Path("disk");
  fs::create_directory(disk);
  if (::mount("none", disk.c_str(), "tmpfs", 0, "size=64k") != 0)
    GTEST_SKIP() << "may not mount a small disk";
  folder.Put("disk/file", "old");
  EXPECT_EQ(Fault(disk + "/file", Bytes(200000)), "no space left on the device");
  ::mount("none", disk.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr);
  EXPECT_EQ(Fault(disk + "/file"), "the disk is read-only");
  EXPECT_EQ(TextOf(disk + "/file"), "old");
  EXPECT_EQ(NamesIn(disk), (std::vector<std::string>{"file"}));
  ::umount(disk.c_str());
}

TEST(WriteFileSafely, AProtectedFileStays) {
  Disk disk(kCases[1]);
  fs::permissions(disk.file, fs::perms{0444});
  EXPECT_EQ(disk.Save().reason, "permission denied");
  EXPECT_EQ(TextOf(disk.file), Disk::kOld);
}

}  // namespace
}  // namespace zelvane::test
