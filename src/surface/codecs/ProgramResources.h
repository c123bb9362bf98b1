#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "surface/codecs/LittleBytes.h"
#include "surface/codecs/RangeReader.h"

namespace zelvane {

/// The resources in a Windows executable or library. Of 32 or 64 bits (Microsoft's "PE Format"): a tree of
/// three levels, by type, by name and by language. Of 16 bits (Microsoft's "Executable-File Header Format"):
/// one table, of types and their names. Only the pieces that are asked for are read. Offsets may lead
/// anywhere: no more than the three levels, and 64 KiB of a table, is ever walked.
class ProgramResources {
 public:
  ProgramResources() = default;
  /// Without resources where the file is no such program.
  explicit ProgramResources(RangeReader read);

  /// Numbers of types.
  static constexpr uint32_t kIcon = 3, kIconGroup = 14;

  struct Entry {
    uint32_t name = 0;      ///< its number; with the top bit set a text
    uint32_t leads_to = 0;  ///< from the tree's start; with the top bit set another directory, else data
    uint32_t size = 0;      ///< of the data, where it lies at `leads_to` in the file, for lack of a tree
  };
  /// What there is of a type, in its order. As many as the file has room for, whatever it claims.
  std::vector<Entry> OfType(uint32_t type) const;
  /// The bytes in the first of its languages. None where they are more than `most`, or lie beyond the file.
  Bytes DataOf(const Entry& entry, size_t most) const;

 private:
  /// A part of the file and the address at which the program finds it in memory.
  struct Section {
    uint32_t address = 0, size = 0, at = 0;
  };
  static constexpr uint32_t kAllEntries = UINT32_MAX;
  void FindTree(uint64_t header_at);
  std::optional<uint64_t> PlaceOf(uint32_t address) const;
  std::vector<Entry> EntriesOf(uint32_t directory, uint32_t most = kAllEntries) const;
  std::vector<Entry> InTable(uint32_t type) const;

  RangeReader read_;
  std::vector<Section> sections_;
  std::optional<uint64_t> tree_;
  Bytes table_;  ///< of a program of 16 bits, and what comes behind it
};

}  // namespace zelvane
