#include "surface/system/files/Files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>

#include "codecs/PictureSamples.h"
#include "surface/system/files/SafeFile.h"

namespace zelvane::test {
namespace {

namespace fs = std::filesystem;

std::string TextOf(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
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

TEST(WriteFileSafely, ReplacesTheFileAndKeepsItsRights) {
  const Folder folder;
  const std::string path = folder.Path("file"), link = folder.Path("link");
  EXPECT_EQ(Fault(path, {'o', 'l', 'd'}), "");
  fs::permissions(path, fs::perms{0751});
  fs::create_symlink("file", link);
  EXPECT_EQ(Fault(link), "");
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(TextOf(path), "new");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms{0751});
  fs::create_symlink("later", folder.Path("dangling"));
  EXPECT_EQ(Fault(folder.Path("dangling"), {}), "");
  EXPECT_EQ(fs::file_size(folder.Path("later")), 0u);
  EXPECT_EQ(NamesIn(folder.Path(".")), (std::vector<std::string>{"dangling", "file", "later", "link"}));
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

TEST(WriteFileSafely, ProtectedFilesAndFoldersStay) {
  if (::geteuid() == 0) GTEST_SKIP() << "nothing is protected from the superuser";
  const Folder folder;
  const std::string path = folder.Put("file", "old");
  for (const auto& [of_file, of_folder] : {std::pair{0444, 0755}, {0644, 0555}}) {
    fs::permissions(path, fs::perms(of_file)), fs::permissions(folder.Path("."), fs::perms(of_folder));
    EXPECT_EQ(Fault(path), "permission denied");
  }
  EXPECT_EQ(TextOf(path), "old");
  fs::permissions(folder.Path("."), fs::perms{0755});
}

}  // namespace
}  // namespace zelvane::test
