#include <algorithm>
#include <cmath>
#include <utility>

#include "surface/codecs/Dib.h"
#include "surface/system/desktop/ImageBitmap.h"
#include "surface/system/metafiles/PixelEdges.h"
#include "surface/system/metafiles/Player.h"

namespace zelvane {

namespace {

constexpr uint32_t kInfoHeader = 40;
constexpr double kFar = 1e7;  // pixels beyond which nothing can be meant to show

/// The byte of a raster operation that says what it does.
RasterCode CodeOf(uint32_t operation) {
  return static_cast<RasterCode>(operation >> 16);
}

/// Within a record the palette of a bitmap may be numbers of the selected palette, and one that needs none
/// may bring colours that it would like to be shown with.
void AdaptHeader(DibHeader& header, ByteView dib, const QList<QRgb>* palette) {
  const uint32_t size = dib.Little32(0);
  if (header.depth > 8) {
    if (size >= kInfoHeader) header.end += uint64_t{dib.Little32(32)} * 4;
  } else if (palette) {
    for (uint32_t i = 0; i < header.colours; ++i) {
      const auto number = static_cast<qsizetype>(dib.Little16(size + uint64_t{i} * 2));
      if (number < palette->size()) header.palette[i] = (*palette)[number];
    }
    header.end = size + uint64_t{header.colours} * 2;
  }
}

/// Takes the source's places to those of the target.
QTransform Between(const QRectF& source, const QRectF& target) {
  const double x = target.width() / source.width(), y = target.height() / source.height();
  return {x, 0, 0, y, target.left() - source.left() * x, target.top() - source.top() * y};
}

/// Pixels whose top byte is their opacity, which no channel may go beyond.
QImage Premultiplied(const QImage& image) {
  QImage made(image.constBits(), image.width(), image.height(), QImage::Format_ARGB32_Premultiplied);
  made.detach();
  for (int y = 0; y < made.height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(made.scanLine(y));
    std::for_each(row, row + made.width(), [](QRgb& pixel) {
      const int most = qAlpha(pixel);
      pixel = qRgba(std::min(qRed(pixel), most), std::min(qGreen(pixel), most), std::min(qBlue(pixel), most),
                    most);
    });
  }
  return made;
}

/// Nothing but greys, and more of them than black and white.
bool IsSoftMask(const QImage& image) {
  bool soft = false;
  for (int y = 0; y < image.height(); ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = 0; x < image.width(); ++x) {
      const int level = qBlue(row[x]);
      if (qRed(row[x]) != level || qGreen(row[x]) != level) return false;
      soft = soft || (level != 0 && level != 255);
    }
  }
  return soft;
}

QImage WithOpacity(const QImage& image, const QImage& opacity) {
  QImage made = image.convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < made.height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(made.scanLine(y));
    const auto* levels = reinterpret_cast<const QRgb*>(opacity.constScanLine(y));
    for (int x = 0; x < made.width(); ++x) row[x] = (row[x] & 0xFFFFFFu) | levels[x] << 24;
  }
  return made.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

bool IsNear(const QRectF& box) {
  return std::abs(box.left()) < kFar && std::abs(box.right()) < kFar && std::abs(box.top()) < kFar &&
         std::abs(box.bottom()) < kFar;
}

QRgb Mixed(const std::array<Player::Vertex, 3>& corners, const std::array<double, 3>& parts) {
  double red = 0, green = 0, blue = 0;
  for (size_t i = 0; i < 3; ++i) {
    red += parts[i] * corners[i].color.red();
    green += parts[i] * corners[i].color.green();
    blue += parts[i] * corners[i].color.blue();
  }
  return qRgb(static_cast<int>(red + 0.5), static_cast<int>(green + 0.5), static_cast<int>(blue + 0.5));
}

/// Twice the area of a triangle, below 0 where it goes the other way round.
double Area(QPointF a, QPointF b, QPointF c) {
  return (b.x() - a.x()) * (c.y() - a.y()) - (b.y() - a.y()) * (c.x() - a.x());
}

}  // namespace

QRectF DibParts::FromTop(const QRectF& source, int height) const {
  if (IsTopDown()) return source;
  return {source.x(), height - source.y() - source.height(), source.width(), source.height()};
}

