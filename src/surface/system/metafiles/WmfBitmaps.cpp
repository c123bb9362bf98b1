#include "surface/system/metafiles/RecordTables.h"
#include "surface/system/metafiles/WmfFields.h"

// Bitmaps of metafiles of 16 bits, as [MS-WMF] describes them.

namespace zelvane {

namespace {

/// The record's number tells how long it is without a bitmap.
bool HasBitmap(const Fields& fields, uint32_t type) {
  constexpr uint64_t kTypeAndSize = 3;
  return (fields.All().Size() + 1) / 2 > kTypeAndSize + (type >> 8);
}

using ImageReader = std::optional<QImage> (*)(Player& player, ByteView bitmap);

std::optional<QImage> ReadDibImage(Player& player, ByteView bitmap) {
  return player.ReadImage({.header = bitmap, .bits = {}});
}

std::optional<QImage> ReadOldImage(Player& player, ByteView bitmap) {
  constexpr uint64_t kBits = 10;
  return player.ReadDeviceImage(bitmap, kBits);
}

template <uint32_t kType, ImageReader kRead>
void BitBlt(Player& player, Fields fields) {
  Blit blit;
  blit.operation = fields.Long();
  const QPointF from = PointYX(fields);
  const bool has_bitmap = HasBitmap(fields, kType);
  if (!has_bitmap) fields.Skip(2);
  blit.target = PlaceBackwards(fields);
  if (!has_bitmap) return player.PaintPattern(blit.target, blit.operation);
  blit.source = QRectF(from, blit.target.size());
  if (const auto image = kRead(player, fields.Rest())) player.PaintImage(*image, blit);
}

template <uint32_t kType, ImageReader kRead>
void StretchBlt(Player& player, Fields fields) {
  Blit blit;
  blit.operation = fields.Long();
  const QSizeF size = SizeYX(fields);
  blit.source = QRectF(PointYX(fields), size);
  const bool has_bitmap = HasBitmap(fields, kType);
  if (!has_bitmap) fields.Skip(2);
  blit.target = PlaceBackwards(fields);
  if (!has_bitmap) return player.PaintPattern(blit.target, blit.operation);
  if (const auto image = kRead(player, fields.Rest())) player.PaintImage(*image, blit);
}

void StretchDib(Player& player, Fields fields) {
  Blit blit;
  blit.operation = fields.Long();
  DibParts dib;
  dib.palette_numbers = fields.Word() == 1;
  const QSizeF size = SizeYX(fields);
  const QRectF source(PointYX(fields), size);
  blit.target = PlaceBackwards(fields);
  dib.header = fields.Rest();
  const auto image = player.ReadImage(dib);
  if (!image) return;
  blit.source = dib.FromTop(source, image->height());
  player.PaintImage(*image, blit);
}

void SetDibToDevice(Player& player, Fields fields) {
  DibParts dib;
  dib.palette_numbers = fields.Word() == 1;
  dib.rows = fields.Word();
  const double first_row = fields.Word();
  const QPointF from = PointYX(fields);
  const QSizeF size = SizeYX(fields);
  const QPointF to = PointYX(fields);
  dib.header = fields.Rest();
  const auto image = player.ReadImage(dib);
  if (!image) return;
  const QRectF source(from - QPointF(0, first_row), size);
  player.PaintImage(*image,
                    {player.State().mapping.DevicePixels(to, size), dib.FromTop(source, image->height())});
}

void PatBlt(Player& player, Fields fields) {
  const uint32_t operation = fields.Long();
  player.PaintPattern(PlaceBackwards(fields), operation);
}

}  // namespace

const QList<RecordEntry>& WmfBitmapRecords() {
  static const QList<RecordEntry> kRecords = {
      {0x061D, PatBlt},
      {0x0922, BitBlt<0x0922, ReadOldImage>},
      {0x0940, BitBlt<0x0940, ReadDibImage>},
      {0x0B23, StretchBlt<0x0B23, ReadOldImage>},
      {0x0B41, StretchBlt<0x0B41, ReadDibImage>},
      {0x0D33, SetDibToDevice},
      {0x0F43, StretchDib},
  };
  return kRecords;
}

}  // namespace zelvane
