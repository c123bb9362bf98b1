#pragma once

#include <QPainterPath>
#include <QRectF>
#include <optional>

/// Straight edges brought to whole pixels, as metafiles have them where they come from: boxes are crisp and
/// neighbours leave no seam, while everything slanting or round stays smooth.
namespace zelvane {

/// The box that a path is; no value where it is anything else.
std::optional<QRectF> BoxOf(const QPainterPath& path);

/// An area whose every edge is straight across or down, with its edges between pixels, halves right and down;
/// as it was where nothing would be left of it, or any other.
QPainterPath OnPixels(const QPainterPath& area);

/// For a line of one pixel: what goes straight across or down comes to lie on the middle of its pixels.
QPainterPath OnPixelCentres(QPainterPath path);
/// The box on the middle of the outermost pixels that it covers.
QRectF OnPixelCentres(const QRectF& box);

}  // namespace zelvane
