#include "surface/system/files/Files.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "codecs/PictureSamples.h"

namespace zelvane::test {
namespace {

namespace fs = std::filesystem;

void Put(const std::string& path, const std::string& text) {
  std::ofstream(path) << text;
}
std::string TextOf(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}
const Bytes kNew{'n', 'e', 'w'};

TEST(Paths, FolderNameAndExtension) {
  struct Case {
    const char *path, *folder, *name, *extension;
  };
  for (const Case& c : {Case{"/a/b.PNG", "/a", "b.PNG", "png"},
                        {"/b", "/", "b", ""},
                        {"b.c.d", "", "b.c.d", "d"},
                        {"/a.b/c", "/a.b", "c", ""},
                        {"/a/", "/a", "", ""},
                        {"x.", "", "x.", ""},
                        {"", "", "", ""},
                        {"/ä/Ü.ÄÖ", "/ä", "Ü.ÄÖ", "äö"},
                        {"/", "/", "", ""}}) {
    EXPECT_EQ(FolderOf(c.path), c.folder) << c.path;
    EXPECT_EQ(NameOf(c.path), c.name) << c.path;
    EXPECT_EQ(ExtensionOf(c.path), c.extension) << c.path;
  }
  EXPECT_EQ(AbsolutePath(""), "");
  EXPECT_EQ(AbsolutePath("/a/./b/../c/"), "/a/c");
}

TEST(Folders, AreListedEnteredAndLeft) {
  const Folder folder;
  const std::string before = CurrentFolder();
  Put(folder.Path("b.exe"), "");
  Put(folder.Path("A.EXE"), "");
  Put(folder.Path("c.txt"), "");
  fs::create_directory(folder.Path("d.exe"));
  EXPECT_EQ(FilesIn(folder.Path("."), "*.exe"), (std::vector<std::string>{"A.EXE", "b.exe"}));
  EXPECT_TRUE(FilesIn(folder.Path("missing"), "*").empty());
  ASSERT_TRUE(ChangeFolder(folder.Path("d.exe")));
  EXPECT_EQ(AbsolutePath("x"), CurrentFolder() + "/x");
  EXPECT_TRUE(ChangeFolder(before));
  EXPECT_FALSE(ChangeFolder(folder.Path("missing")));
  EXPECT_EQ(TemporaryFolder().back(), '/');
  EXPECT_FALSE(FilesIn(ApplicationFolder(), "*").empty());

  EXPECT_TRUE(FileExists(folder.Path("c.txt")));
  EXPECT_FALSE(FileExists(folder.Path("d.exe")));
  EXPECT_FALSE(DeleteFile(folder.Path("d.exe")));
  EXPECT_TRUE(RenameFile(folder.Path("c.txt"), folder.Path("e.txt")));
  EXPECT_FALSE(RenameFile(folder.Path("c.txt"), folder.Path("e.txt")));
  EXPECT_TRUE(DeleteFile(folder.Path("e.txt")));
  EXPECT_FALSE(FileExists(folder.Path("e.txt")));
}

TEST(WriteFileSafely, ReplacesTheFileAndKeepsItsRights) {
  const Folder folder;
  const std::string path = folder.Path("file"), link = folder.Path("link");
  EXPECT_EQ(WriteFileSafely(path, kNew).reason, "");
  EXPECT_EQ(TextOf(path), "new");
  Put(path, "old");
  ::chmod(path.c_str(), 0751);
  fs::create_symlink("file", link);
  EXPECT_EQ(WriteFileSafely(link, kNew).reason, "");
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(TextOf(path), "new");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms{0751});
  fs::create_symlink("later", folder.Path("dangling"));
  EXPECT_EQ(WriteFileSafely(folder.Path("dangling"), {}).reason, "");
  EXPECT_EQ(fs::file_size(folder.Path("later")), 0u);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path(".")), {}), 4);  // nothing left over
}

