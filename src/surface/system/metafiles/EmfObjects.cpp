#include <bit>

#include "surface/system/metafiles/EmfFields.h"
#include "surface/system/metafiles/ObjectFields.h"
#include "surface/system/metafiles/RecordTables.h"
#include "surface/system/metafiles/TextCodes.h"

// State, objects and texts of metafiles of 32 bits, as [MS-EMF] describes them.

namespace zelvane {

namespace {

// State

QTransform ReadTransform(Fields& fields) {
  const double m11 = fields.Float(), m12 = fields.Float(), m21 = fields.Float(), m22 = fields.Float();
  const double dx = fields.Float();
  return {m11, m12, m21, m22, dx, fields.Float()};
}

void ModifyWorld(Player& player, Fields fields) {
  enum Way : uint32_t { kIdentity = 1, kBefore = 2, kBehind = 3, kInstead = 4 };
  const QTransform change = ReadTransform(fields);
  Mapping& mapping = player.State().mapping;
  switch (fields.Long()) {
    case kIdentity:
      return mapping.SetWorld({});
    case kBefore:
      return mapping.SetWorld(change * mapping.World());
    case kBehind:
      return mapping.SetWorld(mapping.World() * change);
    case kInstead:
      return mapping.SetWorld(change);
  }
}

/// The ratio of two pairs of numbers; (1, 1) where a divisor is 0.
QSizeF ReadRatio(Fields& fields) {
  const double x = fields.Int32(), divisor_x = fields.Int32();
  const double y = fields.Int32(), divisor_y = fields.Int32();
  if (divisor_x == 0 || divisor_y == 0) return {1, 1};
  return {x / divisor_x, y / divisor_y};
}

void SetMapMode(Player& player, Fields fields) {
  const uint32_t mode = fields.Long();
  if (mode >= static_cast<uint32_t>(MapMode::Text) && mode <= static_cast<uint32_t>(MapMode::Anisotropic))
    player.State().mapping.SetMode(static_cast<MapMode>(mode));
}

/// Some writers give it as a whole number, some as a fraction.
void SetMiterLimit(Player& player, Fields fields) {
  constexpr uint32_t kMostAsNumber = 100000;
  const uint32_t value = fields.Long();
  const float fraction = std::bit_cast<float>(value);
  player.State().miter_limit = value <= kMostAsNumber ? value : fraction >= 1 ? double{fraction} : 10;
}

void SetTextJustification(Player& player, Fields fields) {
  const double extra = fields.Int32(), count = fields.Int32();
  player.State().blank_extra = count > 0 ? extra / count : 0;
}

// Objects

MetaBrush ReadBrush(const Player& player, Fields& fields) {
  const uint32_t style = fields.Long();
  const QRgb color = player.ColorOf(fields.Long());
  return BrushOfStyle(style, color, fields.Long());
}

void CreatePen(Player& player, Fields fields) {
  const uint32_t number = fields.Long();
  MetaPen pen;
  pen.style = fields.Long();
  pen.width = std::abs(ReadPoint(fields).x());
  pen.brush.color = player.ColorOf(fields.Long());
  player.Objects().Put(number, pen);
}

void CreateExtendedPen(Player& player, Fields fields) {
  const uint32_t number = fields.Long();
  const DibParts pattern = ReadDibParts(fields);
  MetaPen pen;
  pen.style = fields.Long();
  const double width = fields.Long();
  pen.width = pen.style & MetaPen::kGeometric ? width : 0;
  pen.brush = ReadBrush(player, fields);
  const uint32_t dashes = fields.Left() >= 4 ? fields.Long() : 0;
  fields.Expect(dashes, 4);
  for (uint32_t i = 0; i < dashes; ++i) pen.dashes.append(fields.Long());
  if (const auto image = player.ReadImage(pattern)) pen.brush = player.PatternOf(*image, false);
  player.Objects().Put(number, pen);
}

void CreateBrush(Player& player, Fields fields) {
  const uint32_t number = fields.Long();
  player.Objects().Put(number, ReadBrush(player, fields));
}

template <bool kTwoColors>
void CreatePatternBrush(Player& player, Fields fields) {
  const uint32_t number = fields.Long();
  const bool palette_numbers = fields.Long() == 1;
  DibParts dib = ReadDibParts(fields);
  dib.palette_numbers = palette_numbers;
  const auto image = player.ReadImage(dib);
  player.Objects().Put(number, image ? MetaObject(player.PatternOf(*image, kTwoColors)) : UnknownObject{});
}

void CreateFont(Player& player, Fields fields) {
  constexpr uint64_t kBytesOfName = 64;
  const uint32_t number = fields.Long();
  MetaFont font;
  font.height = fields.Int32();
  font.width = fields.Int32();
  font.escapement = fields.Int32();
  fields.Skip(4);
  font.weight = fields.Int32();
  ReadFontLook(fields, font);
  font.face = WideText(fields.Bytes(kBytesOfName));
  font.face.truncate(font.face.indexOf(QChar()) < 0 ? font.face.size() : font.face.indexOf(QChar()));
  player.Objects().Put(number, font);
}

void CreatePalette(Player& player, Fields fields) {
  const uint32_t number = fields.Long();
  player.Objects().Put(number, ReadPalette(fields));
}

// Texts

/// Where it stands, how many characters and where they begin, what is done, a box, where the distances begin.
TextRun ReadText(Player& player, Fields& fields, bool wide) {
  TextRun run;
  run.reference = ReadPoint(fields);
  const uint64_t count = fields.Long(), at = fields.Long();
  run.options = fields.Long();
  run.box = ReadBox(fields);
  const uint64_t distances = fields.Long();
  const ByteView text = fields.Within(at, count * (wide ? 2 : 1));
  run.text = wide ? WideText(text) : TextOf(text, player.State().font.charset);
  if (distances == 0 || run.text.size() != static_cast<qsizetype>(count)) return run;
  constexpr uint32_t kPairs = 0x2000;  // each distance across is followed by one down
  const uint64_t step = run.options & kPairs ? 8 : 4;
  if (fields.All().Has(distances, count * step)) {
    for (uint64_t i = 0; i < count; ++i)
      run.advances.append(static_cast<int32_t>(fields.All().Little32(distances + i * step)));
  }
  return run;
}

/// Bounds, the graphics mode and two scales come first.
constexpr uint64_t kTextStart = kEmfBounds + 12;

template <bool kWide>
void ExtTextOut(Player& player, Fields fields) {
  fields.Skip(kTextStart);
  player.Text(ReadText(player, fields, kWide));
}

template <bool kWide>
void PolyTextOut(Player& player, Fields fields) {
  constexpr uint64_t kSizeOfText = 40;
  fields.Skip(kTextStart);
  const uint32_t count = fields.Long();
  fields.Expect(count, kSizeOfText);
  for (uint32_t i = 0; i < count; ++i) player.Text(ReadText(player, fields, kWide));
}

void SmallTextOut(Player& player, Fields fields) {
  constexpr uint32_t kNoBox = 0x100, kNarrow = 0x200;
  TextRun run;
  run.reference = ReadPoint(fields);
  const uint32_t count = fields.Long();
  const uint32_t options = fields.Long();
  fields.Skip(12);
  if (!(options & kNoBox)) {
    run.box = ReadBox(fields);
    run.options = options;
  }
  const ByteView text = fields.Bytes(uint64_t{count} * (options & kNarrow ? 1 : 2));
  run.text = options & kNarrow ? TextOf(text, 0) : WideText(text);
  player.Text(run);
}

}  // namespace

const QList<RecordEntry>& EmfObjectRecords() {
  static const QList<RecordEntry> kRecords = {
      {9, [](Player& p, Fields f) { p.State().mapping.SetWindowExtent(ReadSize(f)); }},
      {10, [](Player& p, Fields f) { p.State().mapping.SetWindowOrigin(ReadPoint(f)); }},
      {11, [](Player& p, Fields f) { p.State().mapping.SetViewportExtent(ReadSize(f)); }},
      {12, [](Player& p, Fields f) { p.State().mapping.SetViewportOrigin(ReadPoint(f)); }},
      {13, [](Player& p, Fields f) { p.State().brush_origin = ReadPoint(f); }},
      {17, SetMapMode},
      {18, [](Player& p, Fields f) { p.State().colors.opaque = f.Long() != 1; }},
      {19,
       [](Player& p, Fields f) { p.State().fill_rule = f.Long() == 2 ? Qt::WindingFill : Qt::OddEvenFill; }},
      {20, [](Player& p, Fields f) { p.State().pen_mode = f.Long(); }},
      {21, [](Player& p, Fields f) { p.State().soft_stretch = f.Long() == 4; }},
      {22, [](Player& p, Fields f) { p.State().text_align = f.Long(); }},
      {24, [](Player& p, Fields f) { p.State().colors.text = p.ColorOf(f.Long()); }},
      {25, [](Player& p, Fields f) { p.State().colors.ground = p.ColorOf(f.Long()); }},
      {31, [](Player& p, Fields f) { p.State().mapping.ScaleViewport(ReadRatio(f)); }},
      {32, [](Player& p, Fields f) { p.State().mapping.ScaleWindow(ReadRatio(f)); }},
      {33, [](Player& p, Fields) { p.Save(); }},
      {34, [](Player& p, Fields f) { p.Restore(f.Int32()); }},
      {35, [](Player& p, Fields f) { p.State().mapping.SetWorld(ReadTransform(f)); }},
      {36, ModifyWorld},
      {37, [](Player& p, Fields f) { p.Select(p.ObjectAt(f.Long())); }},
      {38, CreatePen},
      {39, CreateBrush},
      {40, [](Player& p, Fields f) { p.Objects().Delete(f.Long()); }},
      {48, [](Player& p, Fields f) { p.Select(p.ObjectAt(f.Long())); }},
      {49, CreatePalette},
      {57, [](Player& p, Fields f) { p.State().clockwise = f.Long() == 2; }},
      {58, SetMiterLimit},
      {82, CreateFont},
      {83, ExtTextOut<false>},
      {84, ExtTextOut<true>},
      {93, CreatePatternBrush<true>},
      {94, CreatePatternBrush<false>},
      {95, CreateExtendedPen},
      {96, PolyTextOut<false>},
      {97, PolyTextOut<true>},
      {108, SmallTextOut},
      {120, SetTextJustification},
  };
  return kRecords;
}

}  // namespace zelvane
