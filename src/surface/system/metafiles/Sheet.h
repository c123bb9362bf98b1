#pragma once

#include <QBrush>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QTransform>
#include <cstdint>
#include <functional>
#include <stdexcept>

#include "surface/raster/Bitmap.h"
#include "surface/system/metafiles/Clip.h"

namespace zelvane {

/// A metafile asks for more work than an honest one would.
struct TooMuchWork : std::runtime_error {
  TooMuchWork() : std::runtime_error("too much work") {}
};

/// One of the 256 ways to make a bit out of a pattern, a source and what is there: bit 4 p + 2 s + d of the
/// number is the outcome.
using RasterCode = uint8_t;
inline constexpr RasterCode kSourceCopy = 0xCC, kPatternCopy = 0xF0;

constexpr bool NeedsSource(RasterCode code) {
  return (code >> 2 & 0x33) != (code & 0x33);
}
constexpr bool NeedsPattern(RasterCode code) {
  return code >> 4 != (code & 0x0F);
}
/// The same with the pattern as the source, for one that needs no source.
constexpr RasterCode PatternAsSource(RasterCode code) {
  return static_cast<RasterCode>(((code & 0x03) | (code >> 2 & 0x0C)) * 0x11);
}

/// What a metafile is played onto, in pixels: a bitmap, through the toolkit's painter with smooth edges.
/// Where a raster operation joins colours bit by bit, edges aren't smooth.
///
/// Every step costs a number of units of work, roughly a nanosecond each. Beyond what an honest file of that
/// size needs, some seconds at the very most, `TooMuchWork` is thrown.
class Sheet {
 public:
  /// Paints into `bitmap`, which has to outlive it. `file_size` in bytes.
  Sheet(Bitmap& bitmap, size_t file_size);
  /// Paints nothing, but notes how far what would be painted reaches.
  explicit Sheet(size_t file_size);

  QRect Bounds() const { return bounds_; }
  const QRectF& Extent() const { return extent_; }
  void Charge(double work);

  void SetClip(const Clip& clip);
  /// Where pattern brushes begin.
  void SetBrushOrigin(QPointF origin) { brush_origin_ = origin; }

  enum class Edges { Smooth, Hard };
  void Fill(const QPainterPath& path, const QBrush& brush, RasterCode code = kSourceCopy,
            Edges edges = Edges::Smooth);
  void Stroke(const QPainterPath& path, const QPen& pen, RasterCode code = kSourceCopy);

  struct Placement {
    /// Takes the image's pixels to those of the sheet.
    QTransform to_sheet;
    /// How an image that grows is shown: by repeated pixels or softly. One that shrinks is averaged.
    bool soft = false;
    double opacity = 1;
  };
  /// Clear pixels of the image aren't painted.
  void Draw(const QImage& image, const Placement& placement, RasterCode code, const QBrush& pattern);

  /// The clip's area together with another, or what only one of them holds, in whole pixels.
  Clip Joined(const Clip& clip, const QPainterPath& area, bool exclusive);

 private:
  QRectF Followed() const;
  /// The area near the sheet, paid for.
  QPainterPath Counted(const QPainterPath& path);
  double WorkOfEdges(double count, double length, const QRectF& box) const;
  double WorkOf(const QPainterPath& path) const;
  double WorkOfStroke(const QPainterPath& path, const QPen& pen) const;
  using Paint = std::function<void(QPainter&)>;
  /// False where nothing of the box would show.
  bool Reaches(const QRectF& box);
  QImage MaskOf(const QList<QPainterPath>& parts);
  QImage Layer(const QRect& box, const Paint& paint) const;
  void PaintWith(RasterCode code, const QRectF& box, const QBrush& pattern, const Paint& paint);

  QImage image_;
  QPainter painter_;
  QRect bounds_;
  QRectF extent_;
  QPointF brush_origin_;
  Clip clip_;
  bool measures_ = false;
  double work_left_;
};

}  // namespace zelvane