std::optional<QImage> Player::ReadImage(const DibParts& dib) {
  constexpr uint32_t kJpeg = 4, kPng = 5;
  const uint32_t way = dib.header.Little32(0) >= kInfoHeader ? dib.header.Little32(16) : 0;
  if (dib.bits && (way == kJpeg || way == kPng)) {
    const auto picture = DecodePicture(*dib.bits, images_);
    return picture ? std::optional(ImageOf(*picture)) : std::nullopt;
  }
  auto header = ReadDibHeader(dib.header);
  if (!header) return std::nullopt;
  if (dib.rows > 0) header->height = std::min(header->height, dib.rows);
  if (!images_.Admits(header->width, header->height)) return std::nullopt;
  Charge(4.0 * static_cast<double>(header->width * header->height));
  AdaptHeader(*header, dib.header, dib.palette_numbers ? &state_.palette.colors : nullptr);
  const bool opacity = dib.with_opacity && header->depth == 32;
  if (opacity) header->masks[3] = 0xFF000000u;
  ReadingWatch nobody;
  const auto pixels = ReadDibPixels(*header, dib.bits ? *dib.bits : dib.header.From(header->end), nobody);
  if (!pixels) return std::nullopt;
  return opacity ? Premultiplied(ImageOf(*pixels)) : ImageOf(*pixels);
}

std::optional<QImage> Player::ReadDeviceImage(ByteView bitmap, uint64_t bits_at) {
  const int32_t width = static_cast<int16_t>(bitmap.Little16(2));
  const int32_t height = static_cast<int16_t>(bitmap.Little16(4));
  const uint32_t stride = bitmap.Little16(6), depth = bitmap.At(9);
  const ByteView bits = bitmap.From(bits_at);
  if (!images_.Admits(width, height) || (depth != 1 && depth != 24 && depth != 32)) return std::nullopt;
  const auto columns = static_cast<uint64_t>(width), rows = static_cast<uint64_t>(height);
  if (stride < (columns * depth + 7) / 8 || !bits.Has(0, stride * rows)) return std::nullopt;
  Charge(4.0 * width * height);
  QImage image(width, height, QImage::Format_RGB32);
  if (image.isNull()) return std::nullopt;
  for (uint64_t y = 0; y < rows; ++y) {
    auto* row = reinterpret_cast<QRgb*>(image.scanLine(static_cast<int>(y)));
    for (uint64_t x = 0; x < columns; ++x) {
      const uint64_t at = y * stride + x * depth / 8;
      const bool ground = bits.At(at) >> (7 - x % 8) & 1;
      row[x] = depth != 1 ? 0xFF000000u | bits.Little32(at)
               : ground   ? state_.colors.ground
                          : state_.colors.text;
    }
  }
  return image;
}

MetaBrush Player::PatternOf(const QImage& image, bool two_colors) {
  // Selected brushes stay in memory, so their size is what they cost.
  constexpr double kWorkOfPixel = 64;
  Charge(kWorkOfPixel * image.width() * image.height());
  return {MetaBrush::Kind::Pattern, 0, 0, image, two_colors};
}

/// Writers without a record for opacity join a bitmap of it by "or", then the colours by "and". That is exact
/// where it's black or white; where it's grey, opacity is what was meant.
void Player::PaintImage(const QImage& image, const Blit& blit) {
  constexpr RasterCode kSourceOr = 0xEE, kSourceAnd = 0x88;
  const RasterCode code = CodeOf(blit.operation);
  if (mask_ && code == kSourceAnd && blit.target == mask_->blit.target && blit.source == mask_->blit.source &&
      image.size() == mask_->image.size()) {
    Blit blended = blit;
    blended.operation = Blit().operation;
    return PlaceImage(WithOpacity(image, std::exchange(mask_, std::nullopt)->image), blended);
  }
  Settle();
  if (code == kSourceOr && IsSoftMask(image)) {
    mask_ = SoftMask{image, blit};
  } else {
    PlaceImage(image, blit);
  }
}

void Player::Settle() {
  if (const auto mask = std::exchange(mask_, std::nullopt)) PlaceImage(mask->image, mask->blit);
}

