#include "surface/system/metafiles/Objects.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zelvane {

namespace {

constexpr uint32_t kMostObjects = 65536;
constexpr double kWidestPen = 65536;

MetaBrush SolidBrush(QRgb color) {
  return {MetaBrush::Kind::Solid, color, 0, {}, false};
}

MetaPen ThinPen(QRgb color) {
  MetaPen pen;
  pen.brush.color = color;
  return pen;
}

MetaFont NamedFont(const char* face) {
  MetaFont font;
  font.face = QString::fromLatin1(face);
  return font;
}

/// Every eighth pixel, as the kinds of hatches have it.
bool IsHatched(uint32_t hatch, int x, int y) {
  constexpr int kPeriod = 8;
  const bool across = y == 3, down = x == 4;
  const bool falling = x == y, rising = x + y == kPeriod - 1;
  switch (hatch) {
    case 0:
      return across;
    case 1:
      return down;
    case 2:
      return falling;
    case 3:
      return rising;
    case 4:
      return across || down;
    default:
      return falling || rising;
  }
}

QImage HatchTile(const MetaBrush& brush, const GroundColors& colors) {
  QImage tile(8, 8, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < tile.height(); ++y) {
    for (int x = 0; x < tile.width(); ++x) {
      const QRgb behind = colors.opaque ? colors.ground : 0;
      tile.setPixel(x, y, IsHatched(brush.hatch, x, y) ? brush.color : behind);
    }
  }
  return tile;
}

QImage TwoColorTile(const QImage& pattern, const GroundColors& colors) {
  QImage tile = pattern.convertToFormat(QImage::Format_RGB32);
  for (int y = 0; y < tile.height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(tile.scanLine(y));
    std::for_each(row, row + tile.width(),
                  [&](QRgb& pixel) { pixel = (pixel & 0xFFFFFF) == 0 ? colors.text : colors.ground; });
  }
  return tile;
}

Qt::PenCapStyle CapsOf(const MetaPen& pen) {
  switch (pen.style & MetaPen::kEndsMask) {
    case MetaPen::kSquareEnds:
      return Qt::SquareCap;
    case MetaPen::kFlatEnds:
      return Qt::FlatCap;
    default:
      return Qt::RoundCap;
  }
}

Qt::PenJoinStyle JoinsOf(const MetaPen& pen) {
  switch (pen.style & MetaPen::kJoinsMask) {
    case MetaPen::kBevelJoins:
      return Qt::BevelJoin;
    case MetaPen::kMiterJoins:
      return Qt::SvgMiterJoin;
    default:
      return Qt::RoundJoin;
  }
}

/// The kinds of lines in widths of the pen. Thin ones are measured in pixels, as screens show them.
QList<qreal> KnownDashes(uint32_t kind, bool thin) {
  switch (kind) {
    case MetaPen::kDash:
      return thin ? QList<qreal>{18, 6} : QList<qreal>{3, 1};
    case MetaPen::kDot:
      return thin ? QList<qreal>{3, 3} : QList<qreal>{1, 1};
    case MetaPen::kDashDot:
      return thin ? QList<qreal>{9, 6, 3, 6} : QList<qreal>{3, 1, 1, 1};
    case MetaPen::kDashDotDot:
      return thin ? QList<qreal>{9, 3, 3, 3, 3, 3} : QList<qreal>{3, 1, 1, 1, 1, 1};
    case MetaPen::kAlternate:
      return {1, 1};
    default:
      return {};
  }
}

QList<qreal> OwnDashes(const MetaPen& pen, double width, double scale) {
  QList<qreal> dashes;
  const double unit = (pen.style & MetaPen::kGeometric ? scale : 1) / width;
  for (const double length : pen.dashes) dashes.append(std::clamp(length * unit, 0.0, kWidestPen));
  if (dashes.size() % 2 == 1) dashes += QList<qreal>(dashes);
  double whole = 0;
  for (const double length : dashes) whole += length;
  if (whole == 0) return {};
  // Finer ones than a pixel come out as grey, as they would anyway.
  if (whole * width < 1)
    for (double& length : dashes) length /= whole * width;
  return dashes;
}

/// Dashes and gaps in widths of the pen, which is `width` pixels wide.
QList<qreal> DashesOf(const MetaPen& pen, double width, double scale) {
  const uint32_t kind = pen.style & MetaPen::kLineMask;
  if (kind == MetaPen::kUserStyle) return OwnDashes(pen, width, scale);
  QList<qreal> dashes = KnownDashes(kind, width <= 1);
  if (width <= 1 || CapsOf(pen) == Qt::FlatCap) return dashes;
  // The ends of each dash reach half a width into the gaps.
  constexpr double kShortest = 0.01;
  for (qsizetype i = 0; i < dashes.size(); ++i)
    dashes[i] = i % 2 == 0 ? std::max(kShortest, dashes[i] - 1) : dashes[i] + 1;
  return dashes;
}

}  // namespace

