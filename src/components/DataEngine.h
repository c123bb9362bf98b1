#pragma once

#include <memory>
#include <stdexcept>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

/// The database engine behind `DataStore`, for its sources alone.
namespace zelvane {

/// A step of the engine that failed; `what` is a phrase for a person.
struct EngineFailure : std::runtime_error {
  using std::runtime_error::runtime_error;
};
/// The file that is open isn't the one that stands under its name any more, so nothing goes into it.
struct FileReplaced : EngineFailure {
  using EngineFailure::EngineFailure;
};

/// An open data file. Everything throws `EngineFailure`.
class EngineFile {
 public:
  /// The file must exist; an empty one is a database without tables. `damaged`: one that breaks off opens
  /// too.
  EngineFile(const std::string& path, const std::string& password, bool damaged = false);

  void Run(const std::string& statement);
  void Run(const std::string& statement, const std::string& first, const std::string& second = "");
  /// The first column of the first row; empty without one.
  std::string Ask(const std::string& question);
  /// From here on nobody else writes, until `COMMIT`, `ROLLBACK` or the end of this object.
  void BeginWriting();
  sqlite3* Base() const { return base_.get(); }

 private:
  struct Close {
    void operator()(sqlite3* base) const;
  };
  std::unique_ptr<sqlite3, Close> base_;
};

/// A statement with its rows. It ends before its file does.
class EngineStatement {
 public:
  EngineStatement(const EngineFile& file, const std::string& text);

  /// Places count from 1.
  void Bind(int place, const std::string& text);
  /// Takes all columns of the row that the other one stands on.
  void BindRow(const EngineStatement& row);
  /// Goes to the next row; false behind the last.
  bool Next();
  /// Runs to the end, and can run again.
  void Finish();
  /// A column of the row, from 0.
  std::string Text(int column) const;
  int Columns() const;
  std::string ColumnName(int column) const;

 private:
  struct End {
    void operator()(sqlite3_stmt* statement) const;
  };
  std::unique_ptr<sqlite3_stmt, End> statement_;
};

/// A name as statements hold it, whatever it's made of.
std::string QuotedName(const std::string& name);

}  // namespace zelvane
