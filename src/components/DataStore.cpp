#include "components/DataStore.h"

#include <fcntl.h>

#include "components/DataEngine.h"
#include "surface/raster/FailingStep.h"
#include "surface/system/files/Descriptor.h"
#include "surface/system/files/Files.h"

namespace zelvane {
namespace {

/// An empty file would count as a database without tables, and one that isn't encrypted would mean that a
/// plain engine stands where this one should.
bool MayBeOurs(const std::string& path) {
  constexpr char kPlain[] = "SQLite format 3";
  const std::vector<unsigned char> start = FileStart(path, sizeof kPlain);
  return !start.empty() && std::string(start.begin(), start.end()) != std::string(kPlain, sizeof kPlain);
}

DataStore::TextList TextsIn(const EngineFile& file, const std::string& table, const std::string& field) {
  // A name in front, since a quoted field that isn't there would be taken for a text.
  EngineStatement rows(file, "SELECT rows." + QuotedName(field) + " FROM " + QuotedName(table) + " AS rows");
  DataStore::TextList texts;
  while (rows.Next()) texts.push_back(rows.Text(0));
  return texts;
}

/// Undone unless it's committed.
class Change {
 public:
  explicit Change(EngineFile& file) : file_(file) { file_.BeginWriting(); }
  ~Change() {
    if (!is_done_) Attempt([this] { file_.Run("ROLLBACK"); });
  }
  Change(const Change&) = delete;
  Change& operator=(const Change&) = delete;
  void Commit() {
    file_.Run("COMMIT");
    is_done_ = true;
  }

 private:
  EngineFile& file_;
  bool is_done_ = false;
};

void AddRows(EngineFile& file, const std::string& table, const std::string& field,
             const std::function<DataStore::TextList(const DataStore::TextList&)>& choose) {
  Change change(file);
  file.Run("CREATE TABLE IF NOT EXISTS " + QuotedName(table) + " (" + QuotedName(field) + " TEXT)");
  const DataStore::TextList added = choose(TextsIn(file, table, field));
  EngineStatement row(file, "INSERT INTO " + QuotedName(table) + " (" + QuotedName(field) + ") VALUES (?)");
  for (const std::string& text : added) row.Bind(1, text), row.Finish();
  change.Commit();
}

}  // namespace

DataStore::DataStore(const std::string& path, const std::string& password)
    : path_(path), password_(password), file_(std::make_unique<EngineFile>(path, password)) {}

DataStore::~DataStore() = default;

std::unique_ptr<DataStore> DataStore::Open(const std::string& path, const std::string& password) {
  std::unique_ptr<DataStore> store;
  const bool is_open = MayBeOurs(path) && Attempt([&] { store.reset(new DataStore(path, password)); });
  if (!is_open) return nullptr;
  bool is_whole = false;
  Attempt([&] { is_whole = store->file_->Ask("PRAGMA quick_check(1)") == "ok"; });
  return is_whole ? std::move(store) : nullptr;
}

std::unique_ptr<DataStore> DataStore::Create(const std::string& path, const std::string& password) {
  constexpr mode_t kReadWrite = 0666;  // less what the user's mask takes away
  std::unique_ptr<DataStore> store;
  const Descriptor made(::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kReadWrite));
  if (made.IsOpen()) Attempt([&] { store.reset(new DataStore(path, password)); });
  return store;
}

DataStore::TextList DataStore::Texts(const std::string& table, const std::string& field) const {
  TextList texts;
  if (file_) Attempt([&] { texts = TextsIn(*file_, table, field); });
  return texts;
}

std::string DataStore::AddTexts(const std::string& table, const std::string& field,
                                const std::function<TextList(const TextList&)>& choose) {
  constexpr int kTries = 5;  // each time another program has just put another file there
  std::string reason;
  for (int i = 0; i < kTries; ++i) {
    try {
      if (!file_) file_ = std::make_unique<EngineFile>(path_, password_);
      AddRows(*file_, table, field, choose);
      return {};
    } catch (const FileReplaced& failure) {
      reason = failure.what();
      file_.reset();
    } catch (const std::exception& failure) {
      return failure.what();
    }
  }
  return reason;
}

}  // namespace zelvane
