#pragma once

#include <QPainter>

#include "surface/raster/Bitmap.h"

class QWidget;

namespace zelvane {

/// Notes a rectangle or a region of the widget for painting.
///
/// The toolkit clips by the ratio of the pixels to 16 bits behind the point and sends parts to the screen by
/// the whole ratio. Where half a pixel decides these differ by one, so at a broken ratio one more goes along.
void NoteForPainting(QWidget& widget, const QRegion& part);

/// Where a widget's logical pixels lie among the pixels of the device, which may be a fraction larger: each
/// covers whole ones, and none is covered twice or left out. It is the rounding by which the toolkit clips a
/// widget's parts, so that parts painted at different times meet without a seam.
///
/// While one stands, the painter works in pixels of the device.
class DeviceGrid {
 public:
  /// `inset` is the widget's frame: unit 0 comes behind it.
  DeviceGrid(QPainter& painter, int inset);
  ~DeviceGrid() { painter_.restore(); }
  DeviceGrid(const DeviceGrid&) = delete;
  DeviceGrid& operator=(const DeviceGrid&) = delete;

  QPainter& Painter() const { return painter_; }
  double Scale() const { return scale_; }
  int X(int unit) const { return left_.Scaled(unit, scale_); }
  int Y(int unit) const { return top_.Scaled(unit, scale_); }
  QRect Covered(const Rect& units) const {
    return {QPoint(X(units.left), Y(units.top)), QPoint(X(units.right) - 1, Y(units.bottom) - 1)};
  }

 private:
  QPainter& painter_;
  /// Unit 0 on one axis: whole logical pixels from the device's corner, and what is left over in pixels of
  /// the device. Apart, since only sums of whole pixels scale as the toolkit's own do, to the last bit.
  struct Origin {
    Origin(double place, double scale, int inset);
    int Scaled(int unit, double scale) const;
    int whole;
    double rest;
  };
  double scale_;
  Origin left_, top_;
};

/// Paints the rectangle `part`, in units, of the bitmap at a whole multiple: unit u shows pixel floor(u /
/// multiple). What lies beyond the bitmap gets the colour `beyond`. The effort and the memory follow `part`.
void PaintPixels(const DeviceGrid& grid, const Bitmap& bitmap, int multiple, const Rect& part, Pixel beyond);

/// A frame of one logical pixel along the inside of the widget's edges, in the colour of frames.
void PaintFrame(const DeviceGrid& grid, int inside_width, int inside_height);

}  // namespace zelvane
