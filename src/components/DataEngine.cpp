#include "components/DataEngine.h"

#include <sys/stat.h>

#define SQLITE_HAS_CODEC
#include <sqlcipher/sqlite3.h>

#include <cerrno>

#include "surface/system/files/SafeFile.h"

namespace zelvane {
namespace {

/// How often the password is hashed into a key. It stands in these sources, so more rounds would protect
/// nothing and cost some 40 ms at each start; these take two.
constexpr char kKeyRounds[] = "PRAGMA cipher_default_kdf_iter = 4000";
/// How long another program may hold the file before a step fails, in milliseconds.
constexpr int kPatience = 1000;

std::string PhraseOf(sqlite3* base, int code) {
  constexpr int kPlain = 0xFF;
  const int error = base ? sqlite3_system_errno(base) : 0;
  switch (code & kPlain) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return "another program is using the file";
    case SQLITE_FULL:
      return PhraseFor(ENOSPC);
    case SQLITE_READONLY:
      return "the file is read-only";
    case SQLITE_CANTOPEN:
      return error == ENOENT ? "the file has gone" : PhraseFor(error ? error : EACCES);
    case SQLITE_IOERR:
      return PhraseFor(error ? error : EIO);
    case SQLITE_NOMEM:
      return PhraseFor(ENOMEM);
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return "the file is damaged";
    default:
      return "the file holds something else under this name";
  }
}

void Check(sqlite3* base, int code) {
  if (code == SQLITE_OK || code == SQLITE_ROW || code == SQLITE_DONE) return;
  if (base && sqlite3_extended_errcode(base) == SQLITE_READONLY_DBMOVED)
    throw FileReplaced("the file was replaced by another program");
  throw EngineFailure(PhraseOf(base, code));
}

}  // namespace

void EngineFile::Close::operator()(sqlite3* base) const {
  sqlite3_close(base);
}

EngineFile::EngineFile(const std::string& path, const std::string& password, bool damaged) {
  sqlite3* base = nullptr;
  const int opened = sqlite3_open_v2(path.c_str(), &base, SQLITE_OPEN_READWRITE, nullptr);
  base_.reset(base);
  Check(base, opened);
  sqlite3_busy_timeout(base, kPatience);
  Run(kKeyRounds);
  Check(base, sqlite3_key(base, password.data(), static_cast<int>(password.size())));
  // It lets the engine read a file that is shorter than it says.
  if (damaged) Run("PRAGMA writable_schema = ON");
  Run("SELECT count(*) FROM sqlite_master");
}

void EngineFile::Run(const std::string& statement) {
  Check(Base(), sqlite3_exec(Base(), statement.c_str(), nullptr, nullptr, nullptr));
}

void EngineFile::Run(const std::string& statement, const std::string& first, const std::string& second) {
  EngineStatement prepared(*this, statement);
  prepared.Bind(1, first);
  if (!second.empty()) prepared.Bind(2, second);
  prepared.Finish();
}

std::string EngineFile::Ask(const std::string& question) {
  EngineStatement statement(*this, question);
  return statement.Next() ? statement.Text(0) : std::string();
}

void EngineFile::BeginWriting() {
  Run("BEGIN IMMEDIATE");
  int has_moved = 0;
  sqlite3_file_control(Base(), "main", SQLITE_FCNTL_HAS_MOVED, &has_moved);
  if (has_moved) throw FileReplaced("the file has gone");
}

void EngineStatement::End::operator()(sqlite3_stmt* statement) const {
  sqlite3_finalize(statement);
}

EngineStatement::EngineStatement(const EngineFile& file, const std::string& text) {
  sqlite3_stmt* statement = nullptr;
  const int length = static_cast<int>(text.size());
  Check(file.Base(), sqlite3_prepare_v2(file.Base(), text.data(), length, &statement, nullptr));
  statement_.reset(statement);
}

void EngineStatement::Bind(int place, const std::string& text) {
  const int length = static_cast<int>(text.size());
  sqlite3_stmt* statement = statement_.get();
  Check(sqlite3_db_handle(statement),
        sqlite3_bind_text(statement, place, text.data(), length, SQLITE_TRANSIENT));
}

void EngineStatement::BindRow(const EngineStatement& row) {
  for (int i = 0; i < row.Columns(); ++i)
    Check(sqlite3_db_handle(statement_.get()),
          sqlite3_bind_value(statement_.get(), i + 1, sqlite3_column_value(row.statement_.get(), i)));
}

bool EngineStatement::Next() {
  const int code = sqlite3_step(statement_.get());
  Check(sqlite3_db_handle(statement_.get()), code);
  return code == SQLITE_ROW;
}

void EngineStatement::Finish() {
  while (Next()) {
  }
  sqlite3_reset(statement_.get());
}

std::string EngineStatement::Text(int column) const {
  const unsigned char* text = sqlite3_column_text(statement_.get(), column);
  const auto length = static_cast<size_t>(sqlite3_column_bytes(statement_.get(), column));
  return text ? std::string(reinterpret_cast<const char*>(text), length) : std::string();
}

int EngineStatement::Columns() const {
  return sqlite3_column_count(statement_.get());
}

std::string EngineStatement::ColumnName(int column) const {
  return sqlite3_column_name(statement_.get(), column);
}

std::string QuotedName(const std::string& name) {
  std::string quoted = "\"";
  for (const char letter : name) quoted += letter == '"' ? std::string("\"\"") : std::string(1, letter);
  return quoted + '"';
}

}  // namespace zelvane
