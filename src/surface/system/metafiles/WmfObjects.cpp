#include <utility>

#include "surface/system/metafiles/ObjectFields.h"
#include "surface/system/metafiles/RecordTables.h"
#include "surface/system/metafiles/TextCodes.h"
#include "surface/system/metafiles/WmfFields.h"

// State, objects and texts of metafiles of 16 bits, as [MS-WMF] describes them.

namespace zelvane {

namespace {

// State

/// The ratio of two pairs of numbers, the divisors first; (1, 1) where a divisor is 0.
QSizeF Ratio(Fields& fields) {
  const double divisor_y = fields.Int16(), y = fields.Int16();
  const double divisor_x = fields.Int16(), x = fields.Int16();
  if (divisor_x == 0 || divisor_y == 0) return {1, 1};
  return {x / divisor_x, y / divisor_y};
}

/// A unit of the text mode is one of the header's, as the size of the picture takes it.
void SetMapMode(Player& player, Fields fields) {
  const uint32_t mode = fields.Word();
  if (mode > static_cast<uint32_t>(MapMode::Text) && mode <= static_cast<uint32_t>(MapMode::Anisotropic))
    player.State().mapping.SetMode(static_cast<MapMode>(mode));
}

// Objects

MetaObject ReadPen(Player& player, Fields& fields) {
  MetaPen pen;
  pen.style = fields.Word();
  pen.width = std::abs(fields.Int16());
  fields.Skip(2);
  pen.brush.color = player.ColorOf(fields.Long());
  return pen;
}

MetaObject ReadBrush(Player& player, Fields& fields) {
  const uint32_t style = fields.Word();
  const QRgb color = player.ColorOf(fields.Long());
  return BrushOfStyle(style, color, fields.Word());
}

MetaObject ReadFont(Player&, Fields& fields) {
  constexpr uint64_t kMostOfName = 32;
  MetaFont font;
  font.height = fields.Int16();
  font.width = fields.Int16();
  font.escapement = fields.Int16();
  fields.Skip(2);
  font.weight = fields.Int16();
  ReadFontLook(fields, font);
  const ByteView rest = fields.Rest();
  uint64_t length = 0;
  while (length < kMostOfName && rest.At(length) != 0) ++length;
  font.face = TextOf(rest.Part(0, length), font.charset == kSymbolCharset ? 0 : font.charset);
  return font;
}

MetaObject ReadColors(Player&, Fields& fields) {
  return ReadPalette(fields);
}

/// Rows of one height, each with the beginnings and ends of what it holds.
MetaObject ReadRegion(Player&, Fields& fields) {
  fields.Skip(10);
  const uint32_t rows = fields.Word();
  fields.Skip(2 + 8);
  MetaRegion region;
  for (uint32_t i = 0; i < rows; ++i) {
    const uint32_t count = fields.Word();
    const int32_t top = fields.Int16(), bottom = fields.Int16();
    fields.Expect(count, 2);
    for (uint32_t pair = 0; pair < count / 2; ++pair) {
      const int32_t left = fields.Int16();
      region.boxes.append({left, top, fields.Int16(), bottom});
    }
    fields.Skip(count % 2 * 2 + 2);
  }
  return region;
}

MetaObject ReadDibPattern(Player& player, Fields& fields) {
  constexpr uint32_t kDevicePattern = 3;
  const uint32_t style = fields.Word(), usage = fields.Word();
  const auto image = player.ReadImage({.header = fields.Rest(), .bits = {}, .palette_numbers = usage == 1});
  if (!image) return UnknownObject{};
  constexpr uint64_t kDepth = 14;
  return player.PatternOf(*image, style == kDevicePattern && fields.Rest().Little16(kDepth) == 1);
}

MetaObject ReadDevicePattern(Player& player, Fields& fields) {
  constexpr uint64_t kBits = 32;
  const auto image = player.ReadDeviceImage(fields.Rest(), kBits);
  return image ? MetaObject(player.PatternOf(*image, false)) : UnknownObject{};
}

MetaObject ReadUnknown(Player&, Fields&) {
  return UnknownObject{};
}

/// The object takes its number even where it can't be read, so that those behind it keep theirs.
template <auto kRead>
void Create(Player& player, Fields fields) {
  MetaObject object = UnknownObject{};
  try {
    object = kRead(player, fields);
  } catch (const RecordFault&) {
  }
  player.Objects().Add(std::move(object));
}

void SelectObject(Player& player, Fields fields) {
  const MetaObject& object = player.Objects().At(fields.Word());
  player.Select(object);
  if (const auto* region = std::get_if<MetaRegion>(&object)) player.ClipTo(*region);
}

// Text

void TextOut(Player& player, Fields fields) {
  const uint32_t length = fields.Word();
  TextRun run;
  run.text = TextOf(fields.Bytes(length), player.State().font.charset);
  fields.Skip(length % 2);
  run.reference = PointYX(fields);
  player.Text(run);
}

void ExtTextOut(Player& player, Fields fields) {
  TextRun run;
  run.reference = PointYX(fields);
  const uint32_t length = fields.Word();
  run.options = fields.Word();
  if (run.options & (TextRun::kOpaque | TextRun::kClipped)) {
    const QPointF corner = PointXY(fields);
    run.box = QRectF(corner, PointXY(fields));
  }
  run.text = TextOf(fields.Bytes(length), player.State().font.charset);
  if (fields.Left() > 0) fields.Skip(length % 2);
  // Where a character took two bytes, the distances aren't those of the text's units.
  if (fields.Left() / 2 >= length && run.text.size() == static_cast<qsizetype>(length))
    for (uint32_t i = 0; i < length; ++i) run.advances.append(fields.Int16());
  player.Text(run);
}

void SetTextJustification(Player& player, Fields fields) {
  const double count = fields.Word(), extra = fields.Int16();
  player.State().blank_extra = count > 0 ? extra / count : 0;
}

}  // namespace

const QList<RecordEntry>& WmfObjectRecords() {
  static const QList<RecordEntry> kRecords = {
      {0x001E, [](Player& p, Fields) { p.Save(); }},
      {0x00F7, Create<ReadColors>},
      {0x00F8, Create<ReadUnknown>},
      {0x0102, [](Player& p, Fields f) { p.State().colors.opaque = f.Word() != 1; }},
      {0x0103, SetMapMode},
      {0x0104, [](Player& p, Fields f) { p.State().pen_mode = f.Word(); }},
      {0x0106,
       [](Player& p, Fields f) { p.State().fill_rule = f.Word() == 2 ? Qt::WindingFill : Qt::OddEvenFill; }},
      {0x0107, [](Player& p, Fields f) { p.State().soft_stretch = f.Word() == 4; }},
      {0x0108, [](Player& p, Fields f) { p.State().character_extra = f.Int16(); }},
      {0x0127, [](Player& p, Fields f) { p.Restore(f.Int16()); }},
      {0x012D, SelectObject},
      {0x012E, [](Player& p, Fields f) { p.State().text_align = f.Word(); }},
      {0x0142, Create<ReadDibPattern>},
      {0x01F0, [](Player& p, Fields f) { p.Objects().Delete(f.Word()); }},
      {0x01F9, Create<ReadDevicePattern>},
      {0x0201, [](Player& p, Fields f) { p.State().colors.ground = p.ColorOf(f.Long()); }},
      {0x0209, [](Player& p, Fields f) { p.State().colors.text = p.ColorOf(f.Long()); }},
      {0x020A, SetTextJustification},
      {0x020B, [](Player& p, Fields f) { p.State().mapping.SetWindowOrigin(PointYX(f)); }},
      {0x020C, [](Player& p, Fields f) { p.State().mapping.SetWindowExtent(SizeYX(f)); }},
      {0x020D, [](Player& p, Fields f) { p.State().mapping.SetViewportOrigin(PointYX(f)); }},
      {0x020E, [](Player& p, Fields f) { p.State().mapping.SetViewportExtent(SizeYX(f)); }},
      {0x020F,
       [](Player& p, Fields f) {
         p.State().mapping.SetWindowOrigin(p.State().mapping.WindowOrigin() + PointYX(f));
       }},
      {0x0211,
       [](Player& p, Fields f) {
         p.State().mapping.SetViewportOrigin(p.State().mapping.ViewportOrigin() + PointYX(f));
       }},
      {0x0234, [](Player& p, Fields f) { p.Select(p.Objects().At(f.Word())); }},
      {0x02FA, Create<ReadPen>},
      {0x02FB, Create<ReadFont>},
      {0x02FC, Create<ReadBrush>},
      {0x02FD, Create<ReadUnknown>},
      {0x0410, [](Player& p, Fields f) { p.State().mapping.ScaleWindow(Ratio(f)); }},
      {0x0412, [](Player& p, Fields f) { p.State().mapping.ScaleViewport(Ratio(f)); }},
      {0x0521, TextOut},
      {0x06FE, Create<ReadUnknown>},
      {0x06FF, Create<ReadRegion>},
      {0x0A32, ExtTextOut},
  };
  return kRecords;
}

}  // namespace zelvane
