#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <optional>

#include "surface/system/metafiles/Player.h"
#include "surface/system/metafiles/Records.h"

/// Fields that many records of metafiles of 32 bits have, from the first to the last.
namespace zelvane {

/// The type and the size of a record, and the bounds that many begin with.
inline constexpr uint64_t kEmfRecordStart = 8, kEmfBounds = 16;

inline QPointF ReadPoint(Fields& fields) {
  const double x = fields.Int32();
  return {x, double{1} * fields.Int32()};
}

inline QSizeF ReadSize(Fields& fields) {
  const double width = fields.Int32();
  return {width, double{1} * fields.Int32()};
}

/// Left, top, right, bottom.
inline QRectF ReadBox(Fields& fields) {
  const QPointF corner = ReadPoint(fields);
  return {corner, ReadPoint(fields)};
}

/// Left, top, width, height.
inline QRectF ReadPlace(Fields& fields) {
  const QPointF corner = ReadPoint(fields);
  return {corner, ReadSize(fields)};
}

/// Where a record's bitmap lies within it: places and sizes of its header and its bits.
inline DibParts ReadDibParts(Fields& fields) {
  const uint64_t header = fields.Long(), header_size = fields.Long();
  const uint64_t bits = fields.Long(), bits_size = fields.Long();
  DibParts parts;
  if (header_size == 0) return parts;
  parts.header = fields.Within(header, header_size);
  parts.bits = fields.Within(bits, bits_size);
  return parts;
}

}  // namespace zelvane