void ObjectTable::Add(MetaObject object) {
  Put(free_.empty() ? static_cast<uint32_t>(slots_.size()) : *free_.begin(), std::move(object));
}

void ObjectTable::Put(uint32_t number, MetaObject object) {
  if (number >= kMostObjects) return;
  if (number >= slots_.size()) slots_.resize(number + 1);
  slots_[number] = std::move(object);
  free_.erase(number);
}

void ObjectTable::Delete(uint32_t number) {
  if (number >= slots_.size()) return;
  slots_[number] = FreeSlot{};
  free_.insert(number);
}

const MetaObject& ObjectTable::At(uint32_t number) const {
  static const MetaObject kNone;
  return number < slots_.size() ? slots_[number] : kNone;
}

MetaObject StockObject(uint32_t number) {
  constexpr std::array<QRgb, 5> kGreys = {0xFFFFFFFFu, 0xFFC0C0C0u, 0xFF808080u, 0xFF404040u, 0xFF000000u};
  switch (number) {
    case 5:
      return MetaBrush{MetaBrush::Kind::Null, 0, 0, {}, false};
    case 6:
      return ThinPen(0xFFFFFFFFu);
    case 7:
    case 19:
      return ThinPen(0xFF000000u);
    case 8: {
      MetaPen pen;
      pen.style = MetaPen::kNull;
      return pen;
    }
    case 10:
    case 11:
    case 16:
      return NamedFont("Courier New");
    case 12:
    case 13:
    case 14:
    case 17:
      return NamedFont("Arial");
    case 18:
      return SolidBrush(0xFFFFFFFFu);
    default:
      if (number < kGreys.size()) return SolidBrush(kGreys[number]);
      return FreeSlot{};
  }
}

QBrush BrushOf(const MetaBrush& brush, const GroundColors& colors) {
  switch (brush.kind) {
    case MetaBrush::Kind::Null:
      return Qt::NoBrush;
    case MetaBrush::Kind::Hatched:
      return QBrush(HatchTile(brush, colors));
    case MetaBrush::Kind::Pattern:
      return QBrush(brush.two_colors ? TwoColorTile(brush.pattern, colors) : brush.pattern);
    default:
      return QBrush(QColor::fromRgba(brush.color));
  }
}

double PenWidth(const MetaPen& pen, double scale) {
  return std::clamp(pen.width * scale, 1.0, kWidestPen);
}

QPen PenOf(const MetaPen& pen, const GroundColors& colors, double scale, double miter_limit) {
  const double width = PenWidth(pen, scale);
  const bool thin = width <= 1;
  QPen made(BrushOf(pen.brush, colors), width, Qt::SolidLine, thin ? Qt::FlatCap : CapsOf(pen),
            thin ? Qt::SvgMiterJoin : JoinsOf(pen));
  made.setMiterLimit(std::clamp(miter_limit, 1.0, kWidestPen));
  if (const QList<qreal> dashes = DashesOf(pen, width, scale); !dashes.isEmpty()) made.setDashPattern(dashes);
  return made;
}

}  // namespace zelvane
