#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QTest>
#include <QWidget>
#include <algorithm>
#include <filesystem>
#include <future>
#include <memory>
#include <random>
#include <stdexcept>

#include "codecs/PictureSamples.h"
#include "files/FileListBox.h"
#include "surface/system/files/Files.h"
#include "surface/system/text/ReadingOrder.h"

namespace zelvane::test {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

TEST(FileList, HoldsFilesOfAnyNameAndNothingElse) {
  const Folder folder;
  Names odd{
      std::string(251, 'x') + ".png", " .png", "a\nb.PNG", "%n%s.png", "\xFF\xE4.png", "a*[.png", "?\\.png"};
  for (const std::string& name : odd) folder.Put(name, "");
  for (const char* name : {".hidden.png", "a.pngx", "png", "b.jpeg"}) folder.Put(name, "");
  fs::create_directory(folder.Path("folder.png"));
  ASSERT_EQ(::mkfifo(folder.Path("pipe.png").c_str(), 0600), 0);
  constexpr const char* kLinks[][2] = {{"b.jpeg", "file.png"},
                                       {"folder.png", "way.png"},
                                       {"circle.png", "circle.png"},
                                       {"gone", "dangling.png"}};
  for (const auto& [target, name] : kLinks) fs::create_symlink(target, folder.Path(name));
  odd.push_back("file.png");
  std::sort(odd.begin(), odd.end());
  const std::string path = folder.Path(".");
  EXPECT_EQ(FilesIn(path, "*.gif;;*.png"), odd);
  for (const char* all : {"*", "*.*"}) EXPECT_EQ(FilesIn(path, all).size(), odd.size() + 3) << all;
  EXPECT_EQ(FilesIn(path, "?.JP*;"), Names{"b.jpeg"});
  for (const char* none : {"", ";", "xxx.xxx"}) EXPECT_EQ(FilesIn(path, none), Names{}) << none;
  fs::remove(folder.Path("\xFF\xE4.png"));  // which the toolkit couldn't
}

TEST(FileList, IsSortedForReading) {
  const Names sorted{"a1.png", "A2.png", "a2.png", "a10.png", "a20 b",    "ärger",   "Bild.png",
                     "bild1",  "Öl",     "ost",    "z",       "\xFE.png", "\xFF.png"};
  std::mt19937 random(1);
  for (int i = 0; i < 20; ++i) {
    Names names = sorted;
    std::shuffle(names.begin(), names.end(), random);
    SortForReading(names);
    ASSERT_EQ(names, sorted);
  }
}

TEST(FileList, WhatNeverAnswersIsLeftBehind) {
  auto answer = std::make_shared<std::promise<void>>();
  const auto hang = [waiting = answer->get_future().share()] { waiting.wait(); };
  int done = 0;
  {
    Errand dropped;
    dropped.OnDone = [&] { done += 100; };
    EXPECT_FALSE(dropped.Begin(hang, 1));
  }
  auto late = std::make_unique<Errand>();
  late->OnDone = [&] { ++done, late.reset(); };
  EXPECT_FALSE(late->Begin(hang, 1));
  EXPECT_FALSE(late->Begin(hang, 1)) << "the first is dropped";
  answer->set_value();
  EXPECT_TRUE(QTest::qWaitFor([&] { return done > 0; }));
  QTest::qWait(20);
  EXPECT_EQ(done, 1);
  Errand quick;
  quick.OnDone = [&] { done += 100; };
  EXPECT_TRUE(quick.Begin([] { throw std::runtime_error("failed"); }, 60000));
  QTest::qWait(0);
  EXPECT_EQ(done, 1);
}

TEST(FileList, FollowsFolderAndPattern) {
  const Folder folder;
  for (const char* name : {"x10.bmp", "x9.bmp", "x.gif"}) folder.Put(name, "");
  struct Window : Control {
    Window() : Control(nullptr, "window", new QWidget) {}
  } window;
  FileListBox File1(window, "File1");
  const auto holds = [&](int count) { return QTest::qWaitFor([&] { return File1.ListCount() == count; }); };
  File1.SetPath(folder.Path("."));
  EXPECT_EQ(File1.ListCount(), 0);
  File1.SetPattern("*.bmp");
  ASSERT_TRUE(holds(2));
  EXPECT_EQ(File1.List(1), "x10.bmp");
  File1.SetPattern("*.*");
  EXPECT_TRUE(holds(3));
  File1.SetPath(folder.Path("gone"));
  EXPECT_EQ(File1.ListCount(), 0);
}

}  // namespace
}  // namespace zelvane::test
