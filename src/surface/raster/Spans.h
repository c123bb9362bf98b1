#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "surface/raster/Bitmap.h"
#include "surface/raster/Color.h"
#include "surface/raster/Rect.h"

/// Every shape is painted as spans of rows, at most once a pixel, so that inverting comes out right.
namespace zelvane {

/// Neighbouring pixels of a row, or neighbouring rows; both ends included. Wider than 32 bits since the ends
/// of a shape may lie beyond them once the pen is added.
struct Span {
  int64_t first = 0, last = -1;

  bool IsEmpty() const { return last < first; }
  Span Intersected(const Span& other) const {
    return {std::max(first, other.first), std::min(last, other.last)};
  }
  /// The smallest span that holds both.
  Span United(const Span& other) const {
    if (IsEmpty()) return other;
    if (other.IsEmpty()) return *this;
    return {std::min(first, other.first), std::max(last, other.last)};
  }
};

/// The largest whole number whose square is at most `value`, 0 to 2^52: up to there the double root rounded
/// down is exact.
inline int64_t IntegerRoot(int64_t value) {
  return static_cast<int64_t>(std::sqrt(static_cast<double>(value)));
}

/// Division towards minus infinity and towards infinity, by a positive divisor.
template <class Integer>
constexpr Integer FloorDivided(Integer value, Integer divisor) {
  return value / divisor - (value % divisor < 0 ? 1 : 0);
}
template <class Integer>
constexpr Integer CeilDivided(Integer value, Integer divisor) {
  return value / divisor + (value % divisor > 0 ? 1 : 0);
}

/// Paints spans of one bitmap in one colour, or inverts them, and keeps the rectangle it has touched.
class SpanPainter {
 public:
  SpanPainter(Bitmap& target, Color color, bool inverts)
      : target_(target), pixel_(ToPixel(color)), inverts_(inverts) {}

  int Width() const { return target_.Width(); }
  int Height() const { return target_.Height(); }
  /// The rows of `rows` that the bitmap has.
  Span Visible(const Span& rows) const { return rows.Intersected({0, Height() - 1}); }
  void Paint(int64_t y, const Span& span);
  /// Empty where every span lay beyond the bitmap.
  Rect Touched() const;

 private:
  Bitmap& target_;
  Pixel pixel_;
  bool inverts_;
  int left_ = std::numeric_limits<int>::max(), top_ = left_, right_ = -1, bottom_ = -1;
};

}  // namespace zelvane
