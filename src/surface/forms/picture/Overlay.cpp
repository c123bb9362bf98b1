#include "surface/forms/picture/Overlay.h"

#include <QRegion>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "surface/forms/picture/OverlayTracer.h"
#include "surface/forms/picture/PixelPaint.h"

namespace zelvane {
namespace {

constexpr int kFrame = 1;
/// Farther places are all as far out of view; products of two distances stay within 64 bits.
constexpr double kFar = 1 << 29;

/// Rounded down; no number counts as 0.
int64_t Unit(Single value) {
  return std::isnan(value) ? 0 : static_cast<int64_t>(std::clamp(std::floor(double{value}), -kFar, kFar));
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

/// One unit of three along an edge, or along the longer axis of a piece of a curve. The dots stay where they
/// are while the overlay grows.
void CoverDots(OverlayTracer& tracer, const Rect& piece, bool is_curve) {
  const Rect seen = piece.Intersected(tracer.Inside());
  const int by_x = is_curve && piece.Width() == 1 ? 0 : 1, by_y = is_curve && by_x == 1 ? 0 : 1;
  for (int y = seen.top; y < seen.bottom; ++y) {
    for (int x = seen.left; x < seen.right; ++x) {
      if ((x * by_x + y * by_y) % 3 == 0) tracer.Cover({x, y, x + 1, y + 1});
    }
  }
}

/// A box in units that may lie far outside what any widget shows.
struct Box {
  int64_t left, top, width, height;
};

/// The rows and columns of the box that matter, with edges far outside brought close by.
Rect Near(int64_t left, int64_t top, int64_t right, int64_t bottom, const Rect& inside) {
  const auto into = [](int64_t value, int low, int high) {
    return static_cast<int>(std::clamp<int64_t>(value, int64_t{low} - 1, int64_t{high} + 1));
  };
  return {into(left, inside.left, inside.right), into(top, inside.top, inside.bottom),
          into(right, inside.left, inside.right), into(bottom, inside.top, inside.bottom)};
}

template <class Piece>
void TraceRectangle(const Box& box, const Rect& inside, Piece&& piece) {
  const int64_t right = box.left + box.width, bottom = box.top + box.height;
  piece(Near(box.left, box.top, right, box.top + 1, inside));
  if (box.height > 1) piece(Near(box.left, bottom - 1, right, bottom, inside));
  if (box.height <= 2) return;
  piece(Near(box.left, box.top + 1, box.left + 1, bottom - 1, inside));
  if (box.width > 1) piece(Near(right - 1, box.top + 1, right, bottom - 1, inside));
}

/// Columns of an ellipse in one row, right one not included; empty above and below it.
struct Chord {
  int64_t left = 0, right = 0;
  bool IsEmpty() const { return right <= left; }
};

Chord ChordOf(const Box& box, int64_t y) {
  if (y < box.top || y >= box.top + box.height) return {};
  const double across = static_cast<double>(box.width) / 2, down = static_cast<double>(box.height) / 2;
  const double height = (static_cast<double>(y - box.top) + 0.5 - down) / down;
  const double half = across * std::sqrt(std::max(0.0, 1 - height * height));
  // A column is in where its middle is; the middle one or two always are, so that thin ellipses have no gaps.
  const auto cut =
      std::min<int64_t>(static_cast<int64_t>(std::ceil(across - half - 0.5)), (box.width - 1) / 2);
  return {box.left + cut, box.left + box.width - cut};
}

/// The units of the ellipse that have a neighbour outside it: first all that lie left, then those right.
template <class Piece>
void TraceOval(const Box& box, const Rect& inside, Piece&& piece) {
  const Rect rows = Near(box.left, box.top, box.left + box.width, box.top + box.height, inside);
  for (const bool leftward : {true, false}) {
    for (int y = rows.top; y < rows.bottom; ++y) {
      const Chord above = ChordOf(box, y - 1), here = ChordOf(box, y), below = ChordOf(box, y + 1);
      Chord hollow{std::max({above.left, below.left, here.left + 1}),
                   std::min({above.right, below.right, here.right - 1})};
      if (above.IsEmpty() || below.IsEmpty() || hollow.IsEmpty()) hollow = {here.right, here.right};
      const Chord arc = leftward ? Chord{here.left, hollow.left} : Chord{hollow.right, here.right};
      if (!arc.IsEmpty()) piece(Near(arc.left, y, arc.right, y + 1, inside));
    }
  }
}

/// A line along its longer axis: the runs of steps that have the same place on the other axis. `swapped`
/// tells that the longer axis is the vertical one.
struct Slope {
  int64_t from, from_across, to, to_across;
  bool swapped;

  int64_t AcrossAt(int64_t at) const {
    if (to == from) return from_across;
    const int64_t rise = 2 * (to_across - from_across) * (at - from) + (to - from);
    const int64_t run = 2 * (to - from);
    return from_across + (rise >= 0 ? rise / run : -((-rise + run - 1) / run));
  }
};

void TraceLine(const Slope& slope, OverlayTracer& tracer) {
  const Rect& inside = tracer.Inside();
  const int64_t low = slope.swapped ? inside.top : inside.left,
                high = slope.swapped ? inside.bottom : inside.right;
  const int64_t end = std::min(slope.to + 1, high);
  for (int64_t at = std::max(slope.from, low); at < end;) {
    const int64_t start = at, across = slope.AcrossAt(at);
    while (at < end && slope.AcrossAt(at) == across) ++at;
    tracer.Cover(slope.swapped ? Near(across, start, across + 1, at, inside)
                               : Near(start, across, at, across + 1, inside));
  }
}

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

void ShapeOverlay::Write(Single& field, Single value) {
  if (field == value) return;
  Touch();
  field = value;
  Touch();
}

void ShapeOverlay::Move(Single left, Single top, Single width, Single height) {
  if (left == left_ && top == top_ && width == width_ && height == height_) return;
  Touch();
  left_ = left, top_ = top, width_ = width, height_ = height;
  Touch();
}

void ShapeOverlay::Trace(OverlayTracer& tracer) const {
  const Box box{Unit(left_), Unit(top_), std::max<int64_t>(1, Unit(width_)),
                std::max<int64_t>(1, Unit(height_))};
  const bool is_oval = shape_ == Shape::Oval;
  const auto piece = [&](const Rect& covered) {
    if (style_ == Style::Solid) return tracer.Cover(covered);
    CoverDots(tracer, covered, is_oval);
  };
  if (is_oval) {
    TraceOval(box, tracer.Inside(), piece);
  } else {
    TraceRectangle(box, tracer.Inside(), piece);
  }
}

void LineOverlay::Write(Single& field, Single value) {
  if (field == value) return;
  Touch();
  field = value;
  Touch();
}

void LineOverlay::Trace(OverlayTracer& tracer) const {
  int64_t x1 = Unit(x1_), y1 = Unit(y1_), x2 = Unit(x2_), y2 = Unit(y2_);
  const bool is_steep = std::abs(y2 - y1) > std::abs(x2 - x1);
  if (is_steep) std::swap(x1, y1), std::swap(x2, y2);
  // Always traced in one direction, so that a line is the same whichever end it is drawn from.
  if (x2 < x1) std::swap(x1, x2), std::swap(y1, y2);
  TraceLine({x1, y1, x2, y2, is_steep}, tracer);
}

}  // namespace zelvane
