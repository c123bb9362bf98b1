#include <cstdlib>
#include <utility>

#include "surface/raster/Canvas.h"
#include "surface/raster/Outlines.h"
#include "surface/raster/Spans.h"

/// Lines and points. Everything is worked out from the whole line in whole numbers, so what a surface shows
/// of it is exactly the cut-out of the same line on an endless surface.
namespace zelvane {
namespace {

void PaintThinLine(SpanPainter& painter, Place from, Place to) {
  const bool steep = std::abs(to.y - from.y) > std::abs(to.x - from.x);
  if (steep) {
    std::swap(from.x, from.y);
    std::swap(to.x, to.y);
  }
  if (from.x > to.x) std::swap(from, to);
  const Span columns = Span{from.x, to.x}.Intersected({0, (steep ? painter.Height() : painter.Width()) - 1});
  if (columns.IsEmpty()) return;
  ThinLine line(from, to, columns.first);
  for (int64_t column = columns.first; column <= columns.last; ++column, line.NextColumn()) {
    const int64_t row = line.Row();
    if (steep) {
      painter.Paint(column, {row, row});
    } else {
      painter.Paint(row, {column, column});
    }
  }
}

int64_t IntegerRoot128(Int128 value) {
  auto root = static_cast<int64_t>(std::sqrt(static_cast<long double>(value)));
  while (Int128{root} * root > value) --root;
  while (Int128{root + 1} * (root + 1) <= value) ++root;
  return root;
}

/// Larger than any column that is ever asked for.
constexpr int64_t kFar = int64_t{1} << 40;

/// The whole numbers u with low <= factor * u <= high.
template <class Wide>
Span Solved(Wide factor, Wide low, Wide high) {
  if (factor == 0) return low <= 0 && 0 <= high ? Span{-kFar, kFar} : Span{};
  if (factor < 0) return Solved<Wide>(-factor, -high, -low);
  const auto near = [](Wide u) { return static_cast<int64_t>(std::clamp<Wide>(u, -kFar, kFar)); };
  return {near(CeilDivided(low, factor)), near(FloorDivided(high, factor))};
}

/// The pixels within half the width of a segment: a disc round either end and the band between them, each of
/// which cuts a row in one span, as does their union.
///
/// All coordinates are doubled, so half pixels are whole: pixel x has its centre at 2x, and the width is the
/// reach to either side. `Wide` holds the products of two doubled coordinates.
template <class Wide>
class WideLine {
 public:
  WideLine(Place from, Place to, int64_t width)
      : from_(from), to_(to), width_(width), across_(to.x - from.x), down_(to.y - from.y) {
    const Int128 length2 = Int128{across_} * across_ + Int128{down_} * down_;
    length2_ = static_cast<Wide>(length2);
    reach_ = IntegerRoot128(length2 * width * width);
  }

  Span Rows() const {
    const auto [top, bottom] = std::minmax(from_.y, to_.y);
    return {CeilDivided<int64_t>(top - width_, 2), FloorDivided<int64_t>(bottom + width_, 2)};
  }
  Span Columns(int64_t row) const {
    Span columns = Disc(from_, 2 * row);
    if (from_ == to_) return columns;
    return columns.United(Disc(to_, 2 * row)).United(Band(2 * row));
  }

 private:
  static Span Halved(const Span& doubled) {
    return {CeilDivided<int64_t>(doubled.first, 2), FloorDivided<int64_t>(doubled.last, 2)};
  }
  Span Disc(Place centre, int64_t y) const {
    const int64_t away = std::abs(y - centre.y);
    if (away > width_) return {};
    const int64_t reach = IntegerRoot(width_ * width_ - away * away);
    return Halved({centre.x - reach, centre.x + reach});
  }
  /// With (u, v) the way from the first end to the pixel: the distance from the line is the cross product of
  /// (u, v) and the segment by its length, the place along it their scalar product.
  Span Band(int64_t y) const {
    const Wide v = y - from_.y;
    const Wide cross = v * across_, along = v * down_;
    const Span u = Solved<Wide>(down_, cross - reach_, cross + reach_)
                       .Intersected(Solved<Wide>(across_, -along, length2_ - along));
    if (u.IsEmpty()) return {};
    return Halved({u.first + from_.x, u.last + from_.x});
  }

  Place from_, to_;
  int64_t width_;
  Wide across_, down_, length2_, reach_;
};

template <class Wide>
void PaintRows(SpanPainter& painter, const WideLine<Wide>& line) {
  const Span rows = painter.Visible(line.Rows());
  for (int64_t y = rows.first; y <= rows.last; ++y) painter.Paint(y, line.Columns(y));
}

/// The centre of a pen on a pixel in doubled coordinates: of an even width half a pixel up and left.
Place PenCentre(Place pixel, int width) {
  const int64_t shift = width % 2 == 0 ? 1 : 0;
  return {2 * pixel.x - shift, 2 * pixel.y - shift};
}

void PaintWideLine(SpanPainter& painter, Place from, Place to, int width) {
  constexpr int64_t kNear = int64_t{1} << 28;  // the products of two such differences stay below 2^60
  const Place first = PenCentre(from, width), second = PenCentre(to, width);
  const auto [low, high] = std::minmax({first.x, first.y, second.x, second.y});
  if (-kNear < low && high < kNear) {
    PaintRows(painter, WideLine<int64_t>(first, second, width));
  } else {
    PaintRows(painter, WideLine<Int128>(first, second, width));
  }
}

}  // namespace

void Canvas::Line(Single x1, Single y1, Single x2, Single y2, Color color) {
  const auto left = ToInt32(x1), top = ToInt32(y1), right = ToInt32(x2), bottom = ToInt32(y2);
  if (!left || !top || !right || !bottom) return;
  SpanPainter painter(image_, color, draw_mode_ == kDrawInvert);
  const Place from{*left, *top}, to{*right, *bottom};
  if (PenWidth() == 1) {
    PaintThinLine(painter, from, to);
  } else {
    PaintWideLine(painter, from, to, PenWidth());
  }
  AddDamage(painter.Touched());
  current_x_ = x2;
  current_y_ = y2;
}

void Canvas::PSet(Single x, Single y, Color color) {
  Line(x, y, x, y, color);
}

}  // namespace zelvane
