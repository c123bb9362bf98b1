#include "components/DataStore.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <random>

#include "codecs/PictureSamples.h"
#include "system/Faults.h"

namespace zelvane::test {
namespace {

namespace fs = std::filesystem;
using Rows = DataStore::TextList;

constexpr char kPassword[] = "secret", kTable[] = "Things", kField[] = "Thing";

class DataStores : public testing::Test {
 protected:
  static auto Open(const std::string& path) { return DataStore::Open(path, kPassword); }
  static std::string Add(DataStore& store, const Rows& rows) {
    return store.AddTexts(kTable, kField, [&](const Rows&) { return rows; });
  }
  static Rows In(const std::string& path) {
    const auto store = Open(path);
    return store ? store->Texts(kTable, kField) : Rows{"not open"};
  }
  void Make(const Rows& rows) {
    for (const std::string& name : Names()) fs::remove_all(folder_.Path(name));
    EXPECT_EQ(Add(*DataStore::Create(path_, kPassword), rows), "");
  }
  bool Compact() { return CompactDataFile(path_, draft_, kPassword); }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.Path(".")))
      names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
  }
  /// Many pages of rows.
  static Rows Many(size_t count = 5000) {
    Rows rows(count, "a thing of ");
    for (size_t i = 0; i < rows.size(); ++i) rows[i] += std::to_string(i);
    return rows;
  }
  /// Runs `step` with a fault at its first system call, then at its second and so on, until it runs without
  /// one; `check` looks after each.
  static void WithEachFault(int error, const std::function<void()>& prepare,
                            const std::function<bool()>& step, const std::function<void(bool done)>& look) {
    enum Ends { kDone = 1, kWithoutFault = 2 };
    int call = 0;
    for (bool reached = true; reached && !HasFailure(); ++call) {
      prepare();
      const pid_t child = ::fork();
      if (child == 0) {
        faults.call = call + 1, faults.error = error;
        const bool done = step();
        ::_exit((done ? kDone : 0) + (faults.reached ? 0 : kWithoutFault));
      }
      int status = 0;
      ::waitpid(child, &status, 0);
      ASSERT_TRUE(WIFEXITED(status)) << call;
      reached = !(WEXITSTATUS(status) & kWithoutFault);
      SCOPED_TRACE("call " + std::to_string(call));
      look(WEXITSTATUS(status) & kDone);
    }
    EXPECT_GT(call, 5);
  }

  const Folder folder_;
  const std::string path_ = folder_.Path("data.KVD"), draft_ = folder_.Path("draft.KVD");
};

TEST_F(DataStores, KeepWhatIsStored) {
  Make({"one", "", "  zwei ä\n"});
  const auto first = Open(path_), second = Open(path_);
  EXPECT_EQ(Add(*first, {"three"}), "");
  Rows seen;
  EXPECT_EQ(
      second->AddTexts(kTable, kField, [&](const Rows& standing) { return seen = standing, Rows{"four"}; }),
      "");
  EXPECT_EQ(seen, (Rows{"one", "", "  zwei ä\n", "three"}));
  EXPECT_EQ(In(path_), (Rows{"one", "", "  zwei ä\n", "three", "four"}));
  EXPECT_EQ(first->Texts("None", kField), Rows{});
  EXPECT_EQ(first->Texts(kTable, "none"), Rows{});
  EXPECT_NE(first->AddTexts(kTable, "none", [](const Rows&) { return Rows{"x"}; }), "");
  EXPECT_EQ(DataStore::Create(path_, kPassword), nullptr);
  std::string text(16, ' ');
  std::ifstream(path_).read(text.data(), 16);
  EXPECT_NE(text.substr(0, 6), "SQLite");
}

TEST_F(DataStores, OpenNothingElse) {
  Make({"one"});
  EXPECT_EQ(DataStore::Open(path_, "other"), nullptr);
  std::string noise(1 << 20, ' ');
  std::generate(noise.begin(), noise.end(),
                [random = std::minstd_rand()]() mutable { return static_cast<char>(random()); });
  folder_.Put("noise.KVD", noise);
  folder_.Put("empty.KVD", "");
  folder_.Put("plain.KVD", "SQLite format 3" + std::string(5000, '\0'));
  fs::create_directory(folder_.Path("folder.KVD"));
  for (const char* name : {"noise.KVD", "empty.KVD", "plain.KVD", "folder.KVD", "missing.KVD"}) {
    const std::string path = folder_.Path(name);
    EXPECT_EQ(Open(path), nullptr) << name;
    EXPECT_EQ(RepairDataFile(path, draft_, kPassword), std::nullopt) << name;
    EXPECT_FALSE(CompactDataFile(path, draft_, kPassword)) << name;
  }
  EXPECT_EQ(RepairDataFile(path_, draft_, "other"), std::nullopt);
  EXPECT_EQ(RepairDataFile(path_, draft_, kPassword), std::nullopt) << "it's whole";
  EXPECT_EQ(Names(),
            (std::vector<std::string>{"data.KVD", "empty.KVD", "folder.KVD", "noise.KVD", "plain.KVD"}));
  EXPECT_EQ(fs::file_size(folder_.Path("noise.KVD")), noise.size());
}

