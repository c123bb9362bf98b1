#include "surface/system/metafiles/RecordTables.h"

#include <unordered_map>

namespace zelvane {

namespace {

using Table = std::unordered_map<uint32_t, RecordRoutine>;

Table Joined(std::initializer_list<QList<RecordEntry>> parts) {
  Table table;
  for (const QList<RecordEntry>& part : parts)
    for (const RecordEntry& entry : part) table.emplace(entry.type, entry.play);
  return table;
}

RecordRoutine Find(const Table& table, uint32_t type) {
  const auto found = table.find(type);
  return found == table.end() ? nullptr : found->second;
}

}  // namespace

RecordRoutine WmfRoutine(uint32_t type) {
  static const Table kTable = Joined({WmfShapeRecords(), WmfObjectRecords(), WmfBitmapRecords()});
  return Find(kTable, type);
}

RecordRoutine EmfRoutine(uint32_t type) {
  static const Table kTable = Joined({EmfShapeRecords(), EmfObjectRecords(), EmfBitmapRecords()});
  return Find(kTable, type);
}

}  // namespace zelvane
