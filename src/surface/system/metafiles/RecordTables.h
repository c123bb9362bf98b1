#pragma once

#include <QList>
#include <cstdint>

#include "surface/system/metafiles/Player.h"
#include "surface/system/metafiles/Records.h"

/// What is done for each kind of record. A routine gets the fields behind the record's type and size; one
/// that throws `RecordFault` has done nothing yet, but for a number of the object that it would have made.
namespace zelvane {

using RecordRoutine = void (*)(Player& player, Fields fields);

struct RecordEntry {
  uint32_t type;
  RecordRoutine play;
};

/// Null for kinds that paint nothing or aren't known.
RecordRoutine WmfRoutine(uint32_t type);
RecordRoutine EmfRoutine(uint32_t type);

/// The parts of the tables.
const QList<RecordEntry>& WmfShapeRecords();
const QList<RecordEntry>& WmfObjectRecords();
const QList<RecordEntry>& WmfBitmapRecords();
const QList<RecordEntry>& EmfShapeRecords();
const QList<RecordEntry>& EmfObjectRecords();
const QList<RecordEntry>& EmfBitmapRecords();

}  // namespace zelvane
