#include "surface/forms/picture/Overlay.h"

#include <QRegion>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "surface/forms/picture/OverlayTracer.h"
#include "surface/forms/picture/PixelPaint.h"
#include "surface/raster/Outlines.h"

namespace zelvane {
namespace {

constexpr int kFrame = 1;
/// Farther places are all as far out of view; products of two distances stay within 64 bits.
constexpr double kFar = 1 << 29;

/// The cell of so many units that a place belongs to; no number counts as 0.
int64_t CellAt(double place, int units) {
  return std::isnan(place) ? 0 : static_cast<int64_t>(std::clamp(RoundHalfEven(place / units), -kFar, kFar));
}

/// Notes for painting what an overlay covers: pieces that lie together in one rectangle, unless too much
/// would be painted that isn't covered.
class OverlayToucher : public OverlayTracer {
 public:
  using OverlayTracer::OverlayTracer;

  void Cover(const Rect& piece) override {
    const Rect seen = piece.Intersected(Inside());
    if (seen.IsEmpty()) return;
    const Rect both = strip_.United(seen);
    const bool is_thin = both.Width() == 1 || both.Height() == 1;
    if (!is_thin && static_cast<int64_t>(both.Width()) * both.Height() > kLargestStrip) {
      Note();
      strip_ = seen;
    } else {
      strip_ = both;
    }
  }

  QRegion Touched() {
    Note();
    return touched_;
  }

 private:
  static constexpr int kLargestStrip = 4096;  // pixels

  void Note() {
    if (!strip_.IsEmpty()) touched_ += QRect(strip_.left, strip_.top, strip_.Width(), strip_.Height());
  }

  Rect strip_;
  QRegion touched_;
};

/// Square cells of the view: image pixels as they are shown, or single units.
class Cells {
 public:
  Cells(OverlayTracer& tracer, int units) : tracer_(tracer), units_(units) {
    const Rect& inside = tracer.Inside();
    columns_ = {inside.left / units, (inside.right - 1) / units};
    rows_ = {inside.top / units, (inside.bottom - 1) / units};
  }

  /// The only ones that matter.
  const Span& Columns() const { return columns_; }
  const Span& Rows() const { return rows_; }

  void Cover(const Span& columns, const Span& rows) const {
    const Span x = columns.Intersected(columns_), y = rows.Intersected(rows_);
    if (x.IsEmpty() || y.IsEmpty()) return;
    tracer_.Cover({First(x), First(y), First(x) + Count(x), First(y) + Count(y)});
  }
  void Cover(const Span& columns, int64_t row) const { Cover(columns, {row, row}); }

 private:
  int First(const Span& span) const { return static_cast<int>(span.first) * units_; }
  int Count(const Span& span) const { return static_cast<int>(span.last - span.first + 1) * units_; }
  OverlayTracer& tracer_;
  int units_;
  Span columns_, rows_;
};

void TraceRectangle(const Span& columns, const Span& rows, const Cells& cells) {
  const Span between{rows.first + 1, rows.last - 1};
  cells.Cover(columns, rows.first);
  if (rows.last > rows.first) cells.Cover(columns, rows.last);
  cells.Cover({columns.first, columns.first}, between);
  if (columns.last > columns.first) cells.Cover({columns.last, columns.last}, between);
}

/// Joins rows that cover the same columns: an outline goes along with every step of a brush, and costs by the
/// piece.
class RowJoiner {
 public:
  explicit RowJoiner(const Cells& cells) : cells_(cells) {}
  ~RowJoiner() { cells_.Cover(columns_, rows_); }
  RowJoiner(const RowJoiner&) = delete;
  RowJoiner& operator=(const RowJoiner&) = delete;

  void Cover(const Span& columns, int64_t row) {
    if (columns.first != columns_.first || columns.last != columns_.last || row != rows_.last + 1) {
      cells_.Cover(columns_, rows_);
      columns_ = columns;
      rows_.first = row;
    }
    rows_.last = row;
  }

 private:
  const Cells& cells_;
  Span columns_, rows_;
};

/// First all that lies left, then what lies right.
void TraceRoundBox(const RoundBox& box, const Cells& cells) {
  const Span rows = Span{box.top, box.top + box.height - 1}.Intersected(cells.Rows());
  std::vector<Span> columns;
  for (int64_t y = rows.first - 1; y <= rows.last + 1; ++y) columns.push_back(box.Columns(y));
  for (const bool leftward : {true, false}) {
    RowJoiner joined(cells);
    for (int64_t y = rows.first; y <= rows.last; ++y) {
      const Span* const row = &columns[static_cast<size_t>(y - rows.first + 1)];
      const Span hollow = RoundBox::Inside(row[-1], *row, row[1]).Intersected(*row);
      if (hollow.IsEmpty()) {
        if (leftward) joined.Cover(*row, y);
      } else {
        joined.Cover(leftward ? Span{row->first, hollow.first - 1} : Span{hollow.last + 1, row->last}, y);
      }
    }
  }
}

/// In runs along the longer axis.
void TraceLine(Place from, Place to, const Cells& cells) {
  const bool is_steep = std::abs(to.y - from.y) > std::abs(to.x - from.x);
  if (is_steep) std::swap(from.x, from.y), std::swap(to.x, to.y);
  if (from.x > to.x) std::swap(from, to);
  const Span seen = Span{from.x, to.x}.Intersected(is_steep ? cells.Rows() : cells.Columns());
  ThinLine line(from, to, seen.first);
  for (int64_t at = seen.first; at <= seen.last;) {
    Span run{at, at};
    const int64_t across = line.Row();
    for (; at <= seen.last && line.Row() == across; ++at, line.NextColumn()) run.last = at;
    if (is_steep)
      cells.Cover({across, across}, run);
    else
      cells.Cover(run, across);
  }
}

/// Passes two units of four on. The dots stay where they are while the overlay grows.
class DotTracer : public OverlayTracer {
 public:
  explicit DotTracer(OverlayTracer& tracer) : OverlayTracer(tracer.Inside()), tracer_(tracer) {}

