#include <cstdlib>
#include <utility>

#include "surface/raster/Canvas.h"
#include "surface/raster/Outlines.h"
#include "surface/raster/Spans.h"

/// Boxes, boxes with round corners and ellipses: a border of the pen's width round an inside.
namespace zelvane {
namespace {

/// Paints row by row what `outer` spans: what `inner` spans of it with `inside` (none: left as it is), the
/// rest with `border`.
template <class Outer, class Inner>
void PaintRing(SpanPainter& border, SpanPainter* inside, const Span& rows, Outer outer, Inner inner) {
  const Span visible = border.Visible(rows);
  for (int64_t y = visible.first; y <= visible.last; ++y) {
    const Span whole = outer(y), hole = inner(y).Intersected(whole);
    if (hole.IsEmpty()) {
      border.Paint(y, whole);
      continue;
    }
    border.Paint(y, {whole.first, hole.first - 1});
    border.Paint(y, {hole.last + 1, whole.last});
    if (inside) inside->Paint(y, hole);
  }
}

/// The outline of a box drawn with a round pen: every pixel within half the width of one of its four edges.
/// Coordinates are doubled, so that the half pixels of an even width are whole.
class BoxOutline {
 public:
  BoxOutline(Span columns, Span rows, int width)
      : columns_(Doubled(columns, width)), rows_(Doubled(rows, width)), width_(width) {}

  Span Rows() const { return Covered(rows_, width_); }
  Span Outer(int64_t row) const {
    const int64_t away = std::max({rows_.first - 2 * row, 2 * row - rows_.last, int64_t{0}});
    return away > width_ ? Span{} : Covered(columns_, IntegerRoot(width_ * width_ - away * away));
  }
  Span Inner(int64_t row) const {
    const Span open = Covered(rows_, -width_ - 1);
    return row < open.first || row > open.last ? Span{} : Covered(columns_, -width_ - 1);
  }

 private:
  static Span Doubled(const Span& pixels, int width) {
    const int64_t shift = width % 2 == 0 ? 1 : 0;
    return {2 * pixels.first - shift, 2 * pixels.last - shift};
  }
  /// The pixels with their centres in the span widened by `reach` on both sides.
  static Span Covered(const Span& doubled, int64_t reach) {
    return {CeilDivided<int64_t>(doubled.first - reach, 2), FloorDivided<int64_t>(doubled.last + reach, 2)};
  }

  Span columns_, rows_;
  int64_t width_;
};

/// The border runs from the shape grown by half a pen to the one shrunk by half a pen, less the pixel on the
/// outline itself.
void PaintRoundBox(SpanPainter& border, SpanPainter* inside, const RoundBox& box, int pen) {
  const RoundBox outer = box.Grown(pen - 1), inner = box.Grown(1 - pen);
  PaintRing(
      border, inside, {outer.top, outer.top + outer.height - 1}, [&](int64_t y) { return outer.Columns(y); },
      [&](int64_t y) { return inner.InnerColumns(y); });
}

Span Ordered(int64_t a, int64_t b) {
  return {std::min(a, b), std::max(a, b)};
}

}  // namespace

/// Hands `paint` the painters of the border and of the inside, which is null where the inside stays.
template <class Paint>
void Canvas::PaintOutlined(Color color, Paint&& paint) {
  const bool inverts = draw_mode_ == kDrawInvert;
  SpanPainter border(image_, color, inverts), inside(image_, fill_color_, inverts);
  paint(border, fill_style_ == kFillTransparent ? nullptr : &inside);
  AddDamage(border.Touched().United(inside.Touched()));
}

void Canvas::Box(Single x1, Single y1, Single x2, Single y2, Color color) {
  const auto left = ToInt32(x1), top = ToInt32(y1), right = ToInt32(x2), bottom = ToInt32(y2);
  if (!left || !top || !right || !bottom) return;
  const BoxOutline outline(Ordered(*left, *right), Ordered(*top, *bottom), PenWidth());
  PaintOutlined(color, [&](SpanPainter& border, SpanPainter* inside) {
    PaintRing(
        border, inside, outline.Rows(), [&](int64_t y) { return outline.Outer(y); },
        [&](int64_t y) { return outline.Inner(y); });
  });
  current_x_ = x2;
  current_y_ = y2;
}

void Canvas::FilledBox(Single x1, Single y1, Single x2, Single y2, Color color) {
  const auto left = ToInt32(x1), top = ToInt32(y1), right = ToInt32(x2), bottom = ToInt32(y2);
  if (!left || !top || !right || !bottom) return;
  SpanPainter painter(image_, color, draw_mode_ == kDrawInvert);
  const Span rows = painter.Visible(Ordered(*top, *bottom));
  for (int64_t y = rows.first; y <= rows.last; ++y) painter.Paint(y, Ordered(*left, *right));
  AddDamage(painter.Touched());
  current_x_ = x2;
  current_y_ = y2;
}

void Canvas::Circle(Single x, Single y, Single radius, Color color, double aspect) {
  if (!(radius >= 0) || !(aspect >= 0)) return;
  const auto centre_x = ToInt32(x), centre_y = ToInt32(y);
  const auto across = ToInt32(aspect > 1 ? radius / aspect : radius);
  const auto down = ToInt32(aspect < 1 ? radius * aspect : radius);
  if (!centre_x || !centre_y || !across || !down) return;
  const RoundBox ellipse({int64_t{*centre_x} - *across, int64_t{*centre_x} + *across},
                         {int64_t{*centre_y} - *down, int64_t{*centre_y} + *down}, kWholeEllipse,
                         kWholeEllipse);
  PaintOutlined(color, [&](SpanPainter& border, SpanPainter* inside) {
    PaintRoundBox(border, inside, ellipse, PenWidth());
  });
  current_x_ = x;
  current_y_ = y;
}

void Canvas::RoundRect(int32_t left, int32_t top, int32_t right, int32_t bottom, int32_t corner_width,
                       int32_t corner_height) {
  if (left == right || top == bottom) return;
  const Span columns{std::min(left, right), int64_t{std::max(left, right)} - 1};
  const Span rows{std::min(top, bottom), int64_t{std::max(top, bottom)} - 1};
  const RoundBox box(columns, rows, corner_width, corner_height);
  PaintOutlined(fore_color_, [&](SpanPainter& border, SpanPainter* inside) {
    PaintRoundBox(border, inside, box, PenWidth());
  });
}

}  // namespace zelvane
