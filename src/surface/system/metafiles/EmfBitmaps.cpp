#include "surface/system/metafiles/EmfFields.h"
#include "surface/system/metafiles/RecordTables.h"

// Bitmaps and fades of metafiles of 32 bits, as [MS-EMF] describes them.

namespace zelvane {

namespace {

/// The beginning of the records that take their source from another device: bounds, target, operation, the
/// source's place, its transform, ground and use, the bitmap.
struct Transfer {
  Blit blit;
  /// The operation, or what stands in its place.
  uint32_t operation = 0;
  DibParts dib;

  explicit Transfer(Fields& fields) {
    fields.Skip(kEmfBounds);
    blit.target = ReadPlace(fields);
    operation = fields.Long();
    blit.source = QRectF(ReadPoint(fields), blit.target.size());
    constexpr uint64_t kTransformAndGround = 28;
    fields.Skip(kTransformAndGround);
    const bool palette_numbers = fields.Long() == 1;
    dib = ReadDibParts(fields);
    dib.palette_numbers = palette_numbers;
  }
};

void BitBlt(Player& player, Fields fields) {
  Transfer transfer(fields);
  transfer.blit.operation = transfer.operation;
  if (transfer.dib.header.Size() == 0) return player.PaintPattern(transfer.blit.target, transfer.operation);
  if (const auto image = player.ReadImage(transfer.dib)) player.PaintImage(*image, transfer.blit);
}

void StretchBlt(Player& player, Fields fields) {
  Transfer transfer(fields);
  transfer.blit.operation = transfer.operation;
  transfer.blit.source.setSize(ReadSize(fields));
  if (transfer.dib.header.Size() == 0) return player.PaintPattern(transfer.blit.target, transfer.operation);
  if (const auto image = player.ReadImage(transfer.dib)) player.PaintImage(*image, transfer.blit);
}

/// The pixels for which `keeps` holds, the others clear.
template <class Keeps>
QImage Kept(const QImage& image, Keeps&& keeps) {
  QImage kept = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < kept.height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(kept.scanLine(y));
    for (int x = 0; x < kept.width(); ++x)
      if (!keeps(row[x], x, y)) row[x] = 0;
  }
  return kept;
}

/// Two operations, one where the mask is white, one where it is black.
void MaskBlt(Player& player, Fields fields) {
  Transfer transfer(fields);
  const QPointF mask_at = ReadPoint(fields);
  fields.Skip(4);
  const auto mask = player.ReadImage(ReadDibParts(fields));
  const auto image = player.ReadImage(transfer.dib);
  if (!image || !mask) return;
  for (const bool front : {true, false}) {
    const QPoint offset = (mask_at - transfer.blit.source.topLeft()).toPoint();
    const QImage part = Kept(*image, [&](QRgb, int x, int y) {
      const QPoint at = QPoint(x, y) + offset;
      return mask->rect().contains(at) && (qGray(mask->pixel(at)) >= 128) == front;
    });
    transfer.blit.operation = front ? transfer.operation & 0xFFFFFF : transfer.operation >> 8 & 0xFF0000;
    player.PaintImage(part, transfer.blit);
  }
}

void AlphaBlend(Player& player, Fields fields) {
  Transfer transfer(fields);
  transfer.blit.source.setSize(ReadSize(fields));
  const uint32_t opacity = transfer.operation >> 16 & 0xFF, format = transfer.operation >> 24;
  transfer.blit.opacity = opacity / 255.0;
  transfer.dib.with_opacity = format == 1;
  if (const auto image = player.ReadImage(transfer.dib)) player.PaintImage(*image, transfer.blit);
}

void TransparentBlt(Player& player, Fields fields) {
  Transfer transfer(fields);
  transfer.blit.source.setSize(ReadSize(fields));
  const auto image = player.ReadImage(transfer.dib);
  if (!image) return;
  const QRgb clear = player.ColorOf(transfer.operation);
  player.PaintImage(Kept(*image, [&](QRgb pixel, int, int) { return pixel != clear; }), transfer.blit);
}

void PlgBlt(Player& player, Fields fields) {
  fields.Skip(kEmfBounds);
  std::array<QPointF, 3> corners;
  for (QPointF& corner : corners) corner = ReadPoint(fields);
  const QRectF source = ReadPlace(fields);
  constexpr uint64_t kTransformAndGround = 28;
  fields.Skip(kTransformAndGround);
  const bool palette_numbers = fields.Long() == 1;
  DibParts dib = ReadDibParts(fields);
  dib.palette_numbers = palette_numbers;
  const auto image = player.ReadImage(dib);
  if (image && source.width() > 0 && source.height() > 0) player.PaintImage(*image, source, corners);
}

void StretchDibits(Player& player, Fields fields) {
  fields.Skip(kEmfBounds);
  Blit blit;
  const QPointF to = ReadPoint(fields);
  const QRectF source = ReadPlace(fields);
  DibParts dib = ReadDibParts(fields);
  dib.palette_numbers = fields.Long() == 1;
  blit.operation = fields.Long();
  blit.target = QRectF(to, ReadSize(fields));
  if (dib.header.Size() == 0) return player.PaintPattern(blit.target, blit.operation);
  const auto image = player.ReadImage(dib);
  if (!image) return;
  blit.source = dib.FromTop(source, image->height());
  player.PaintImage(*image, blit);
}

void SetDibitsToDevice(Player& player, Fields fields) {
  fields.Skip(kEmfBounds);
  const QPointF to = ReadPoint(fields);
  QRectF source = ReadPlace(fields);
  DibParts dib = ReadDibParts(fields);
  dib.palette_numbers = fields.Long() == 1;
  source.translate(0, -double{1} * fields.Long());
  dib.rows = fields.Long();
  const auto image = player.ReadImage(dib);
  if (!image) return;
  Blit blit;
  blit.target = player.State().mapping.DevicePixels(to, source.size());
  blit.source = dib.FromTop(source, image->height());
  player.PaintImage(*image, blit);
}

Player::Vertex ReadVertex(Fields& fields) {
  const QPointF at = ReadPoint(fields);
  const int red = static_cast<int>(fields.Word() >> 8), green = static_cast<int>(fields.Word() >> 8);
  const int blue = static_cast<int>(fields.Word() >> 8);
  fields.Skip(2);
  return {at, QColor(red, green, blue)};
}

void GradientFill(Player& player, Fields fields) {
  enum Mode : uint32_t { kAcross = 0, kDown = 1, kTriangles = 2 };
  fields.Skip(kEmfBounds);
  const uint32_t vertex_count = fields.Long(), count = fields.Long(), mode = fields.Long();
  fields.Expect(vertex_count, 16);
  std::vector<Player::Vertex> vertices;
  for (uint32_t i = 0; i < vertex_count; ++i) vertices.push_back(ReadVertex(fields));
  const size_t corners = mode == kTriangles ? 3 : 2;
  fields.Expect(count, corners * 4);
  for (uint32_t i = 0; i < count; ++i) {
    std::array<Player::Vertex, 3> at;
    for (size_t corner = 0; corner < corners; ++corner) {
      const uint32_t number = fields.Long();
      if (number >= vertices.size()) throw RecordFault();
      at[corner] = vertices[number];
    }
    if (mode == kTriangles) {
      player.FadeTriangle(at);
    } else {
      player.FadeBox(at[0], at[1], mode == kDown);
    }
  }
}

}  // namespace

const QList<RecordEntry>& EmfBitmapRecords() {
  static const QList<RecordEntry> kRecords = {
      {76, BitBlt},      {77, StretchBlt},        {78, MaskBlt},
      {79, PlgBlt},      {80, SetDibitsToDevice}, {81, StretchDibits},
      {114, AlphaBlend}, {116, TransparentBlt},   {118, GradientFill},
  };
  return kRecords;
}

}  // namespace zelvane