TEST_F(DataStores, AreRepairedAsFarAsTheyCanBeRead) {
  const Rows all = Many();
  const auto damage = [&](const std::function<void()>& step) {
    fs::remove(path_);
    EXPECT_EQ(Add(*DataStore::Create(path_, kPassword), all), "");
    step();
    EXPECT_EQ(Open(path_), nullptr);
    const auto kept = RepairDataFile(path_, draft_, kPassword);
    EXPECT_TRUE(kept && fs::exists(*kept)) << "no damaged file is kept";
    return In(path_);
  };
  const Rows half = damage([&] { fs::resize_file(path_, fs::file_size(path_) / 2); });
  EXPECT_TRUE(half.size() > all.size() / 3 && std::equal(half.begin(), half.end(), all.begin()));
  const Rows holed = damage([&] {
    std::fstream file(path_, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(static_cast<std::streamoff>(fs::file_size(path_) / 2)).write("hole", 4);
  });
  EXPECT_GT(holed.size(), all.size() - 100);
  EXPECT_TRUE(holed.front() == all.front() && holed.back() == all.back());
  EXPECT_EQ(Names().size(), 3u) << "two damaged files";
}

TEST_F(DataStores, CompactingLosesNothingOfAnybody) {
  Make(Many());
  const auto another = Open(path_);
  fs::permissions(path_, fs::perms{0640});
  EXPECT_TRUE(Compact());
  EXPECT_EQ(fs::status(path_).permissions(), fs::perms{0640});
  EXPECT_EQ(In(path_), Many());
  // The other one has the old file open.
  EXPECT_EQ(Add(*another, {"late"}), "");
  EXPECT_EQ(In(path_).back(), "late");
  EXPECT_TRUE(Compact());
  fs::remove(path_);
  EXPECT_NE(Add(*another, {"too late"}), "");
  fs::create_symlink("elsewhere.KVD", path_);
  EXPECT_FALSE(Compact());
  EXPECT_EQ(Names(), std::vector<std::string>{"data.KVD"});
}

TEST_F(DataStores, WaitForOneAnotherAndThenTell) {
  Make({"one"});
  const auto first = Open(path_), second = Open(path_);
  std::string reason;
  EXPECT_EQ(first->AddTexts(kTable, kField,
                            [&](const Rows&) {
                              reason = Add(*second, {"two"});
                              EXPECT_FALSE(Compact());
                              return Rows{"three"};
                            }),
            "");
  EXPECT_EQ(reason, "another program is using the file");
  EXPECT_EQ(Add(*second, {"two"}), "");
  EXPECT_EQ(In(path_), (Rows{"one", "three", "two"}));
}

TEST_F(DataStores, SurviveEveryFault) {
  const Rows before = {"one", "two"}, after = {"one", "two", "three"};
  for (const int error : {Faults::kEnd, EIO, ENOSPC}) {
    const auto add = [&] {
      const auto store = Open(path_);
      return store && Add(*store, {"three"}).empty();
    };
    const auto remake = [&] { Make(before); };
    WithEachFault(error, remake, add, [&](bool done) {
      const Rows rows = In(path_);
      EXPECT_TRUE(rows == after || (rows == before && !done)) << rows.size();
    });
    WithEachFault(
        error, remake, [&] { return Compact(); },
        [&](bool) {
          EXPECT_EQ(In(path_), before);
          fs::remove(draft_);
          EXPECT_TRUE(Compact());
          EXPECT_EQ(In(path_), before);
        });
  }
}

TEST_F(DataStores, AreRepairedThoughTheFirstAttemptIsCutOff) {
  const Rows all = Many(400);
  const auto cut = [&] {
    Make(all);
    fs::resize_file(path_, fs::file_size(path_) / 2);
  };
  const auto repair = [&] { return RepairDataFile(path_, draft_, kPassword).has_value(); };
  WithEachFault(Faults::kEnd, cut, repair, [&](bool) {
    fs::remove(draft_);
    if (!Open(path_)) repair();
    EXPECT_GT(In(path_).size(), all.size() / 4);
  });
}

}  // namespace
}  // namespace zelvane::test