TEST(WriteFileSafely, RefusesWhatIsNoFileOrHasNoPlace) {
  const Folder folder;
  fs::create_directory(folder.Path("inner"));
  ASSERT_EQ(::mkfifo(folder.Path("pipe").c_str(), 0600), 0);
  fs::create_symlink("circle", folder.Path("circle"));
  EXPECT_EQ(WriteFileSafely(folder.Path("inner"), kNew).reason, "it is a folder");
  EXPECT_EQ(WriteFileSafely(folder.Path("pipe"), kNew).reason, "it is a device or the like, not a file");
  EXPECT_EQ(WriteFileSafely("/dev/null", kNew).reason, "it is a device or the like, not a file");
  EXPECT_EQ(WriteFileSafely(folder.Path("gone/file"), kNew).reason, "the folder doesn't exist");
  EXPECT_EQ(WriteFileSafely(folder.Path("circle"), kNew).reason, "the link leads back to itself");
  EXPECT_EQ(WriteFileSafely(folder.Path(std::string(300, 'x')), kNew).reason, "the name is too long");
  EXPECT_EQ(WriteFileSafely(folder.Path("inner/"), kNew).reason, "it is a folder");
  EXPECT_NE(WriteFileSafely("", kNew).reason, "");
  EXPECT_EQ(fs::status(folder.Path("pipe")).type(), fs::file_type::fifo);
}

TEST(WriteFileSafely, AFileThatGrowsTooLargeLeavesTheOldOne) {
  const Folder folder;
  Put(folder.Path("file"), "old");
  rlimit before = {};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const rlimit small{100000, before.rlim_max};
  const auto handler = ::signal(SIGXFSZ, SIG_IGN);
  ::setrlimit(RLIMIT_FSIZE, &small);
  const WriteResult result = WriteFileSafely(folder.Path("file"), Bytes(200000));
  ::setrlimit(RLIMIT_FSIZE, &before);
  ::signal(SIGXFSZ, handler);
  EXPECT_EQ(result.reason, "the file would be too large");
  EXPECT_EQ(TextOf(folder.Path("file")), "old");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path(".")), {}), 1);
}

TEST(WriteFileSafely, AFullOrReadOnlyDiskLeavesTheOldFile) {
  const Folder folder;
  const std::string disk = folder.Path("disk");
  fs::create_directory(disk);
  if (::mount("none", disk.c_str(), "tmpfs", 0, "size=64k") != 0)
    GTEST_SKIP() << "may not mount a small disk";
  Put(disk + "/file", "old");
  EXPECT_EQ(WriteFileSafely(disk + "/file", Bytes(200000)).reason, "no space left on the device");
  EXPECT_EQ(TextOf(disk + "/file"), "old");
  EXPECT_EQ(std::distance(fs::directory_iterator(disk), {}), 1);
  ::mount("none", disk.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr);
  EXPECT_EQ(WriteFileSafely(disk + "/file", kNew).reason, "the disk is read-only");
  EXPECT_EQ(TextOf(disk + "/file"), "old");
  ::umount(disk.c_str());
}

TEST(WriteFileSafely, ProtectedFilesAndFoldersStay) {
  if (::geteuid() == 0) GTEST_SKIP() << "nothing is protected from the superuser";
  const Folder folder;
  fs::create_directory(folder.Path("inner"));
  Put(folder.Path("inner/file"), "old");
  ::chmod(folder.Path("inner/file").c_str(), 0444);
  EXPECT_EQ(WriteFileSafely(folder.Path("inner/file"), kNew).reason, "permission denied");
  ::chmod(folder.Path("inner/file").c_str(), 0644);
  ::chmod(folder.Path("inner").c_str(), 0555);
  EXPECT_EQ(WriteFileSafely(folder.Path("inner/file"), kNew).reason, "permission denied");
  EXPECT_EQ(TextOf(folder.Path("inner/file")), "old");
  ::chmod(folder.Path("inner").c_str(), 0755);
}

}  // namespace
}  // namespace zelvane::test
