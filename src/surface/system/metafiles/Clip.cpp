#include "surface/system/metafiles/Clip.h"

#include "surface/system/metafiles/PixelEdges.h"

namespace zelvane {

namespace {

QPainterPath PathOf(const QRectF& box) {
  QPainterPath path;
  path.addRect(box);
  return path;
}

}  // namespace

void Clip::Intersect(const QPainterPath& area) {
  const QPainterPath crisp = OnPixels(area);
  const auto box = BoxOf(crisp), last = parts_.isEmpty() ? std::nullopt : BoxOf(parts_.last());
  if (box && last) {
    parts_.last() = PathOf(*last & *box);
  } else {
    parts_.append(crisp);
  }
}

void Clip::Intersect(const Clip& other) {
  if (parts_.isEmpty()) {
    parts_ = other.parts_;
  } else {
    parts_ += other.parts_;
  }
}

void Clip::Exclude(const QPainterPath& area, const QRectF& bounds) {
  QPainterPath rest = OnPixels(area);
  // All that can be drawn on and more, so that no edge of it shows; the area is a hole within.
  rest.addRect(rest.controlPointRect().united(bounds).adjusted(-1, -1, 1, 1));
  rest.setFillRule(Qt::OddEvenFill);
  parts_.append(rest);
}

void Clip::Offset(QPointF by) {
  for (QPainterPath& part : parts_) part.translate(by);
}

}  // namespace zelvane
