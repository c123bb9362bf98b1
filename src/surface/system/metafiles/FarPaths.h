#pragma once

#include <QPainterPath>
#include <QRectF>

namespace zelvane {

/// How far beyond its sheet an outline may go before it's cut, in pixels: the painter walks along all of it.
inline constexpr double kNearReach = 2000;

/// An area as it shows within the bounds: itself where it stays near them, else cut off not far outside.
QPainterPath Near(const QPainterPath& area, const QRectF& bounds);
bool IsNear(const QRectF& box, const QRectF& bounds);

}  // namespace zelvane
