#pragma once

#include <cstdint>
#include <vector>

#include "surface/raster/Canvas.h"

/// The figure of a gradient: a long line, three pixels wide, swept over the picture at right angles to itself
/// in half-pixel steps, each copy in its own colour.
namespace zelvane {

/// Direction of the way from (x1, y1) to (x2, y2) in degrees, 0 up to but not including 360: 0 points right,
/// 90 up the screen. A way of no length has 90.
double AngleOfLine(double x1, double y1, double x2, double y2);

/// An end line of a gradient in image pixels.
struct EndLine {
  Single x1, y1, X2, y2;
};

/// One copy of the line, its ends in whole pixels.
struct LineCopy {
  int32_t x1, y1, x2, y2;
  Color color;
};

/// The copies from the line `start` in direction `angle` (degrees) up to the line `end`, in the order they
/// are drawn; the colours run from `first` to `last`. Copies that fall on the one before, or that lie more
/// than four pixels left or right of a picture of that width, are spared.
std::vector<LineCopy> SweptCopies(const EndLine& start, const EndLine& end, double angle, int width,
                                  Color first, Color last);

/// Draws the copies on one another as `Canvas::Line` with a `DrawWidth` of 3 does, pixel for pixel, but each
/// only where the next leaves it to be seen.
void DrawCopies(Canvas& target, const std::vector<LineCopy>& copies);

}  // namespace zelvane