  void Cover(const Rect& piece) override {
    for (int y = piece.top; y < piece.bottom; ++y) {
      for (int x = piece.left; x < piece.right; ++x) {
        if ((x + y) % 4 < 2) tracer_.Cover({x, y, x + 1, y + 1});
      }
    }
  }

 private:
  OverlayTracer& tracer_;
};

}  // namespace

Overlay::Overlay(PictureView& view) : view_(&view) {
  view.overlays_.push_back(this);
}

Overlay::~Overlay() {
  if (!view_) return;
  // What it covered can no longer be traced here: the subclass has gone.
  if (visible_) view_->Refresh();
  std::erase(view_->overlays_, this);
}

void Overlay::SetVisible(bool visible) {
  if (visible == visible_) return;
  visible_ = true;
  Touch();
  visible_ = visible;
}

void Overlay::Touch() {
  QWidget* widget = view_ ? view_->Widget() : nullptr;
  if (!visible_ || !widget || !widget->isVisible()) return;
  const QRect seen = widget->visibleRegion().boundingRect().translated(-kFrame, -kFrame);
  const Rect inside{0, 0, widget->width() - 2 * kFrame, widget->height() - 2 * kFrame};
  const Rect part = inside.Intersected({seen.left(), seen.top(), seen.right() + 1, seen.bottom() + 1});
  if (part.IsEmpty()) return;
  OverlayToucher toucher(part);
  Trace(toucher);
  NoteForPainting(*widget, toucher.Touched().translated(kFrame, kFrame));
}

void Overlay::Write(Single& field, Single value) {
  if (field == value) return;
  Touch();
  field = value;
  Touch();
}

int Overlay::Multiple() const {
  return view_->Multiple();
}

void BoxOverlay::Move(Single left, Single top, Single width, Single height) {
  if (left == left_ && top == top_ && width == width_ && height == height_) return;
  Touch();
  left_ = left, top_ = top, width_ = width, height_ = height;
  Touch();
}

void ShapeOverlay::SetShape(Shape shape) {
  if (shape == shape_) return;
  Touch();
  shape_ = shape;
  Touch();
}

void ShapeOverlay::Trace(OverlayTracer& tracer) const {
  if (style_ == Style::Dotted)
    TraceMarquee(tracer);
  else
    TraceBand(tracer);
}

void ShapeOverlay::TraceBand(OverlayTracer& tracer) const {
  const int z = Multiple();
  const int64_t right = CellAt(double{Left()} + Width(), z), bottom = CellAt(double{Top()} + Height(), z);
  const Cells cells(tracer, z);
  if (shape_ == Shape::Rectangle) {
    return TraceRectangle({CellAt(Left(), z), right}, {CellAt(Top(), z), bottom}, cells);
  }
  constexpr double kCorner = 0.25;
  const bool is_oval = shape_ == Shape::Oval;
  TraceRoundBox(RoundBox({CellAt(Left(), z), right - 1}, {CellAt(Top(), z), bottom - 1},
                         is_oval ? right : CellAt(Width() * kCorner, z),
                         is_oval ? bottom : CellAt(Height() * kCorner, z)),
                cells);
}

void ShapeOverlay::TraceMarquee(OverlayTracer& tracer) const {
  const int z = Multiple();
  const int64_t left = CellAt(Left(), z) * z, top = CellAt(Top(), z) * z;
  const Span columns{left, left + CellAt(Width(), z) * z - 1}, rows{top, top + CellAt(Height(), z) * z - 1};
  if (columns.IsEmpty() || rows.IsEmpty()) return;
  DotTracer dots(tracer);
  TraceRectangle(columns, rows, Cells(dots, 1));
}

void RingOverlay::Trace(OverlayTracer& tracer) const {
  const int64_t left = CellAt(Left(), 1), top = CellAt(Top(), 1);
  const int64_t right = CellAt(double{Left()} + Width(), 1), bottom = CellAt(double{Top()} + Height(), 1);
  const RoundBox box({left, right - 1}, {top, bottom - 1}, kWholeEllipse, kWholeEllipse);
  const Cells units(tracer, 1);
  tracer.SetTone(OverlayTracer::Tone::White);
  TraceRoundBox(box.Grown(2), units);
  tracer.SetTone(OverlayTracer::Tone::Black);
  TraceRoundBox(box, units);
}

void LineOverlay::Trace(OverlayTracer& tracer) const {
  const int z = Multiple();
  TraceLine({CellAt(x1_, z), CellAt(y1_, z)}, {CellAt(x2_, z), CellAt(y2_, z)}, Cells(tracer, z));
}

}  // namespace zelvane
