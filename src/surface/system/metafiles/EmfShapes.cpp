#include "surface/system/metafiles/EmfFields.h"
#include "surface/system/metafiles/RecordTables.h"

// Lines, shapes, paths and areas of metafiles of 32 bits, as [MS-EMF] describes them.

namespace zelvane {

namespace {

enum class Width { Short, Long };

template <Width kWidth>
QPointF ReadPoint(Fields& fields) {
  if (kWidth == Width::Long) return zelvane::ReadPoint(fields);
  const double x = fields.Int16();
  return {x, double{1} * fields.Int16()};
}

template <Width kWidth>
Points ReadPoints(Fields& fields, uint32_t count) {
  fields.Expect(count, kWidth == Width::Long ? 8 : 4);
  Points points;
  points.reserve(count);
  for (uint32_t i = 0; i < count; ++i) points.append(ReadPoint<kWidth>(fields));
  return points;
}

/// Bounds, a count, the points.
template <Width kWidth, auto kDraw>
void Poly(Player& player, Fields fields) {
  fields.Skip(kEmfBounds);
  const uint32_t count = fields.Long();
  (player.*kDraw)(ReadPoints<kWidth>(fields, count));
}

/// Bounds, how many there are, their points together, the points of each.
template <Width kWidth, auto kDraw>
void PolyPoly(Player& player, Fields fields) {
  fields.Skip(kEmfBounds);
  const uint32_t count = fields.Long();
  fields.Skip(4);
  fields.Expect(count, 4);
  QList<uint32_t> sizes;
  for (uint32_t i = 0; i < count; ++i) sizes.append(fields.Long());
  QList<Points> lists;
  for (const uint32_t size : sizes) lists.append(ReadPoints<kWidth>(fields, size));
  (player.*kDraw)(lists);
}

template <Width kWidth>
void PolyDraw(Player& player, Fields fields) {
  fields.Skip(kEmfBounds);
  const uint32_t count = fields.Long();
  const Points points = ReadPoints<kWidth>(fields, count);
  player.PolyDraw(points, fields.Bytes(count));
}

template <Player::ArcKind kKind>
void Arc(Player& player, Fields fields) {
  const QRectF box = ReadBox(fields);
  const QPointF start = zelvane::ReadPoint(fields);
  player.Arc(kKind, box, start, zelvane::ReadPoint(fields));
}

void AngleArc(Player& player, Fields fields) {
  const QPointF centre = zelvane::ReadPoint(fields);
  const double radius = fields.Long(), start = fields.Float();
  player.AngleArc(centre, radius, start, fields.Float());
}

void RoundBox(Player& player, Fields fields) {
  const QRectF box = ReadBox(fields);
  player.RoundBox(box, ReadSize(fields));
}

void SetPixel(Player& player, Fields fields) {
  const QPointF at = zelvane::ReadPoint(fields);
  player.SetPixel(at, player.ColorOf(fields.Long()));
}

// Areas

/// A header of 32 bytes that tells how many boxes follow.
MetaRegion ReadRegion(Fields& fields) {
  fields.Skip(8);
  const uint32_t count = fields.Long();
  fields.Skip(20);
  fields.Expect(count, 16);
  MetaRegion region;
  for (uint32_t i = 0; i < count; ++i) {
    const int32_t left = fields.Int32(), top = fields.Int32(), right = fields.Int32();
    region.boxes.append({left, top, right, fields.Int32()});
  }
  return region;
}

void FillRegion(Player& player, Fields fields) {
  fields.Skip(kEmfBounds + 4);
  const MetaObject brush = player.ObjectAt(fields.Long());
  const MetaRegion region = ReadRegion(fields);
  if (const auto* found = std::get_if<MetaBrush>(&brush)) player.FillArea(player.AreaOf(region), *found);
}

void FrameRegion(Player& player, Fields fields) {
  fields.Skip(kEmfBounds + 4);
  const MetaObject brush = player.ObjectAt(fields.Long());
  const QSizeF thickness = ReadSize(fields);
  const MetaRegion region = ReadRegion(fields);
  if (const auto* found = std::get_if<MetaBrush>(&brush)) player.FrameArea(region, *found, thickness);
}

void InvertRegion(Player& player, Fields fields) {
  fields.Skip(kEmfBounds + 4);
  player.InvertArea(player.AreaOf(ReadRegion(fields)));
}

void PaintRegion(Player& player, Fields fields) {
  fields.Skip(kEmfBounds + 4);
  player.FillArea(player.AreaOf(ReadRegion(fields)), player.State().brush);
}

void SelectClipRegion(Player& player, Fields fields) {
  const uint32_t size = fields.Long(), way = fields.Long();
  if (size == 0 && way == Player::kInstead) return player.ResetClip();
  player.JoinClip(player.AreaOf(ReadRegion(fields), true), way);
}

}  // namespace

const QList<RecordEntry>& EmfShapeRecords() {
  using Kind = Player::ArcKind;
  static const QList<RecordEntry> kRecords = {
      {2, Poly<Width::Long, &Player::Bezier>},
      {3, Poly<Width::Long, &Player::Polygon>},
      {4, Poly<Width::Long, &Player::Polyline>},
      {5, Poly<Width::Long, &Player::BezierTo>},
      {6, Poly<Width::Long, &Player::PolylineTo>},
      {7, PolyPoly<Width::Long, &Player::PolyPolyline>},
      {8, PolyPoly<Width::Long, &Player::PolyPolygon>},
      {15, SetPixel},
      {26, [](Player& p, Fields f) { p.OffsetClip(zelvane::ReadPoint(f)); }},
      {27, [](Player& p, Fields f) { p.MoveTo(zelvane::ReadPoint(f)); }},
      {28, [](Player& p, Fields) { p.MakeClipLast(); }},
      {29, [](Player& p, Fields f) { p.ExcludeClip(ReadBox(f)); }},
      {30, [](Player& p, Fields f) { p.IntersectClip(ReadBox(f)); }},
      {41, AngleArc},
      {42, [](Player& p, Fields f) { p.Ellipse(ReadBox(f)); }},
      {43, [](Player& p, Fields f) { p.Rectangle(ReadBox(f)); }},
      {44, RoundBox},
      {45, Arc<Kind::Arc>},
      {46, Arc<Kind::Chord>},
      {47, Arc<Kind::Pie>},
      {54, [](Player& p, Fields f) { p.PolylineTo({zelvane::ReadPoint(f)}); }},
      {55, Arc<Kind::ArcTo>},
      {56, PolyDraw<Width::Long>},
      {59, [](Player& p, Fields) { p.BeginPath(); }},
      {60, [](Player& p, Fields) { p.EndPath(); }},
      {61, [](Player& p, Fields) { p.CloseFigure(); }},
      {62, [](Player& p, Fields) { p.PaintPath(true, false); }},
      {63, [](Player& p, Fields) { p.PaintPath(true, true); }},
      {64, [](Player& p, Fields) { p.PaintPath(false, true); }},
      {67, [](Player& p, Fields f) { p.ClipToPath(f.Long()); }},
      {68, [](Player& p, Fields) { p.AbortPath(); }},
      {71, FillRegion},
      {72, FrameRegion},
      {73, InvertRegion},
      {74, PaintRegion},
      {75, SelectClipRegion},
      {85, Poly<Width::Short, &Player::Bezier>},
      {86, Poly<Width::Short, &Player::Polygon>},
      {87, Poly<Width::Short, &Player::Polyline>},
      {88, Poly<Width::Short, &Player::BezierTo>},
      {89, Poly<Width::Short, &Player::PolylineTo>},
      {90, PolyPoly<Width::Short, &Player::PolyPolyline>},
      {91, PolyPoly<Width::Short, &Player::PolyPolygon>},
      {92, PolyDraw<Width::Short>},
  };
  return kRecords;
}

}  // namespace zelvane
