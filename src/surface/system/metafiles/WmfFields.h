#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include "surface/system/metafiles/Player.h"
#include "surface/system/metafiles/Records.h"

/// Fields that many records of metafiles of 16 bits have; most stand from the last to the first.
namespace zelvane {

inline QPointF PointYX(Fields& fields) {
  const double y = fields.Int16();
  return {double{1} * fields.Int16(), y};
}

inline QPointF PointXY(Fields& fields) {
  const double x = fields.Int16();
  return {x, double{1} * fields.Int16()};
}

inline QSizeF SizeYX(Fields& fields) {
  const QPointF size = PointYX(fields);
  return {size.x(), size.y()};
}

/// Bottom, right, top, left.
inline QRectF BoxBackwards(Fields& fields) {
  const QPointF corner = PointYX(fields);
  return {PointYX(fields), corner};
}

/// Height, width, then top and left.
inline QRectF PlaceBackwards(Fields& fields) {
  const QSizeF size = SizeYX(fields);
  return {PointYX(fields), size};
}

inline Points PointList(Fields& fields, uint32_t count) {
  fields.Expect(count, 4);
  Points points;
  points.reserve(count);
  for (uint32_t i = 0; i < count; ++i) points.append(PointXY(fields));
  return points;
}

}  // namespace zelvane
