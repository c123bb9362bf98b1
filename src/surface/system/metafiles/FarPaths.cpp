#include "surface/system/metafiles/FarPaths.h"

#include <QPolygonF>
#include <QTransform>

namespace zelvane {

namespace {

enum class Side { Left, Top, Right, Bottom };

double Coordinate(QPointF point, Side side) {
  return side == Side::Left || side == Side::Right ? point.x() : point.y();
}

/// Where two points on both sides of a limit are joined.
QPointF Crossing(QPointF from, QPointF to, Side side, double limit) {
  const double start = Coordinate(from, side);
  return from + (to - from) * ((limit - start) / (Coordinate(to, side) - start));
}

/// What a closed figure has on the inner side of a limit (the method of Sutherland and Hodgman). How often it
/// goes round a place there stays as it was.
QPolygonF Cut(const QPolygonF& figure, Side side, double limit) {
  const auto is_inside = [&](QPointF point) {
    const double at = Coordinate(point, side);
    return side == Side::Left || side == Side::Top ? at >= limit : at <= limit;
  };
  QPolygonF cut;
  for (qsizetype i = 0; i < figure.size(); ++i) {
    const QPointF& from = figure[i > 0 ? i - 1 : figure.size() - 1];
    const QPointF& to = figure[i];
    if (is_inside(from) != is_inside(to)) cut.append(Crossing(from, to, side, limit));
    if (is_inside(to)) cut.append(to);
  }
  return cut;
}

}  // namespace

bool IsNear(const QRectF& box, const QRectF& bounds) {
  return bounds.adjusted(-kNearReach, -kNearReach, kNearReach, kNearReach).contains(box);
}

QPainterPath Near(const QPainterPath& area, const QRectF& bounds) {
  if (area.isEmpty() || IsNear(area.controlPointRect(), bounds)) return area;
  constexpr double kFiner = 8;  // curves become lines within a fraction of a pixel
  const double reach = kNearReach / 2;
  const QRectF limits = bounds.adjusted(-reach, -reach, reach, reach);
  QPainterPath near;
  near.setFillRule(area.fillRule());
  for (QPolygonF figure : area.toSubpathPolygons(QTransform::fromScale(kFiner, kFiner))) {
    figure = QTransform::fromScale(1 / kFiner, 1 / kFiner).map(figure);
    figure = Cut(Cut(figure, Side::Left, limits.left()), Side::Right, limits.right());
    figure = Cut(Cut(figure, Side::Top, limits.top()), Side::Bottom, limits.bottom());
    if (figure.isEmpty()) continue;
    near.addPolygon(figure);
    near.closeSubpath();
  }
  return near;
}

}  // namespace zelvane
