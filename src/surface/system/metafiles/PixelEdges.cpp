#include "surface/system/metafiles/PixelEdges.h"

#include <cmath>
#include <vector>

namespace zelvane {

namespace {

constexpr double kStraight = 1e-3;  // pixels that a straight line may be off

double Centre(double at) {
  return std::floor(at + kStraight) + 0.5;
}

/// Nothing but lines straight across and down, those that close a figure too.
bool IsRectilinear(const QPainterPath& path) {
  QPointF start, last;
  for (int i = 0; i <= path.elementCount(); ++i) {
    const bool closes = i == path.elementCount() || path.elementAt(i).isMoveTo();
    if (!closes && !path.elementAt(i).isLineTo()) return false;
    const QPointF to = closes ? start : path.elementAt(i);
    if (i > 0 && to.x() != last.x() && to.y() != last.y()) return false;
    if (closes && i < path.elementCount()) start = path.elementAt(i);
    last = closes ? start : to;
  }
  return true;
}

}  // namespace

std::optional<QRectF> BoxOf(const QPainterPath& path) {
  const int count = path.elementCount();
  if (count != 4 && count != 5) return std::nullopt;
  const QRectF box = path.controlPointRect();
  for (int i = 0; i < count; ++i) {
    const QPointF at = path.elementAt(i), next = path.elementAt((i + 1) % 4);
    const bool corner =
        (at.x() == box.left() || at.x() == box.right()) && (at.y() == box.top() || at.y() == box.bottom());
    const bool along = (at.x() == next.x()) != (at.y() == next.y());
    if (path.elementAt(i).isCurveTo() || !corner || !along) return std::nullopt;
  }
  if (count == 5 && QPointF(path.elementAt(4)) != QPointF(path.elementAt(0))) return std::nullopt;
  for (int i = 1; i < count; ++i)
    if (!path.elementAt(i).isLineTo()) return std::nullopt;
  return box;
}

QPainterPath OnPixels(const QPainterPath& path) {
  if (!IsRectilinear(path)) return path;
  QPainterPath crisp = path;
  for (int i = 0; i < path.elementCount(); ++i) {
    const QPointF at = path.elementAt(i);
    crisp.setElementPositionAt(i, std::floor(at.x() + 0.5), std::floor(at.y() + 0.5));
  }
  const QRectF box = crisp.controlPointRect();
  return box.width() == 0 || box.height() == 0 ? path : crisp;
}

QPainterPath OnPixelCentres(QPainterPath path) {
  const int count = path.elementCount();
  std::vector<bool> across(static_cast<size_t>(count)), down = across;
  int start = 0;
  for (int i = 1; i < count; ++i) {
    const QPointF from = path.elementAt(i - 1), to = path.elementAt(i);
    if (path.elementAt(i).isMoveTo()) start = i;
    if (!path.elementAt(i).isLineTo()) continue;
    // The end of a closed figure is its start as well.
    const bool closes = to == QPointF(path.elementAt(start));
    for (const int at : {i - 1, i, closes ? start : i}) {
      if (std::abs(from.y() - to.y()) < kStraight && from != to) across[static_cast<size_t>(at)] = true;
      if (std::abs(from.x() - to.x()) < kStraight && from != to) down[static_cast<size_t>(at)] = true;
    }
    if (closes && across[static_cast<size_t>(start)]) across[static_cast<size_t>(i)] = true;
    if (closes && down[static_cast<size_t>(start)]) down[static_cast<size_t>(i)] = true;
  }
  for (int i = 0; i < count; ++i) {
    const QPointF at = path.elementAt(i);
    path.setElementPositionAt(i, down[static_cast<size_t>(i)] ? Centre(at.x()) : at.x(),
                              across[static_cast<size_t>(i)] ? Centre(at.y()) : at.y());
  }
  return path;
}

QRectF OnPixelCentres(const QRectF& box) {
  const double left = Centre(box.left()), top = Centre(box.top());
  const double right = std::ceil(box.right() - kStraight) - 0.5,
               bottom = std::ceil(box.bottom() - kStraight) - 0.5;
  return {left, top, std::max(0.0, right - left), std::max(0.0, bottom - top)};
}

}  // namespace zelvane
