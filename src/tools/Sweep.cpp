#include "tools/Sweep.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "surface/raster/Numbers.h"
#include "surface/raster/Spans.h"
#include "tools/Ramp.h"

namespace zelvane {
namespace {

constexpr double kPi = 3.14159265358979;
constexpr double kStep = 0.5;
constexpr int kMargin = 4;
/// Rows that are painted together; few enough for their pixels to stay in the nearest cache.
constexpr int kBandRows = 128;

double Squared(double value) {
  return value * value;
}

/// Plain drawing, as `Canvas` does it.
void DrawCopy(Canvas& target, const LineCopy& copy) {
  target.Line(static_cast<Single>(copy.x1), static_cast<Single>(copy.y1), static_cast<Single>(copy.x2),
              static_cast<Single>(copy.y2), copy.color);
}

/// Whether a line's end lies so far beyond the surface, on the side that the line runs to, that neither its
/// round cap nor anything further on could be seen. What is seen is then a piece of an endless strip.
bool EndsOutside(int32_t x, int32_t y, int32_t from_x, int32_t from_y, const Canvas& target) {
  const auto beyond = [](int32_t end, int32_t from, int extent) {
    return (end > from && end > extent + 1) || (end < from && end < -2);
  };
  return beyond(x, from_x, target.ScaleWidth()) || beyond(y, from_y, target.ScaleHeight());
}

bool IsStrip(const LineCopy& copy, const Canvas& target) {
  return EndsOutside(copy.x1, copy.y1, copy.x2, copy.y2, target) &&
         EndsOutside(copy.x2, copy.y2, copy.x1, copy.y1, target);
}

/// A column that is stepped from row to row, in units of 2^-40 pixel.
///
/// It starts half a divisor's share above the exact value. A gradient's lines are shorter than 2^19 and a
/// surface has less than 2^15 rows, so what is cut off at each step never adds up to that share, nor does the
/// share ever reach the next whole number: the whole part is always that of the exact fraction.
struct Stepper {
  static constexpr int kFraction = 40;
  int64_t value = 0;

  /// A fraction, cut off below.
  static int64_t Fixed(int64_t numerator, int64_t divisor) {
    const int64_t whole = FloorDivided(numerator, divisor);
    return (whole << kFraction) + ((numerator - whole * divisor) << kFraction) / divisor;
  }
  static Stepper At(int64_t numerator, int64_t divisor) {
    return {Fixed(numerator, divisor) + (int64_t{1} << (kFraction - 1)) / divisor};
  }
  int Whole() const { return static_cast<int>(value >> kFraction); }
};

/// A strip three pixels wide round an endless line, walked down row by row. With A and B the line's extent
/// across and down, the pixel (x, y) belongs to it where |(y - y1) A - (x - x1) B| is at most 1.5 times the
/// line's length.
class Strip {
 public:
  Strip(const LineCopy& copy, int width, int height) : pixel_(ToPixel(copy.color)) {
    const bool upwards = copy.y2 < copy.y1;
    x_ = upwards ? copy.x2 : copy.x1;
    y_ = upwards ? copy.y2 : copy.y1;
    across_ = int64_t{upwards ? copy.x1 : copy.x2} - x_;
    down_ = int64_t{upwards ? copy.y1 : copy.y2} - y_;
    reach_ = IntegerRoot(9 * (across_ * across_ + down_ * down_) / 4);
    FindRows(width, height);
    if (first_row_ <= last_row_ && down_ > 0) FindColumns();
    if (down_ == 0) right_.value = int64_t{width} << Stepper::kFraction;
  }

  Pixel Paint() const { return pixel_; }
  int FirstRow() const { return first_row_; }
  int LastRow() const { return last_row_; }
  int Left() const { return left_.Whole(); }
  int Right() const { return right_.Whole(); }
  void NextRow() {
    left_.value += step_;
    right_.value += step_;
  }

 private:
  /// The rows in which it meets columns 0 to `width` - 1.
  void FindRows(int width, int height) {
    Span rows{0, int64_t{height} - 1};
    const int64_t low = -x_ * down_ - reach_, high = (width - 1 - x_) * down_ + reach_;
    if (across_ > 0) {
      rows = rows.Intersected({y_ + CeilDivided(low, across_), y_ + FloorDivided(high, across_)});
    } else if (across_ < 0) {
      rows = rows.Intersected({y_ + CeilDivided(-high, -across_), y_ + FloorDivided(-low, -across_)});
    } else if (low > 0 || high < 0) {
      rows = {};
    }
    first_row_ = static_cast<int>(std::min<int64_t>(rows.first, height));
    last_row_ = static_cast<int>(std::max<int64_t>(rows.last, -1));
  }
  void FindColumns() {
    const int64_t middle = (first_row_ - y_) * across_ + x_ * down_;
    left_ = Stepper::At(middle - reach_ + down_ - 1, down_);
    right_ = Stepper::At(middle + reach_, down_);
    step_ = Stepper::Fixed(across_, down_);
  }

  int64_t x_, y_, across_, down_, reach_;
  int first_row_ = 0, last_row_ = -1;
  Stepper left_, right_;
  int64_t step_ = 0;
  Pixel pixel_;
};

/// A row of a surface and the columns of it that are painted, `left` up to but not including `end`.
struct PaintedRow {
  Pixel* pixels = nullptr;
  int left = 0, end = 0;

