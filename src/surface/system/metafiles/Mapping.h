#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QTransform>
#include <cstdint>

namespace zelvane {

/// The numbers that metafiles give the map modes.
enum class MapMode : uint32_t {
  Text = 1,
  LoMetric = 2,
  HiMetric = 3,
  LoEnglish = 4,
  HiEnglish = 5,
  Twips = 6,
  Isotropic = 7,
  Anisotropic = 8
};

/// How a metafile's logical units come to pixels: a transform of the world, the window that a viewport on the
/// device shows, and the device's own place on the sheet.
///
/// Coordinates stay fractions; those beyond a million pixels are taken for a million. A change that can't be
/// carried out (no extent, no finite result) isn't made.
class Mapping {
 public:
  /// `to_sheet` takes the device's pixels to those of the sheet; the sizes are its pixels in a millimetre.
  Mapping(const QTransform& to_sheet, QSizeF pixels_per_mm);

  /// Fixed modes set both extents; Text sets them to 1.
  void SetMode(MapMode mode);
  MapMode Mode() const { return mode_; }
  const QPointF& WindowOrigin() const { return window_; }
  const QPointF& ViewportOrigin() const { return viewport_; }
  void SetWindowOrigin(QPointF origin);
  void SetViewportOrigin(QPointF origin);
  /// Only in the last two modes.
  void SetWindowExtent(QSizeF extent);
  void SetViewportExtent(QSizeF extent);
  void ScaleWindow(QSizeF by);
  void ScaleViewport(QSizeF by);

  const QTransform& World() const { return world_; }
  void SetWorld(const QTransform& world);

  const QTransform& ToSheet() const { return all_; }
  const QTransform& DeviceToSheet() const { return to_sheet_; }
  QPointF Map(QPointF point) const;
  /// In logical units, a box that is so many pixels of the device large.
  QRectF DevicePixels(QPointF corner, QSizeF size) const;
  /// Pixels of the sheet in a logical unit, above 0: across, down, and what a pen's width grows by.
  double ScaleX() const;
  double ScaleY() const;
  double PenScale() const;
  /// The same across and down without the world's part.
  QSizeF PageScale() const;
  /// The world's turns and scales, for something that stands upright on the sheet.
  QTransform WorldOnSheet() const;

 private:
  bool TakesExtents() const { return mode_ == MapMode::Isotropic || mode_ == MapMode::Anisotropic; }
  QTransform Page() const;
  /// Makes the change that `change` makes, where the outcome can be mapped by.
  template <class Change>
  void Try(Change&& change);

  MapMode mode_ = MapMode::Text;
  QPointF window_, viewport_;
  QSizeF window_extent_{1, 1}, viewport_extent_{1, 1};
  QTransform world_, to_sheet_, all_;
  QSizeF pixels_per_mm_;
};

}  // namespace zelvane
