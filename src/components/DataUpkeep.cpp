#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <ctime>
#include <vector>

#include "components/DataEngine.h"
#include "components/DataStore.h"
#include "surface/raster/FailingStep.h"
#include "surface/system/files/Descriptor.h"
#include "surface/system/files/Files.h"

namespace zelvane {
namespace {

/// A file that is written beside the one that it will replace. The old one is open as long as this lives:
/// closing a file loosens all locks that the process has on it, the engine's too.
class Replacement {
 public:
  Replacement(const std::string& path, const std::string& draft) : path_(path), draft_(draft) {
    old_ = Descriptor(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat found = {};
    // The file behind a link and another user's stay the files that they are.
    const bool is_plain = old_.IsOpen() && ::fstat(old_.Get(), &found) == 0 && S_ISREG(found.st_mode) &&
                          found.st_size > 0 && found.st_uid == ::geteuid();
    if (!is_plain) return;
    has_one_name_ = found.st_nlink == 1;
    constexpr mode_t kOwnerOnly = 0600;  // until it has the old file's rights
    new_ = Descriptor(::open(draft.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerOnly));
    if (new_.IsOpen() && CopyRights(found, old_.Get(), new_.Get()) != 0) new_ = Descriptor();
  }
  ~Replacement() {
    if (!is_put_ && new_.IsOpen()) DeleteFile(draft_);
  }
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;

  bool IsReady() const { return new_.IsOpen(); }
  /// What is put in place would take but one of several.
  bool HasOneName() const { return has_one_name_; }
  bool Put() {
    is_put_ = Sync(new_.Get()) == 0 && RenameFile(draft_, path_);
    if (is_put_) Sync(OpenFolder(FolderOf(path_)).Get());
    return is_put_;
  }

 private:
  std::string path_, draft_;
  Descriptor old_, new_;
  bool has_one_name_ = false, is_put_ = false;
};

std::string Today() {
  const std::time_t now = std::time(nullptr);
  std::tm local = {};
  char text[sizeof "2000-01-01"] = {};
  if (::localtime_r(&now, &local)) std::strftime(text, sizeof text, "%Y-%m-%d", &local);
  return text;
}

/// Gives the file the name "... damaged DAY.KVD", or the like with a number; empty where that failed.
std::string KeepBeside(const std::string& path) {
  constexpr int kMost = 1000;
  const std::string ending = '.' + NameOf(path).substr(NameOf(path).rfind('.') + 1);
  const std::string start = path.substr(0, path.size() - ending.size()) + " damaged " + Today();
  for (int i = 1; i <= kMost; ++i) {
    const std::string kept = start + (i == 1 ? "" : ' ' + std::to_string(i)) + ending;
    if (::link(path.c_str(), kept.c_str()) == 0) return kept;
    // A file system that knows no second names.
    if (errno != EEXIST && !FileExists(kept)) return RenameFile(path, kept) ? kept : std::string();
  }
  return {};
}

/// A damaged file, to be read. A page that can't be ends all that goes on there, so each reading begins anew.
class DamagedFile {
 public:
  DamagedFile(const std::string& path, const std::string& password) : path_(path), password_(password) {}

  /// The two columns of all rows.
  std::vector<std::array<std::string, 2>> AllOf(const std::string& question) const {
    EngineFile file(path_, password_, true);
    EngineStatement statement(file, question);
    std::vector<std::array<std::string, 2>> rows;
    while (statement.Next()) rows.push_back({statement.Text(0), statement.Text(1)});
    return rows;
  }

  /// Copies the rows that come before the first that can't be read, or that is there already; true where
  /// that's all of them.
  bool CopyRows(EngineFile& to, const std::string& table, const char* order) const {
    return Attempt([&] {
      EngineFile file(path_, password_, true);
      const std::string name = QuotedName(table);
      EngineStatement rows(file, "SELECT rowid, * FROM " + name + " ORDER BY rowid " + order);
      std::string names = "rowid", marks = "?";
      for (int i = 1; i < rows.Columns(); ++i) names += ", " + QuotedName(rows.ColumnName(i)), marks += ", ?";
      EngineStatement row(to, "INSERT INTO " + name + " (" + names + ") VALUES (" + marks + ")");
      while (rows.Next()) row.BindRow(rows), row.Finish();
    });
  }

 private:
  std::string path_, password_;
};

/// Rows are read from both ends, towards what can't be.
void Salvage(const DamagedFile& from, EngineFile& to) {
  to.Run("BEGIN");
  for (const auto& [name, sql] : from.AllOf("SELECT name, sql FROM sqlite_master WHERE type = 'table' AND "
                                            "substr(name, 1, 7) <> 'sqlite_'"))
    if (Attempt([&] { to.Run(sql); }) && !from.CopyRows(to, name, "ASC")) from.CopyRows(to, name, "DESC");
  Attempt([&] {
    for (const auto& [name, sql] :
         from.AllOf("SELECT name, sql FROM sqlite_master WHERE type <> 'table' AND sql IS NOT NULL"))
      Attempt([&] { to.Run(sql); });
  });
  to.Run("COMMIT");
}

bool IsWhole(EngineFile& file) {
  bool is_whole = false;
  Attempt([&] { is_whole = file.Ask("PRAGMA integrity_check(1)") == "ok"; });
  return is_whole;
}

/// All that is in the file, its version for its programs included.
void CopyTo(EngineFile& file, const std::string& draft, const std::string& password) {
  file.Run("ATTACH ? AS compact KEY ?", draft, password);
  // The draft counts once it's whole and synced.
  file.Run("PRAGMA compact.synchronous = OFF");
  file.Run("PRAGMA compact.journal_mode = OFF");
  file.Run("BEGIN");
  file.Run("SELECT sqlcipher_export('compact')");
  file.Run("COMMIT");
  file.Run("PRAGMA compact.user_version = " + file.Ask("PRAGMA main.user_version"));
  if (file.Ask("PRAGMA compact.quick_check(1)") != "ok") throw EngineFailure("the copy is damaged");
  file.Run("DETACH compact");
}

}  // namespace

std::optional<std::string> RepairDataFile(const std::string& path, const std::string& draft,
                                          const std::string& password) {
  std::string kept;
  Attempt([&] {
    Replacement replacement(path, draft);
    EngineFile damaged(path, password, true);
    if (!replacement.IsReady() || IsWhole(damaged)) return;
    damaged.BeginWriting();
    {
      EngineFile whole(draft, password);
      Salvage(DamagedFile(path, password), whole);
    }
    const std::string beside = KeepBeside(path);
    if (beside.empty()) return;
    if (replacement.Put()) {
      kept = beside;
    } else {
      FileExists(path) ? DeleteFile(beside) : RenameFile(beside, path);
    }
  });
  return !kept.empty() ? std::optional(kept) : std::nullopt;
}

bool CompactDataFile(const std::string& path, const std::string& draft, const std::string& password) {
  bool is_put = false;
  Attempt([&] {
    Replacement replacement(path, draft);
    if (!replacement.IsReady() || !replacement.HasOneName()) return;
    // While this one keeps the others from writing, another reads.
    EngineFile guard(path, password);
    guard.BeginWriting();
    EngineFile reader(path, password);
    CopyTo(reader, draft, password);
    is_put = replacement.Put();
  });
  return is_put;
}

}  // namespace zelvane
