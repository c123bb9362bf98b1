#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zelvane {

class EngineFile;

/// A data file: tables with fields of text, in one encrypted file that opens with its password. Several
/// programs may have it open. What has been stored is on the disk, and stays whole wherever a process ends.
class DataStore {
 public:
  /// Null where the file is none, takes another password, is damaged, or is held by another program for more
  /// than a second.
  static std::unique_ptr<DataStore> Open(const std::string& path, const std::string& password);
  /// A new file without tables; null where something stands there, or nothing can be made there.
  static std::unique_ptr<DataStore> Create(const std::string& path, const std::string& password);
  ~DataStore();

  using TextList = std::vector<std::string>;
  /// A field of a table, row by row in the file's order; a row without it is an empty text. No rows where
  /// there is no such table or field.
  TextList Texts(const std::string& table, const std::string& field) const;

  /// Hands the field's texts, as they stand in the file now, to `choose` and adds what that returns as rows
  /// of their own, all or none of them; nothing else changes meanwhile. A table that isn't there is made. A
  /// file that has been replaced is opened anew. Returns the reason where it failed, as a phrase for a
  /// person.
  std::string AddTexts(const std::string& table, const std::string& field,
                       const std::function<TextList(const TextList& standing)>& choose);

 private:
  DataStore(const std::string& path, const std::string& password);
  std::string path_, password_;
  std::unique_ptr<EngineFile> file_;  ///< null after the file has gone
};

/// Puts what can still be read of a damaged file in its place, and keeps the damaged one beside it, under a
/// name that tells the day and is returned. No value where the file is whole, or nothing could be read of
/// it; it stays as it is then. `draft` is a free name beside it.
std::optional<std::string> RepairDataFile(const std::string& path, const std::string& draft,
                                          const std::string& password);

/// Writes the file anew without its free space, into `draft`, a free name beside it, and puts that in its
/// place in one step, on the disk. False where nothing was replaced: another program is writing, or the file
/// isn't this user's to replace. Others that have it open notice with their next change.
bool CompactDataFile(const std::string& path, const std::string& draft, const std::string& password);

}  // namespace zelvane
