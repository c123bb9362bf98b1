#include "surface/system/metafiles/Sheet.h"

#include <QPainterPathStroker>
#include <algorithm>
#include <cmath>

#include "surface/system/metafiles/FarPaths.h"
#include "surface/system/metafiles/PixelEdges.h"

namespace zelvane {

namespace {

constexpr double kWorkOfElement = 200;

double WorkFor(size_t file_size, double pixels) {
  constexpr double kAnyway = 3e8, kOfByte = 2000, kOfPixel = 1000, kMost = 6e9;
  return std::min(kMost, kAnyway + kOfByte * static_cast<double>(file_size) + kOfPixel * pixels) + 8 * pixels;
}

/// The lengths of the path's parts across and down, each at most as long as the box is.
double LengthWithin(const QPainterPath& path, const QRectF& box) {
  double length = 0;
  QPointF last;
  for (int i = 0; i < path.elementCount(); ++i) {
    const QPointF here(std::clamp(path.elementAt(i).x, box.left(), box.right()),
                       std::clamp(path.elementAt(i).y, box.top(), box.bottom()));
    if (!path.elementAt(i).isMoveTo()) length += (here - last).manhattanLength();
    last = here;
  }
  return length;
}

bool HasCurves(const QPainterPath& path) {
  for (int i = 0; i < path.elementCount(); ++i)
    if (path.elementAt(i).isCurveTo()) return true;
  return false;
}

uint32_t Combined(RasterCode code, uint32_t pattern, uint32_t source, uint32_t there) {
  uint32_t bits = 0;
  for (int i = 0; i < 8; ++i) {
    if (code >> i & 1)
      bits |= (i & 4 ? pattern : ~pattern) & (i & 2 ? source : ~source) & (i & 1 ? there : ~there);
  }
  return bits | 0xFF000000u;
}

/// A picture of at most the size that it will be shown at, each side by itself: averaged areas.
QImage Shrunk(const QImage& image, double width, double height) {
  const QSize size(std::clamp(static_cast<int>(std::lround(std::min(width, 1e6))), 1, image.width()),
                   std::clamp(static_cast<int>(std::lround(std::min(height, 1e6))), 1, image.height()));
  return size == image.size() ? image : image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/// Placed straight, an image covers whole pixels, at least one, so that neighbours leave no seam.
void DrawStraight(QPainter& painter, const QImage& image, const Sheet::Placement& placement) {
  const QRectF meant = placement.to_sheet.mapRect(QRectF(image.rect()));
  const double left = std::floor(meant.left() + 0.5), top = std::floor(meant.top() + 0.5);
  const double width = std::max(1.0, std::floor(meant.right() + 0.5) - left);
  const double height = std::max(1.0, std::floor(meant.bottom() + 0.5) - top);
  const bool across = placement.to_sheet.m11() < 0, down = placement.to_sheet.m22() < 0;
  const QImage shown = Shrunk(across || down ? image.mirrored(across, down) : image, width, height);
  painter.drawImage(QRectF(left, top, width, height), shown, shown.rect());
}

void DrawPlaced(QPainter& painter, const QImage& image, const Sheet::Placement& placement) {
  const QTransform& map = placement.to_sheet;
  painter.save();
  painter.setOpacity(placement.opacity);
  painter.setRenderHint(QPainter::SmoothPixmapTransform, placement.soft);
  if (map.m12() == 0 && map.m21() == 0) {
    DrawStraight(painter, image, placement);
  } else {
    const QImage shown = Shrunk(image, image.width() * std::hypot(map.m11(), map.m12()),
                                image.height() * std::hypot(map.m21(), map.m22()));
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setTransform(QTransform::fromScale(double{1} * image.width() / shown.width(),
                                               double{1} * image.height() / shown.height()) *
                             map,
                         true);
    painter.drawImage(0, 0, shown);
  }
  painter.restore();
}

}  // namespace

Sheet::Sheet(Bitmap& bitmap, size_t file_size)
    : image_(reinterpret_cast<unsigned char*>(bitmap.WritableRow(0)), bitmap.Width(), bitmap.Height(),
             QImage::Format_RGB32),
      bounds_(image_.rect()),
      work_left_(WorkFor(file_size, double{1} * bitmap.Width() * bitmap.Height())) {
  if (!painter_.begin(&image_)) throw SurfaceTooLarge("no painter for the sheet");
  painter_.setRenderHint(QPainter::Antialiasing);
  painter_.setPen(Qt::NoPen);
}

Sheet::Sheet(size_t file_size)
    : bounds_(-kLargestSide, -kLargestSide, 2 * kLargestSide, 2 * kLargestSide),
      measures_(true),
      work_left_(WorkFor(file_size, 0)) {}

void Sheet::Charge(double work) {
  work_left_ -= work;
  if (!(work_left_ >= 0)) throw TooMuchWork();
}

/// Where the painter follows an outline: in the rows of the sheet, but across them as far as it goes.
QRectF Sheet::Followed() const {
  return QRectF(bounds_).adjusted(-kNearReach, 0, kNearReach, 0);
}

/// The painter's rasteriser keeps where edges cross a row in a list, which it walks through for each of them.
/// When its memory is full it goes through all edges again for the next rows.
double Sheet::WorkOfEdges(double count, double length, const QRectF& box) const {
  constexpr double kLengthHeld = 1000, kWorkOfPass = 5;
  const double in_a_row = length / std::max(1.0, box.height());
  return length * (2 + std::min(box.width(), in_a_row) / 2) +
         count * std::min(box.height(), length / kLengthHeld) * kWorkOfPass;
}

double Sheet::WorkOf(const QPainterPath& path) const {
  const QRectF box = path.controlPointRect() & QRectF(bounds_);
  return path.elementCount() * kWorkOfElement + box.width() * box.height() +
         WorkOfEdges(path.elementCount(), LengthWithin(path, Followed()), box);
}

double Sheet::WorkOfStroke(const QPainterPath& path, const QPen& pen) const {
  constexpr double kWorkOfDash = 1000, kEverywhere = 4e6;
  const QRectF box = path.controlPointRect() & Followed();
  const double length = LengthWithin(path, Followed());
  // Each line has two sides, and is as wide as its pen. Those of a curve consist of many short lines.
  constexpr double kWorkOfCurve = 100;
  const double work =
      path.elementCount() * kWorkOfElement * 4 + WorkOfEdges(4 * path.elementCount(), 4 * length, box) +
      length * std::min(pen.widthF(), Followed().width()) + (HasCurves(path) ? length * kWorkOfCurve : 0);
  if (pen.style() != Qt::CustomDashLine) return work;
  double period = 0;
  for (const double dash : pen.dashPattern()) period += dash * pen.widthF();
  const QRectF everywhere(-kEverywhere, -kEverywhere, 2 * kEverywhere, 2 * kEverywhere);
  const double dashes =
      LengthWithin(path, everywhere) / period * static_cast<double>(pen.dashPattern().size()) / 2;
  return work + dashes * kWorkOfDash;
}

bool Sheet::Reaches(const QRectF& box) {
  if (measures_) extent_ |= box;
  return !measures_ && box.adjusted(-1, -1, 1, 1).intersects(QRectF(bounds_));
}

void Sheet::SetClip(const Clip& clip) {
  if (measures_ || clip.IsSharedWith(clip_)) return;
  clip_ = clip;
  painter_.setClipping(false);
  Qt::ClipOperation operation = Qt::ReplaceClip;
  for (const QPainterPath& part : clip.Parts()) {
    if (const auto box = BoxOf(part)) {
      painter_.setClipRect(*box & QRectF(bounds_), operation);
    } else {
      painter_.setClipPath(Counted(part), operation);
    }
    operation = Qt::IntersectClip;
  }
}

QPainterPath Sheet::Counted(const QPainterPath& path) {
  Charge(path.elementCount() * kWorkOfElement);
  const QPainterPath area = Near(path, QRectF(bounds_));
  Charge(WorkOf(area));
  return area;
}

void Sheet::Fill(const QPainterPath& path, const QBrush& brush, RasterCode code, Edges edges) {
  if (!Reaches(path.controlPointRect())) return;
  const QPainterPath area = Counted(path);
  painter_.setRenderHint(QPainter::Antialiasing, edges == Edges::Smooth);
  PaintWith(code, area.controlPointRect(), Qt::NoBrush,
            [&](QPainter& painter) { painter.fillPath(area, brush); });
  painter_.setRenderHint(QPainter::Antialiasing);
}

void Sheet::Stroke(const QPainterPath& path, const QPen& pen, RasterCode code) {
  const double reach =
      pen.widthF() * std::max(1.0, pen.joinStyle() == Qt::SvgMiterJoin ? pen.miterLimit() : 1);
  const QRectF line = path.controlPointRect(), box = line.adjusted(-reach, -reach, reach, reach);
  if (!Reaches(measures_ ? line : box)) return;
  Charge(WorkOfStroke(path, pen));
  if (!IsNear(box, QRectF(bounds_))) {
    return Fill(QPainterPathStroker(pen).createStroke(path), pen.brush(), code);
  }
  QPen with_corners = pen;
  // Lines of exactly one pixel the painter draws one by one, without their corners.
  if (pen.widthF() == 1 && path.elementCount() > 2) with_corners.setWidthF(1.0001);
  PaintWith(code, box, Qt::NoBrush, [&](QPainter& painter) { painter.strokePath(path, with_corners); });
}

void Sheet::Draw(const QImage& image, const Placement& placement, RasterCode code, const QBrush& pattern) {
  const QRectF box = placement.to_sheet.mapRect(QRectF(image.rect())).adjusted(-1, -1, 1, 1);
  if (!Reaches(box)) return;
  const QRectF shown = box & QRectF(bounds_);
  Charge(4 * (double{1} * image.width() * image.height() + shown.width() * shown.height()));
  PaintWith(code, box, pattern, [&](QPainter& painter) { DrawPlaced(painter, image, placement); });
}

QImage Sheet::Layer(const QRect& box, const Paint& paint) const {
  QImage layer(box.size(), QImage::Format_ARGB32_Premultiplied);
  layer.fill(Qt::transparent);
  QPainter painter(&layer);
  painter.translate(-box.topLeft());
  painter.setBrushOrigin(brush_origin_);
  paint(painter);
  return layer;
}

void Sheet::PaintWith(RasterCode code, const QRectF& reach, const QBrush& pattern, const Paint& paint) {
  if (code == kSourceCopy) {
    painter_.setBrushOrigin(brush_origin_);
    paint(painter_);
    return;
  }
  const QRect box = (reach & QRectF(bounds_)).toAlignedRect() & bounds_;
  if (box.isEmpty()) return;
  Charge(16.0 * box.width() * box.height());
  QImage source = Layer(box, paint);
  const QImage patterns =
      NeedsPattern(code) ? Layer(box, [&](QPainter& painter) { painter.fillRect(box, pattern); }) : source;
  if (source.isNull() || patterns.isNull()) throw SurfaceTooLarge("no room for a raster operation");
  for (int y = 0; y < box.height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(source.scanLine(y));
    const auto* from = reinterpret_cast<const QRgb*>(patterns.constScanLine(y));
    const auto* there = reinterpret_cast<const QRgb*>(image_.constScanLine(box.top() + y)) + box.left();
    for (int x = 0; x < box.width(); ++x) {
      const bool covered = qAlpha(row[x]) != 0 && qAlpha(from[x]) != 0;
      row[x] = covered ? Combined(code, from[x], row[x], there[x]) : 0;
    }
  }
  painter_.drawImage(box.topLeft(), source);
}

/// White where every part holds the pixel.
QImage Sheet::MaskOf(const QList<QPainterPath>& parts) {
  QImage mask(bounds_.size(), QImage::Format_Grayscale8);
  if (mask.isNull()) throw SurfaceTooLarge("no room for a clip");
  mask.fill(0);
  Charge(2.0 * bounds_.width() * bounds_.height());
  QPainter painter(&mask);
  for (const QPainterPath& part : parts) {
    painter.setClipPath(Counted(part), painter.hasClipping() ? Qt::IntersectClip : Qt::ReplaceClip);
  }
  painter.fillRect(bounds_, Qt::white);
  return mask;
}

Clip Sheet::Joined(const Clip& clip, const QPainterPath& area, bool exclusive) {
  if (measures_) return clip;
  QImage mask = MaskOf(clip.Parts());
  const QImage other = MaskOf({area});
  const int width = mask.width(), height = mask.height();
  for (int y = 0; y < height; ++y) {
    uchar* row = mask.scanLine(y);
    const uchar* with = other.constScanLine(y);
    for (int x = 0; x < width; ++x) row[x] = exclusive ? row[x] ^ with[x] : row[x] | with[x];
  }
  QPainterPath boxes;
  for (int top = 0, bottom = 0; top < height; top = bottom) {
    const uchar* row = mask.constScanLine(top);
    while (bottom < height && std::equal(row, row + width, mask.constScanLine(bottom))) ++bottom;
    for (const uchar *at = row, *end = row + width; (at = std::find(at, end, 255)) != end;) {
      constexpr double kWorkOfBox = 5000;
      Charge(kWorkOfBox);
      const uchar* const first = at;
      at = std::find(at, end, 0);
      boxes.addRect(first - row, top, at - first, bottom - top);
    }
  }
  Clip joined;
  joined.Intersect(boxes);
  return joined;
}

}  // namespace zelvane
