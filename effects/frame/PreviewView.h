#pragma once

#include <QPointF>
#include <QWidget>
#include <functional>

#include "surface/raster/Bitmap.h"

namespace zelvane {

/// A picture to look at: fitted until a person zooms, moved by dragging, the wheel zooms at the pointer.
class PreviewView : public QWidget {
 public:
  explicit PreviewView(QWidget* parent);

  /// The zoom shown has changed.
  std::function<void()> OnZoom;

  /// `reduced` stands in for the picture, `scale` of its pixels a pixel, where `whole` is empty and wherever
  /// that is sharp enough.
  void Show(Bitmap whole, Bitmap reduced, double scale);

  /// Screen pixels a pixel of the picture.
  double Zoom() const;
  void SetZoom(double zoom) { ZoomAt(zoom, QRectF(rect()).center()); }
  /// One step in or out.
  void ZoomIn() { SetZoom(Zoom() * kStep); }
  void ZoomOut() { SetZoom(Zoom() / kStep); }
  void Fit();

  QSize sizeHint() const override { return {560, 460}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  static constexpr double kStep = 1.25;

  QSizeF PictureSize() const;
  /// Where the picture lies, in logical pixels.
  QRectF Place() const;
  void ZoomAt(double zoom, QPointF point);
  void Pan(QPointF by);

  Bitmap whole_, reduced_;
  double scale_ = 1;
  double zoom_ = 0;           ///< 0: fitted
  QPointF middle_{0.5, 0.5};  ///< what the middle of the view shows, 0 to 1 of the picture
  QPointF dragged_from_;
};

}  // namespace zelvane
