#pragma once

#include <cstdint>

#include "surface/raster/Bitmap.h"
#include "surface/raster/Color.h"
#include "surface/raster/Numbers.h"
#include "surface/raster/Rect.h"

namespace zelvane {

enum class RasterOp { Copy, And, Xor };
enum FillStyles : int16_t { kFillSolid = 0, kFillTransparent = 1 };
enum DrawModes : int16_t { kDrawInvert = 6, kDrawCopy = 13 };

/// The pixels of a picture surface with its drawing state, and every drawing operation on them.
///
/// Coordinates are pixels from the top left corner. Those that carry a fraction are rounded to nearest,
/// halves to even; one beyond 32 bits makes the call do nothing. Everything is clipped to the surface: pixels
/// written beyond it are lost. Every operation notes what it touched in `Damage`.
class Canvas {
 public:
  Canvas() = default;
  virtual ~Canvas() = default;
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  int ScaleWidth() const { return image_.Width(); }
  int ScaleHeight() const { return image_.Height(); }
  /// Keeps what both sizes have in common, the rest is `BackColor`. The same size changes nothing. Throws
  /// `SurfaceTooLarge`, with the surface as it was.
  void Resize(int width, int height);
  /// `Resize` for a caller that writes every pixel next: what another size held is let go first, what memory
  /// of the same size holds is kept. Throws `SurfaceTooLarge`, with the surface empty.
  void ResizeToOverwrite(int width, int height);

  /// The pixels, shared until either side is written to.
  const Bitmap& Image() const { return image_; }
  /// Takes the bitmap with its size; the drawing state stays.
  void SetImage(Bitmap image);
  /// Exchanges the pixels of two surfaces of one size without copying them; where the sizes differ, exchanges
  /// the part at the top left that both have.
  void ExchangePixels(Canvas& other);

  Single CurrentX() const { return current_x_; }
  Single CurrentY() const { return current_y_; }
  void SetCurrentX(Single x) { current_x_ = x; }
  void SetCurrentY(Single y) { current_y_ = y; }

  Color ForeColor() const { return fore_color_; }
  void SetForeColor(Color color) { fore_color_ = color; }
  Color BackColor() const { return back_color_; }
  /// Clears the surface to the colour.
  void SetBackColor(Color color);
  Color FillColor() const { return fill_color_; }
  void SetFillColor(Color color) { fill_color_ = color; }
  int16_t FillStyle() const { return fill_style_; }
  void SetFillStyle(int16_t style) { fill_style_ = style; }
  /// Pixels, 1 to 32,767; less counts as 1. A fraction is rounded where it is drawn with.
  double DrawWidth() const { return draw_width_; }
  void SetDrawWidth(double width) { draw_width_ = width; }
  /// 6 inverts what lies beneath, 13 copies.
  int16_t DrawMode() const { return draw_mode_; }
  void SetDrawMode(int16_t mode) { draw_mode_ = mode; }

  /// Fills the surface with `BackColor` and puts the current point at (0, 0).
  void Cls();

  /// A point of `DrawWidth`: a disc that covers exactly that many rows and columns. Moves the current point
  /// there. For an even width the centre lies half a pixel up and left of the point.
  void PSet(Single x, Single y, Color color);
  /// `kNoColor` beyond the surface.
  Color Point(Single x, Single y) const;

  /// A line of `DrawWidth`, both end points included; leaves the current point at the second. Width 1: one
  /// pixel a step of the longer axis, the same pixels in either direction. Wider: the pixels within half the
  /// width of the segment, with round ends, centred as `PSet` is.
  void Line(Single x1, Single y1, Single x2, Single y2, Color color);
  /// From the current point.
  void LineTo(Single x, Single y, Color color) { Line(current_x_, current_y_, x, y, color); }
  /// The outline of the box of both corners, in either order, with the pen centred on it: what lines of
  /// `DrawWidth` along its edges cover, so wide corners are round. The inside follows `FillStyle` and
  /// `FillColor`. Leaves the current point at the second corner.
  void Box(Single x1, Single y1, Single x2, Single y2, Color color);
  /// The box of both corners, both included, filled with the colour, whatever `DrawWidth` says. Leaves the
  /// current point at the second corner.
  void FilledBox(Single x1, Single y1, Single x2, Single y2, Color color);
  /// An ellipse round (x, y): `radius` along the longer axis, `aspect` its height by its width. Outline in
  /// the colour at `DrawWidth`, inside by `FillStyle` and `FillColor`. Leaves the current point at the
  /// centre.
  void Circle(Single x, Single y, Single radius, Color color, double aspect = 1.0);

  /// `kNoColor` beyond the surface.
  Color GetPixel(int32_t x, int32_t y) const;
  /// One pixel, whatever `DrawWidth` and `DrawMode` say.
  void SetPixelV(int32_t x, int32_t y, Color color);
  /// Paints every pixel that is 4-connected to (x, y) through pixels of exactly `area` with `FillColor`; a
  /// transparent `FillStyle` paints nothing.
  void ExtFloodFill(int32_t x, int32_t y, Color area);
  /// A box with round corners, its corners in any order, up to but not including right and bottom. The corner
  /// ellipse is measured whole, sizes below 0 by their absolute value; at least the size of the box it gives
  /// the full ellipse. Nothing where the box has no extent. Border in `ForeColor` at `DrawWidth`, centred on
  /// the outline; inside by `FillStyle` and `FillColor`.
  void RoundRect(int32_t left, int32_t top, int32_t right, int32_t bottom, int32_t corner_width,
                 int32_t corner_height);
  /// Inverts red, green and blue of the pixels inside.
  void InvertRect(int32_t left, int32_t top, int32_t right, int32_t bottom);

  /// Copies a rectangle of `source`, which may be this surface and overlap; only what lies in both surfaces
  /// moves.
  void BitBlt(int32_t x, int32_t y, int32_t width, int32_t height, const Canvas& source, int32_t source_x,
              int32_t source_y, RasterOp op = RasterOp::Copy);
  /// Scales a rectangle of `source` into one of this surface. Enlarging repeats pixels (target pixel d shows
  /// source pixel floor(d * source / target)), shrinking averages areas, equal sizes copy; each axis by
  /// itself. What lies beyond the source takes no part in an average, and target pixels that show nothing
  /// else stay. Nothing where a size is 0 or less.
  void StretchBlt(int32_t x, int32_t y, int32_t width, int32_t height, const Canvas& source, int32_t source_x,
                  int32_t source_y, int32_t source_width, int32_t source_height);

  /// What was touched since the last `TakeDamage`.
  const Rect& Damage() const { return damage_; }
  Rect TakeDamage();
  void AddDamage(const Rect& rect);

  /// For loops over many pixels; whoever writes tells `AddDamage`. `y` in 0 to ScaleHeight() - 1.
  Pixel* WritableRow(int y) { return image_.WritableRow(y); }
  Bitmap::Rows WritableRows() { return image_.WritableRows(); }

 protected:
  /// Called after the size has changed, by whichever road.
  virtual void SizeChanged() {}

 private:
  void Clear();
  bool Holds(int32_t x, int32_t y) const;
  /// `DrawWidth` as it is drawn with, 1 to 32,767.
  int PenWidth() const;
  template <class Paint>
  void PaintOutlined(Color color, Paint&& paint);

  Bitmap image_;
  Rect damage_;
  Single current_x_ = 0, current_y_ = 0;
  Color fore_color_ = kBlack, back_color_ = kWhite, fill_color_ = kBlack;
  double draw_width_ = 1;
  int16_t fill_style_ = kFillSolid, draw_mode_ = kDrawCopy;
};

}  // namespace zelvane
