#pragma once

#include <QList>
#include <QPainterPath>
#include <QRectF>

namespace zelvane {

/// Where drawing shows: inside every one of some outlines, in pixels. Boxes lie on whole pixels, as they do
/// where metafiles come from.
class Clip {
 public:
  const QList<QPainterPath>& Parts() const { return parts_; }

  void Intersect(const QPainterPath& area);
  /// `bounds` is all that can be drawn on.
  void Exclude(const QPainterPath& area, const QRectF& bounds);
  void Offset(QPointF by);
  void Reset() { parts_.clear(); }
  void Intersect(const Clip& other);
  /// Nothing was changed since one was copied from the other.
  bool IsSharedWith(const Clip& other) const { return parts_.isSharedWith(other.parts_); }

 private:
  QList<QPainterPath> parts_;
};

}  // namespace zelvane
