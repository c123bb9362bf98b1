#include <cmath>
#include <numbers>

#include "surface/system/metafiles/PixelEdges.h"
#include "surface/system/metafiles/Player.h"

namespace zelvane {

namespace {

constexpr double kWholeTurn = 360;

double DegreesOf(double radians) {
  return radians * 180 / std::numbers::pi;
}

/// Along the box's ellipse, in the direction of a place.
double AngleTowards(const QRectF& box, QPointF place) {
  const QPointF way = place - box.center();
  return DegreesOf(std::atan2(-way.y() * box.width(), way.x() * box.height()));
}

/// Against the clock unless told else; a whole turn where both ends are one.
QPainterPath ArcPath(Player::ArcKind kind, const QRectF& box, QPointF start, QPointF end, bool clockwise) {
  const double from = AngleTowards(box, start);
  double sweep = std::fmod(AngleTowards(box, end) - from + 2 * kWholeTurn, kWholeTurn);
  if (sweep == 0) sweep = kWholeTurn;
  if (clockwise && sweep < kWholeTurn) sweep -= kWholeTurn;
  QPainterPath path;
  if (kind == Player::ArcKind::Pie) {
    path.moveTo(box.center());
  } else {
    path.arcMoveTo(box, from);
  }
  path.arcTo(box, from, sweep);
  if (kind == Player::ArcKind::Pie || kind == Player::ArcKind::Chord) path.closeSubpath();
  return path;
}

void AddBezier(QPainterPath& path, const Points& points, qsizetype from) {
  for (qsizetype i = from; i + 2 < points.size(); i += 3)
    path.cubicTo(points[i], points[i + 1], points[i + 2]);
}

void AddLines(QPainterPath& path, const Points& points) {
  if (points.isEmpty()) return;
  path.moveTo(points[0]);
  for (const QPointF& point : points.mid(1)) path.lineTo(point);
}

bool IsStraight(const QTransform& map) {
  return map.m12() == 0 && map.m21() == 0;
}

}  // namespace

RasterCode Player::PenCode() const {
  return static_cast<RasterCode>(((state_.pen_mode - 1) & 0x0F) * 0x11);
}

/// Of a shape in a box on the sheet, in the middle of the pen.
QRectF Player::OutlineOf(const QRectF& box) const {
  const double width = PenWidth(state_.pen, state_.mapping.PenScale());
  if (width <= 1) return OnPixelCentres(box);
  if ((state_.pen.style & MetaPen::kLineMask) != MetaPen::kInsideFrame) return box;
  const double half = width / 2;
  if (box.width() < width || box.height() < width) return box;
  return box.adjusted(half, half, -half, -half);
}

void Player::Paint(const QPainterPath& inside, const QPainterPath& outline, bool fills, bool strokes) {
  constexpr RasterCode kLeave = 0xAA;
  if (PenCode() == kLeave) return;
  const double scale = state_.mapping.PenScale();
  const bool thin = PenWidth(state_.pen, scale) <= 1;
  // A stencil is its inside alone; its outline would stay where the box that is painted next ends.
  if (fills && thin && IsStencil(state_.brush)) strokes = false;
  if (fills) FillArea(inside, state_.brush);
  if (!strokes || state_.pen.IsNull()) return;
  UseSheet();
  sheet_.Stroke(thin ? OnPixelCentres(outline) : outline,
                PenOf(state_.pen, state_.colors, scale, state_.miter_limit), PenCode());
}

/// Writers show a brush within a shape by painting its box bit by bit, the shape in black, the box again; any
/// smoothness of the black would come out in odd colours.
bool Player::IsStencil(const MetaBrush& brush) const {
  return joined_bits_ && PenCode() == kSourceCopy && brush.kind == MetaBrush::Kind::Solid &&
         (brush.color & 0xFFFFFFu) == 0;
}

void Player::FillArea(const QPainterPath& area, const MetaBrush& brush) {
  if (brush.kind == MetaBrush::Kind::Null) return;
  UseSheet();
  Charge(double{1} * brush.pattern.width() * brush.pattern.height());
  const Sheet::Edges edges = IsStencil(brush) ? Sheet::Edges::Hard : Sheet::Edges::Smooth;
  joined_bits_ = PenCode() != kSourceCopy;
  sheet_.Fill(OnPixels(area), BrushOf(brush, state_.colors), PenCode(), edges);
}

/// A straight box is drawn on the sheet, where its outline can keep to pixels; any other where it is told.
void Player::PaintBox(const QRectF& box, bool fills, const ShapeInBox& shape) {
  const Mapping& map = state_.mapping;
  if (building_ || !IsStraight(map.ToSheet())) {
    const QPainterPath path = OnSheet(shape(box.normalized(), QTransform()));
    if (building_) return Add(path, false);
    return Paint(path, path, fills);
  }
  const QRectF placed = QRectF(map.Map(box.topLeft()), map.Map(box.bottomRight())).normalized();
  Paint(shape(placed, map.ToSheet()), shape(OutlineOf(placed), map.ToSheet()), fills);
}

void Player::MoveTo(QPointF to) {
  state_.position = to;
  figure_goes_on_ = false;
}

void Player::PolylineTo(const Points& points) {
  if (points.isEmpty()) return;
  QPainterPath path;
  AddLines(path, Points{state_.position} + points);
  state_.position = points.last();
  path = OnSheet(path);
  building_ ? Add(path, true) : Paint(path, path, false);
}

void Player::PolyPolyline(const QList<Points>& lines) {
  QPainterPath path;
  for (const Points& points : lines) AddLines(path, points);
  path = OnSheet(path);
  building_ ? Add(path, false) : Paint(path, path, false);
}

void Player::PolyPolygon(const QList<Points>& polygons) {
  QPainterPath path;
  for (const Points& points : polygons) {
    AddLines(path, points);
    if (!points.isEmpty()) path.closeSubpath();
  }
  path.setFillRule(state_.fill_rule);
  path = OnSheet(path);
  building_ ? Add(path, false) : Paint(path, path, true);
}

void Player::Bezier(const Points& points) {
  if (points.isEmpty()) return;
  QPainterPath path(points[0]);
  AddBezier(path, points, 1);
  path = OnSheet(path);
  building_ ? Add(path, false) : Paint(path, path, false);
}

void Player::BezierTo(const Points& points) {
  if (points.size() < 3) return;
  QPainterPath path(state_.position);
  AddBezier(path, points, 0);
  state_.position = path.currentPosition();
  path = OnSheet(path);
  building_ ? Add(path, true) : Paint(path, path, false);
}

void Player::PolyDraw(const Points& points, ByteView kinds) {
  constexpr uint32_t kClose = 1, kLine = 2, kCurve = 4, kMove = 6;
  QPainterPath path(state_.position);
  for (qsizetype i = 0; i < points.size(); ++i) {
    const uint32_t kind = kinds.At(static_cast<uint64_t>(i));
    if ((kind & kMove) == kMove) {
      path.moveTo(points[i]);
    } else if (kind & kLine) {
      path.lineTo(points[i]);
    } else if (kind & kCurve && i + 2 < points.size()) {
      path.cubicTo(points[i], points[i + 1], points[i + 2]);
      i += 2;
    }
    if (kinds.At(static_cast<uint64_t>(i)) & kClose) path.closeSubpath();
  }
  if (!points.isEmpty()) state_.position = points.last();
  path = OnSheet(path);
  building_ ? Add(path, true) : Paint(path, path, false);
}

void Player::Rectangle(const QRectF& box) {
  PaintBox(box, true, [](const QRectF& within, const QTransform&) {
    QPainterPath path;
    path.addRect(within);
    return path;
  });
}

void Player::RoundBox(const QRectF& box, QSizeF corner) {
  PaintBox(box, true, [&](const QRectF& within, const QTransform& map) {
    QPainterPath path;
    path.addRoundedRect(within, std::abs(corner.width() * map.m11()) / 2,
                        std::abs(corner.height() * map.m22()) / 2);
    return path;
  });
}

void Player::Ellipse(const QRectF& box) {
  PaintBox(box, true, [](const QRectF& within, const QTransform&) {
    QPainterPath path;
    path.addEllipse(within);
    return path;
  });
}

void Player::Arc(ArcKind kind, const QRectF& box, QPointF start, QPointF end) {
  if (kind == ArcKind::ArcTo) {
    const QPainterPath arc = ArcPath(kind, box.normalized(), start, end, state_.clockwise);
    QPainterPath path(state_.position);
    path.connectPath(arc);
    state_.position = path.currentPosition();
    path = OnSheet(path);
    return building_ ? Add(path, true) : Paint(path, path, false);
  }
  PaintBox(box, kind != ArcKind::Arc, [&](const QRectF& within, const QTransform& map) {
    return ArcPath(kind, within, map.map(start), map.map(end), state_.clockwise);
  });
}

void Player::AngleArc(QPointF centre, double radius, double start, double sweep) {
  const QRectF box(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
  const double turn = std::abs(sweep) < kWholeTurn ? sweep : std::copysign(kWholeTurn, sweep);
  QPainterPath path(state_.position);
  path.arcTo(box, std::fmod(start, kWholeTurn), turn);
  state_.position = path.currentPosition();
  path = OnSheet(path);
  building_ ? Add(path, true) : Paint(path, path, false);
}

void Player::SetPixel(QPointF at, QRgb color) {
  const QPointF place = state_.mapping.Map(at);
  const double width = std::max(1.0, std::ceil(state_.mapping.ScaleX()));
  const double height = std::max(1.0, std::ceil(state_.mapping.ScaleY()));
  QPainterPath pixel;
  pixel.addRect(std::floor(place.x()), std::floor(place.y()), width, height);
  FillPlain(pixel, color);
}

void Player::FrameArea(const MetaRegion& region, const MetaBrush& brush, QSizeF thickness) {
  for (const RecordBox& box : region.boxes) {
    const double x = std::min(thickness.width(), double{1} * box.Width() / 2);
    const double y = std::min(thickness.height(), double{1} * box.Height() / 2);
    if (x < 0 || y < 0) continue;
    const QRectF outer(QPointF(box.left, box.top), QPointF(box.right, box.bottom));
    QPainterPath frame;
    frame.addRect(outer);
    frame.addRect(outer.adjusted(x, y, -x, -y));
    FillArea(OnSheet(frame), brush);
  }
}

void Player::InvertArea(const QPainterPath& area) {
  constexpr RasterCode kInvert = 0x55;
  UseSheet();
  sheet_.Fill(OnPixels(area), QColor(Qt::black), kInvert);
}

}  // namespace zelvane
