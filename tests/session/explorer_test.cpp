#include <gtest/gtest.h>

#include <QPersistentModelIndex>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>

#include "components/ExplorerView.h"
#include "surface/forms/windows/EventLoop.h"
#include "surface/forms/windows/Form.h"
#include "surface/system/files/FolderWatch.h"

namespace zelvane {
namespace {

namespace fs = std::filesystem;

class Explorer : public testing::Test {
 protected:
  Explorer() : form_("form"), folders_(form_, "folders") {
    folders_.Move(0, 0, 4500, 7500);
    form_.Show();
    form_.Widget()->resize(300, 500);
    for (const char* path : {"a/b/deep", "a/B10", "a/b2", "a/.hidden/in", "a/\xFF", "c"})
      fs::create_directories(Of(path));
    std::ofstream(Of("a/file")) << "no folder";
    fs::create_directory_symlink(".", Of("a/b/loop"));
    fs::create_symlink("file", Of("a/link"));
    folders_.OnChange = [this](const std::string& path) { heard_ += path.substr(Of("").size()) + ' '; };
  }
  // The toolkit leaves names that aren't UTF-8.
  ~Explorer() override { fs::remove_all(home_.path().toStdString()); }

  std::string Of(const std::string& path) const { return home_.path().toStdString() + '/' + path; }
  QTreeView& View() const { return static_cast<QTreeView&>(*folders_.Widget()); }
  QModelIndex Chosen() const { return View().selectionModel()->selectedIndexes().value(0); }
  /// The rows below a folder, those that are open with theirs, a star behind the chosen one.
  std::string Rows(const QModelIndex& folder) const {
    std::string rows;
    for (int i = 0; i < View().model()->rowCount(folder); ++i) {
      const QModelIndex row = View().model()->index(i, 0, folder);
      rows += (i ? " " : "") + row.data().toString().toStdString() + (row == Chosen() ? "*" : "");
      if (View().isExpanded(row)) rows += '(' + Rows(row) + ')';
    }
    return rows;
  }
  std::string Told() { return std::exchange(heard_, {}); }

  Form form_;
  QTemporaryDir home_;
  ExplorerDisplay folders_;
  std::string heard_;
};

TEST_F(Explorer, ChoosesAFolderOpenedUpToItByTheProgramOrThePerson) {
  EXPECT_EQ(Rows({}), "/");
  folders_.SetPath(Of("a/b/"));
  const QPersistentModelIndex home = Chosen().parent().parent();
  EXPECT_EQ(Rows(home), "a(b* b2 B10 \uFFFD) c");
  EXPECT_TRUE(View().viewport()->rect().contains(View().visualRect(Chosen())));
  folders_.SetPath(Of("a/b"));
  EXPECT_EQ(Told(), "a/b a/b ") << "the same again";
  for (const char* path : {"a/file", "a/link", "none", ""}) folders_.SetPath(Of(path) + (*path ? "" : "/x"));
  folders_.SetPath("");
  EXPECT_EQ(folders_.Path() + Told(), Of("a/b"));

  const QModelIndex odd = home.model()->index(3, 0, Chosen().parent());
  View().scrollTo(odd);
  QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, View().visualRect(odd).center());
  EXPECT_EQ(Told(), "a/\xFF ");
  folders_.SetFocus();
  QTest::keyClick(&View(), Qt::Key_Up);
  EXPECT_EQ(folders_.Path(), Of("a/B10"));
  folders_.SetPath(Of("a/.hidden/in")), folders_.SetPath(Of("a/b/loop/loop/deep")), folders_.SetPath(Of("c"));
  EXPECT_EQ(Rows(home), "a(.hidden(in) b(deep loop(deep loop(deep loop))) b2 B10 \uFFFD) c*");
  QTest::keyClick(&View(), Qt::Key_Asterisk);
  EXPECT_EQ(Rows(home).back(), ')') << "opened, but no farther";
}

TEST_F(Explorer, ListsAnewWithoutAnotherChoice) {
  folders_.SetPath(Of("a/b/deep"));
  const QPersistentModelIndex home = Chosen().parent().parent().parent();
  Told();
  fs::create_directory(Of("a/b3")), fs::remove_all(Of("a/b2")), fs::rename(Of("c"), Of("d"));
  folders_.Refresh();
  EXPECT_EQ(Rows(home), "a(b(deep* loop) b3 B10 \uFFFD) d");
  fs::remove_all(Of("a/b"));
  folders_.Refresh();
  EXPECT_EQ(Rows(home), "a(b3 B10 \uFFFD) d");
  EXPECT_EQ(folders_.Path() + Told(), Of("a/b/deep"));
  fs::create_directories(Of("a/b/deep"));
  folders_.Refresh();
  EXPECT_EQ(Rows(home), "a(b(deep*) b3 B10 \uFFFD) d");
  EXPECT_EQ(Told(), "");
}

TEST_F(Explorer, TellsOfFoldersThatAreMadeRenamedOrRemovedButNotOfFiles) {
  constexpr int kLongEnoughMs = 5000, kSeveralPausesMs = 300;
  int changes = 0;
  folders_.OnFoldersChanged = [&] { ++changes, folders_.Refresh(); };
  folders_.SetPath(Of("a/b"));
  const QPersistentModelIndex home = Chosen().parent().parent();
  const auto hears = [&](int longest_ms) {
    RunEventsUntil([&] { return changes > 0; }, longest_ms);
    return std::exchange(changes, 0) > 0;
  };
  fs::create_directory(Of("d")), fs::create_directory(Of("a/b/new"));
  EXPECT_TRUE(hears(kLongEnoughMs));
  EXPECT_EQ(Rows(home), "a(b* b2 B10 \uFFFD) c d");
  fs::rename(Of("a/b2"), Of("a/b3"));
  EXPECT_TRUE(hears(kLongEnoughMs));
  fs::remove(Of("a/b3"));
  EXPECT_TRUE(hears(kLongEnoughMs));
  EXPECT_EQ(Rows(home) + Told(), "a(b* B10 \uFFFD) c da/b ");
  // By a watch of its own, as others make folders in those above.
  FolderWatch watch;
  watch.OnChange = [&] { ++changes; };
  folders_.OnFoldersChanged = nullptr;
  watch.Adder()(Of("a"));
  std::ofstream(Of("a/file")) << "changed", std::ofstream(Of("a/more")) << "new", fs::remove(Of("a/link"));
  EXPECT_FALSE(hears(kSeveralPausesMs));
}

}  // namespace
}  // namespace zelvane