void Player::PlaceImage(const QImage& image, const Blit& blit) {
  const RasterCode code = CodeOf(blit.operation);
  if (!NeedsSource(code)) return PaintPattern(blit.target, blit.operation);
  if (blit.source.width() == 0 || blit.source.height() == 0) return;
  const QRect part = blit.source.normalized().toRect() & image.rect();
  if (part.isEmpty()) return;
  Sheet::Placement placement;
  placement.to_sheet = QTransform::fromTranslate(part.x(), part.y()) * Between(blit.source, blit.target) *
                       state_.mapping.ToSheet();
  placement.soft = state_.soft_stretch;
  placement.opacity = blit.opacity;
  if (!IsNear(placement.to_sheet.mapRect(QRectF(QPointF(), part.size())))) return;
  UseSheet();
  const bool whole = part == image.rect();
  sheet_.Draw(whole ? image : image.copy(part), placement, code,
              NeedsPattern(code) ? BrushOf(state_.brush, state_.colors) : QBrush());
}

void Player::PaintImage(const QImage& image, const QRectF& source, const std::array<QPointF, 3>& corners) {
  const QRect part = source.toRect() & image.rect();
  if (part.isEmpty()) return;
  const QPointF across = (corners[1] - corners[0]) / source.width();
  const QPointF down = (corners[2] - corners[0]) / source.height();
  Sheet::Placement placement;
  placement.to_sheet =
      QTransform::fromTranslate(part.x() - source.x(), part.y() - source.y()) *
      QTransform(across.x(), across.y(), down.x(), down.y(), corners[0].x(), corners[0].y()) *
      state_.mapping.ToSheet();
  if (!IsNear(placement.to_sheet.mapRect(QRectF(QPointF(), part.size())))) return;
  UseSheet();
  sheet_.Draw(image.copy(part), placement, kSourceCopy, {});
}

void Player::PaintPattern(const QRectF& target, uint32_t operation) {
  const RasterCode code = CodeOf(operation);
  if (NeedsSource(code)) return;
  const QBrush brush = NeedsPattern(code) ? BrushOf(state_.brush, state_.colors) : QBrush(QColor(Qt::black));
  UseSheet();
  QPainterPath area;
  area.addRect(target.normalized());
  sheet_.Fill(OnPixels(OnSheet(area)), brush, PatternAsSource(code));
}

void Player::FadeBox(const Vertex& first, const Vertex& last, bool down) {
  QPainterPath area;
  area.addRect(QRectF(first.at, last.at).normalized());
  const QPointF from = state_.mapping.Map(first.at), to = state_.mapping.Map(last.at);
  QLinearGradient fade(from, down ? QPointF(from.x(), to.y()) : QPointF(to.x(), from.y()));
  fade.setColorAt(0, first.color);
  fade.setColorAt(1, last.color);
  UseSheet();
  sheet_.Fill(OnPixels(OnSheet(area)), fade);
}

void Player::FadeTriangle(const std::array<Vertex, 3>& corners) {
  const std::array<QPointF, 3> at = {state_.mapping.Map(corners[0].at), state_.mapping.Map(corners[1].at),
                                     state_.mapping.Map(corners[2].at)};
  const QRect box = QPolygonF({at[0], at[1], at[2]}).boundingRect().toAlignedRect() & sheet_.Bounds();
  const double whole = Area(at[0], at[1], at[2]);
  if (whole == 0 || box.isEmpty() || !images_.Admits(box.width(), box.height())) return;
  Charge(16.0 * box.width() * box.height());
  QImage image(box.size(), QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return;
  image.fill(Qt::transparent);
  for (int y = 0; y < box.height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < box.width(); ++x) {
      const QPointF pixel(box.x() + x + 0.5, box.y() + y + 0.5);
      const double first = Area(pixel, at[1], at[2]) / whole, second = Area(at[0], pixel, at[2]) / whole;
      const double third = 1 - first - second;
      if (first >= 0 && second >= 0 && third >= 0) row[x] = Mixed(corners, {first, second, third});
    }
  }
  UseSheet();
  sheet_.Draw(image, {QTransform::fromTranslate(box.x(), box.y())}, kSourceCopy, {});
}

}  // namespace zelvane
