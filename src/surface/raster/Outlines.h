#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "surface/raster/Spans.h"

/// Which pixels lines and round boxes cover, for those who paint them and those who only show where they
/// would be.
namespace zelvane {

__extension__ using Int128 = __int128;

struct Place {
  int64_t x = 0, y = 0;
  friend bool operator==(const Place&, const Place&) = default;
};

/// The row of a line of width 1 by its column, for lines that are at least as wide as high: the row nearest
/// to the line, halves downwards. Columns run from left to right whichever end the line was begun from.
class ThinLine {
 public:
  ThinLine(Place from, Place to, int64_t column)
      : row_(from.y), rise_(2 * (to.y - from.y)), run_(std::max<int64_t>(2 * (to.x - from.x), 1)) {
    const Int128 doubled = Int128{column - from.x} * rise_ + run_ / 2;
    row_ += static_cast<int64_t>(FloorDivided<Int128>(doubled, run_));
    rest_ = static_cast<int64_t>(doubled - FloorDivided<Int128>(doubled, run_) * run_);
  }

  int64_t Row() const { return row_; }
  void NextColumn() {
    rest_ += rise_;
    if (rest_ >= run_) {
      rest_ -= run_;
      ++row_;
    } else if (rest_ < 0) {
      rest_ += run_;
      --row_;
    }
  }

 private:
  int64_t row_, rise_, run_;  // rise and run doubled, for the half in "nearest"
  int64_t rest_ = 0;          // 0 to run_ - 1: how far beyond the row's lower limit
};

/// A size of corners that makes any box an ellipse.
inline constexpr int64_t kWholeEllipse = int64_t{1} << 40;

/// A filled box with elliptic corners. Its pixels are those with their centres in the shape that touches all
/// four sides of the box from inside.
struct RoundBox {
  int64_t left, top, width, height;
  int64_t corner_width, corner_height;  // of the whole ellipse, 0 to the box's own

  /// Corners of any size, below 0 by their absolute value.
  RoundBox(const Span& columns, const Span& rows, int64_t across, int64_t down)
      : left(columns.first),
        top(rows.first),
        width(columns.last - columns.first + 1),
        height(rows.last - rows.first + 1),
        corner_width(std::min(std::abs(across), width)),
        corner_height(std::min(std::abs(down), height)) {}

  /// Half the ellipse's width at `v` from its middle, both doubled. The long double root is exact for boxes
  /// up to 32,767 pixels: the next value that could be mistaken for a whole number is 2^-61 of itself away.
  int64_t CornerReach(int64_t v) const {
    if (v <= 1) return corner_width;
    const long double a = static_cast<long double>(corner_width), b = static_cast<long double>(corner_height);
    return static_cast<int64_t>(std::sqrt(a * a * static_cast<long double>((corner_height - v)) *
                                          static_cast<long double>(corner_height + v)) /
                                b);
  }
  Span Columns(int64_t y) const {
    if (y < top || y >= top + height || width <= 0) return {};
    const int64_t from_middle = std::abs(2 * (y - top) + 1 - height);
    const int64_t reach = CornerReach(from_middle - (height - corner_height));
    // An ellipse narrower than its outermost rows resolve still has its middle there.
    const int64_t inset = std::min((corner_width - reach) / 2, (width - 1) / 2);
    return {left + inset, left + width - 1 - inset};
  }
  /// The pixels whose four neighbours all belong to the box as well: what a thin outline leaves open.
  Span InnerColumns(int64_t y) const { return Inside(Columns(y - 1), Columns(y), Columns(y + 1)); }
  /// The same of a row's columns, for whoever has those of the rows above and below at hand.
  static Span Inside(const Span& above, const Span& row, const Span& below) {
    return Span{row.first + 1, row.last - 1}.Intersected(above).Intersected(below);
  }
  /// Grown by so many pixels on every side, corners and all; half pixels go up and left. Doubled.
  RoundBox Grown(int64_t doubled) const {
    RoundBox grown = *this;
    grown.left -= CeilDivided<int64_t>(doubled, 2);
    grown.top -= CeilDivided<int64_t>(doubled, 2);
    for (int64_t* size : {&grown.width, &grown.height, &grown.corner_width, &grown.corner_height})
      *size = std::max<int64_t>(*size + doubled, 0);
    return grown;
  }
};

}  // namespace zelvane
