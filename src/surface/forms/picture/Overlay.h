#pragma once

#include "surface/forms/picture/PictureView.h"

namespace zelvane {

class OverlayTracer;

/// Something shown above a picture, hidden at first. Writing anything shows at once.
///
/// Places and sizes are units of the view, kept as written. What is shown follows what the tools make of the
/// same numbers: places are taken to image pixels, rounded to nearest, halves to even.
class Overlay {
 public:
  virtual ~Overlay();
  Overlay(const Overlay&) = delete;
  Overlay& operator=(const Overlay&) = delete;

  bool Visible() const { return visible_; }
  void SetVisible(bool visible);

 protected:
  explicit Overlay(PictureView& view);
  /// Call before and after a change: what is covered is shown anew.
  void Touch();
  void Write(Single& field, Single value);
  /// Units of the view in an image pixel.
  int Multiple() const;

 private:
  friend class PictureView;
  /// Tells the tracer each unit that the overlay covers, once.
  virtual void Trace(OverlayTracer& tracer) const = 0;
  /// Null once the view has gone.
  PictureView* view_;
  bool visible_ = false;
};

/// One that fills a box.
class BoxOverlay : public Overlay {
 public:
  Single Left() const { return left_; }
  Single Top() const { return top_; }
  Single Width() const { return width_; }
  Single Height() const { return height_; }
  void SetLeft(Single left) { Write(left_, left); }
  void SetTop(Single top) { Write(top_, top); }
  void SetWidth(Single width) { Write(width_, width); }
  void SetHeight(Single height) { Write(height_, height); }
  void Move(Single left, Single top, Single width, Single height);

 protected:
  using Overlay::Overlay;

 private:
  Single left_ = 0, top_ = 0, width_ = 0, height_ = 0;
};

/// The outline of a shape, inverted: solid the band that a pen of width 1 would paint, dotted a marquee that
/// runs along the inside of the pixels it holds, one unit wide.
class ShapeOverlay : public BoxOverlay {
 public:
  /// A solid rectangle covers both its corners, everything else ends before right and bottom. Round corners
  /// measure a quarter of the box; an oval's measure its right and bottom edges, so that one which begins
  /// left of the picture or above it is no ellipse.
  enum class Shape { Rectangle, RoundRectangle, Oval };
  enum class Style { Solid, Dotted };
  ShapeOverlay(PictureView& view, Shape shape, Style style = Style::Solid)
      : BoxOverlay(view), shape_(shape), style_(style) {}

  void SetShape(Shape shape);

 private:
  void Trace(OverlayTracer& tracer) const override;
  void TraceBand(OverlayTracer& tracer) const;
  void TraceMarquee(OverlayTracer& tracer) const;
  Shape shape_;
  Style style_;
};

/// An ellipse in two tones that together are seen on any picture: black along the inside of its box, white
/// round that.
class RingOverlay : public BoxOverlay {
 public:
  explicit RingOverlay(PictureView& view) : BoxOverlay(view) {}

 private:
  void Trace(OverlayTracer& tracer) const override;
};

/// A line between two points, both included: the band that a pen of width 1 would paint, inverted.
class LineOverlay : public Overlay {
 public:
  explicit LineOverlay(PictureView& view) : Overlay(view) {}

  Single x1() const { return x1_; }
  Single y1() const { return y1_; }
  Single X2() const { return x2_; }
  Single y2() const { return y2_; }
  void Setx1(Single x) { Write(x1_, x); }
  void Sety1(Single y) { Write(y1_, y); }
  void SetX2(Single x) { Write(x2_, x); }
  void Sety2(Single y) { Write(y2_, y); }

 private:
  void Trace(OverlayTracer& tracer) const override;
  Single x1_ = 0, y1_ = 0, x2_ = 0, y2_ = 0;
};

}  // namespace zelvane
