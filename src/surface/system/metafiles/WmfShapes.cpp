#include "surface/system/metafiles/RecordTables.h"
#include "surface/system/metafiles/WmfFields.h"

// Lines, shapes and areas of metafiles of 16 bits, as [MS-WMF] describes them.

namespace zelvane {

namespace {

void PolyPolygon(Player& player, Fields fields) {
  const uint32_t count = fields.Word();
  fields.Expect(count, 2);
  QList<uint32_t> sizes;
  for (uint32_t i = 0; i < count; ++i) sizes.append(fields.Word());
  QList<Points> polygons;
  for (const uint32_t size : sizes) polygons.append(PointList(fields, size));
  player.PolyPolygon(polygons);
}

template <Player::ArcKind kKind>
void Arc(Player& player, Fields fields) {
  const QPointF end = PointYX(fields), start = PointYX(fields);
  player.Arc(kKind, BoxBackwards(fields), start, end);
}

// Regions

void FillRegion(Player& player, Fields fields) {
  const auto* region = player.Objects().Find<MetaRegion>(fields.Word());
  const auto* brush = player.Objects().Find<MetaBrush>(fields.Word());
  if (region && brush) player.FillArea(player.AreaOf(*region), *brush);
}

void FrameRegion(Player& player, Fields fields) {
  const auto* region = player.Objects().Find<MetaRegion>(fields.Word());
  const auto* brush = player.Objects().Find<MetaBrush>(fields.Word());
  if (region && brush) player.FrameArea(*region, *brush, SizeYX(fields));
}

template <class Paint>
void WithRegion(Player& player, Fields& fields, Paint&& paint) {
  if (const auto* region = player.Objects().Find<MetaRegion>(fields.Word())) paint(*region);
}

/// Number 0 is no region, unless it is one: everything shows again.
void SelectClipRegion(Player& player, Fields fields) {
  const uint32_t number = fields.Word();
  if (const auto* region = player.Objects().Find<MetaRegion>(number)) return player.ClipTo(*region);
  if (number == 0) player.ResetClip();
}

}  // namespace

const QList<RecordEntry>& WmfShapeRecords() {
  using Kind = Player::ArcKind;
  static const QList<RecordEntry> kRecords = {
      {0x012A,
       [](Player& p, Fields f) { WithRegion(p, f, [&](auto& region) { p.InvertArea(p.AreaOf(region)); }); }},
      {0x012B,
       [](Player& p, Fields f) {
         WithRegion(p, f, [&](auto& region) { p.FillArea(p.AreaOf(region), p.State().brush); });
       }},
      {0x012C, SelectClipRegion},
      {0x0213, [](Player& p, Fields f) { p.PolylineTo({PointYX(f)}); }},
      {0x0214, [](Player& p, Fields f) { p.MoveTo(PointYX(f)); }},
      {0x0220, [](Player& p, Fields f) { p.OffsetClip(PointYX(f)); }},
      {0x0228, FillRegion},
      {0x0324,
       [](Player& p, Fields f) {
         const uint32_t count = f.Word();
         p.Polygon(PointList(f, count));
       }},
      {0x0325,
       [](Player& p, Fields f) {
         const uint32_t count = f.Word();
         p.Polyline(PointList(f, count));
       }},
      {0x0415, [](Player& p, Fields f) { p.ExcludeClip(BoxBackwards(f)); }},
      {0x0416, [](Player& p, Fields f) { p.IntersectClip(BoxBackwards(f)); }},
      {0x0418, [](Player& p, Fields f) { p.Ellipse(BoxBackwards(f)); }},
      {0x041B, [](Player& p, Fields f) { p.Rectangle(BoxBackwards(f)); }},
      {0x041F,
       [](Player& p, Fields f) {
         const uint32_t color = f.Long();
         p.SetPixel(PointYX(f), p.ColorOf(color));
       }},
      {0x0429, FrameRegion},
      {0x0538, PolyPolygon},
      {0x061C,
       [](Player& p, Fields f) {
         const QSizeF corner = SizeYX(f);
         p.RoundBox(BoxBackwards(f), corner);
       }},
      {0x0817, Arc<Kind::Arc>},
      {0x081A, Arc<Kind::Pie>},
      {0x0830, Arc<Kind::Chord>},
  };
  return kRecords;
}

}  // namespace zelvane