  bool IsEmpty() const { return left == end; }
  /// Paints what is free of the columns `first` to `last`, which overlap or adjoin the painted ones. Nearly
  /// always that is none or one at either end, so the outermost are written in any case, with what they had
  /// where they aren't free: that is quicker than to guess wrong.
  void Widen(int first, int last, Pixel paint) {
    if (IsEmpty()) left = end = first;
    pixels[first] = first < left ? paint : pixels[first];
    pixels[last] = last >= end ? paint : pixels[last];
    for (int x = first + 1; x < left; ++x) pixels[x] = paint;
    for (int x = end; x < last; ++x) pixels[x] = paint;
    left = std::min(left, first);
    end = std::max(end, last + 1);
  }
};

using Band = std::array<PaintedRow, kBandRows>;

/// Paints down to `bottom` or to the strip's own end, and returns the strip as it stands there. By value, so
/// that it stays in registers meanwhile.
Strip PaintStrip(Band& band, Strip strip, int top, int bottom, int width) {
  const int last = std::min(strip.LastRow(), bottom);
  for (int y = std::max(strip.FirstRow(), top); y <= last; ++y, strip.NextRow()) {
    band[static_cast<size_t>(y - top)].Widen(std::max(strip.Left(), 0), std::min(strip.Right(), width - 1),
                                             strip.Paint());
  }
  return strip;
}

/// From the last strip to the first: what is painted stays, so each pixel is painted once.
///
/// What is painted of a row never falls apart, since neighbouring strips leave no gap. Copies stand half a
/// pixel apart; of those whose first ends round to one pixel at most two in a row are spared, and rounding
/// moves an end by at most 0.71. Neighbours are thus less than 1.5 + 2 * 0.71 pixels apart everywhere, and
/// they are three wide. As rounding keeps the order of numbers, no two of them lean to opposite sides of a
/// row.
void PaintBand(Canvas& target, std::vector<Strip>& strips, int top, int bottom) {
  const Bitmap::Rows rows = target.WritableRows();
  Band band;
  for (int y = top; y <= bottom; ++y) band[static_cast<size_t>(y - top)].pixels = rows[y];
  for (auto strip = strips.rbegin(); strip != strips.rend(); ++strip) {
    if (strip->FirstRow() <= bottom && strip->LastRow() >= top)
      *strip = PaintStrip(band, *strip, top, bottom, target.ScaleWidth());
  }
  for (int y = top; y <= bottom; ++y) {
    const PaintedRow& row = band[static_cast<size_t>(y - top)];
    if (!row.IsEmpty()) target.AddDamage({row.left, y, row.end, y + 1});
  }
}

void PaintStrips(Canvas& target, std::vector<Strip>& strips) {
  for (int top = 0; top < target.ScaleHeight(); top += kBandRows) {
    PaintBand(target, strips, top, std::min(top + kBandRows, target.ScaleHeight()) - 1);
  }
}

}  // namespace

double AngleOfLine(double x1, double y1, double x2, double y2) {
  const double t = x1 != x2 ? std::fabs(std::atan((y2 - y1) / (x2 - x1)) * (180 / kPi)) : 90;
  if (x1 > x2) return y1 > y2 ? 180 - t : y1 < y2 ? t + 180 : 180;
  if (x1 < x2) return y1 > y2 ? t : y1 < y2 ? 360 - t : 0;
  return y1 < y2 ? 270 : 90;
}

std::vector<LineCopy> SweptCopies(const EndLine& start, const EndLine& end, double angle, int width,
                                  Color first, Color last) {
  const double rad = angle * (kPi / 180);
  const double L = std::sqrt(Squared(end.x1 - start.x1) + Squared(end.y1 - start.y1));
  const auto Length = ToInt32(L);
  std::vector<LineCopy> copies;
  int32_t lx = 0, ly = 0;
  for (double d = 0; d <= L; d += kStep) {
    const double u = std::cos(-rad) * d, v = std::sin(-rad) * d;
    const auto p = ToInt32(u + start.x1), q = ToInt32(v + start.y1);
    const auto p2 = ToInt32(u + start.X2), q2 = ToInt32(v + start.y2), Position = ToInt32(d);
    if (!p || !q || !p2 || !q2 || !Length || !Position) break;
    if ((*p == lx && *q == ly) || std::max(*p, *p2) < -kMargin) continue;
    if (std::min(*p, *p2) > width + kMargin) continue;
    copies.push_back({*p, *q, *p2, *q2, GradientColor(*Length, *Position, first, last)});
    lx = *p;
    ly = *q;
  }
  return copies;
}

void DrawCopies(Canvas& target, const std::vector<LineCopy>& copies) {
  const auto last_plain = std::find_if(copies.rbegin(), copies.rend(),
                                       [&](const LineCopy& copy) { return !IsStrip(copy, target); });
  std::vector<Strip> strips;
  strips.reserve(static_cast<size_t>(last_plain - copies.rbegin()));
  for (auto copy = copies.begin(); copy != last_plain.base(); ++copy) DrawCopy(target, *copy);
  for (auto copy = last_plain.base(); copy != copies.end(); ++copy) {
    strips.emplace_back(*copy, target.ScaleWidth(), target.ScaleHeight());
  }
  if (strips.empty()) return;
  PaintStrips(target, strips);
  target.SetCurrentX(static_cast<Single>(copies.back().x2));
  target.SetCurrentY(static_cast<Single>(copies.back().y2));
}

}  // namespace zelvane
