#include "surface/system/metafiles/Player.h"

#include <algorithm>
#include <utility>

namespace zelvane {

Player::Player(Sheet& sheet, const Mapping& mapping, SizeLimit images)
    : sheet_(sheet), images_(images), state_(mapping) {}

void Player::Save() {
  constexpr size_t kMostSaved = 4096;
  if (saved_.size() == kMostSaved) throw TooMuchWork();
  saved_.push_back(state_);
}

void Player::Restore(int32_t which) {
  const auto count = static_cast<int64_t>(saved_.size());
  const int64_t index = which < 0 ? count + which : int64_t{which} - 1;
  if (which == 0 || index < 0 || index >= count) return;
  state_ = saved_[static_cast<size_t>(index)];
  saved_.erase(saved_.begin() + index, saved_.end());
  clip_changed_ = true;
}

void Player::Select(const MetaObject& object) {
  if (const auto* pen = std::get_if<MetaPen>(&object)) state_.pen = *pen;
  if (const auto* brush = std::get_if<MetaBrush>(&object)) state_.brush = *brush;
  if (const auto* font = std::get_if<MetaFont>(&object)) state_.font = *font;
  if (const auto* palette = std::get_if<MetaPalette>(&object)) state_.palette = *palette;
}

MetaObject Player::ObjectAt(uint32_t number) const {
  constexpr uint32_t kAlwaysThere = 0x80000000u;
  return number & kAlwaysThere ? StockObject(number & ~kAlwaysThere) : objects_.At(number);
}

QRgb Player::ColorOf(uint32_t value) const {
  constexpr uint32_t kPaletteNumber = 1;
  if (value >> 24 == kPaletteNumber) {
    const auto number = static_cast<qsizetype>(value & 0xFFFF);
    if (number < state_.palette.colors.size()) return state_.palette.colors[number];
  }
  return qRgb(value & 0xFF, value >> 8 & 0xFF, value >> 16 & 0xFF);
}

void Player::IntersectClip(const QRectF& box) {
  QPainterPath area;
  area.addRect(box);
  state_.clip.Intersect(OnSheet(area));
  clip_changed_ = true;
}

void Player::ExcludeClip(const QRectF& box) {
  QPainterPath area;
  area.addRect(box);
  state_.clip.Exclude(OnSheet(area), QRectF(sheet_.Bounds()));
  clip_changed_ = true;
}

void Player::OffsetClip(QPointF by) {
  const QTransform& map = state_.mapping.ToSheet();
  state_.clip.Offset(map.map(by) - map.map(QPointF()));
  clip_changed_ = true;
}

void Player::JoinClip(const QPainterPath& area, uint32_t way) {
  if (way == kInstead) state_.clip.Reset();
  if (way == kAnd || way == kInstead) state_.clip.Intersect(area);
  if (way == kOr || way == kXor) state_.clip = sheet_.Joined(state_.clip, area, way == kXor);
  if (way == kWithout) state_.clip.Exclude(area, QRectF(sheet_.Bounds()));
  clip_changed_ = true;
}

void Player::ClipTo(const MetaRegion& region) {
  JoinClip(AreaOf(region), kInstead);
}

void Player::ResetClip() {
  state_.clip.Reset();
  clip_changed_ = true;
}

void Player::MakeClipLast() {
  state_.lasting_clip.Intersect(std::exchange(state_.clip, {}));
}

void Player::UseSheet() {
  sheet_.SetBrushOrigin(state_.mapping.DeviceToSheet().map(state_.brush_origin));
  if (!std::exchange(clip_changed_, false)) return;
  Clip both = state_.lasting_clip;
  both.Intersect(state_.clip);
  sheet_.SetClip(both);
}

QPainterPath Player::AreaOf(const MetaRegion& region, bool device) const {
  QPainterPath area;
  area.setFillRule(Qt::WindingFill);
  for (const RecordBox& box : region.boxes) {
    const QRectF rect(QPointF(box.left, box.top), QPointF(box.right, box.bottom));
    if (device) {
      area.addRect(state_.mapping.DeviceToSheet().mapRect(rect));
    } else {
      QPainterPath logical;
      logical.addRect(rect);
      area.addPath(OnSheet(logical));
    }
  }
  return area;
}

QPainterPath Player::OnSheet(QPainterPath path) const {
  for (int i = 0; i < path.elementCount(); ++i) {
    const QPointF at = state_.mapping.Map(path.elementAt(i));
    path.setElementPositionAt(i, at.x(), at.y());
  }
  return path;
}

void Player::BeginPath() {
  path_ = {};
  building_ = true;
  figure_goes_on_ = false;
}

void Player::AbortPath() {
  path_ = {};
  building_ = false;
}

void Player::CloseFigure() {
  if (path_.elementCount() > 0) path_.closeSubpath();
  figure_goes_on_ = false;
}

void Player::PaintPath(bool fill, bool stroke) {
  building_ = false;
  const QPainterPath path = std::exchange(path_, {});
  QPainterPath inside = path;
  inside.setFillRule(state_.fill_rule);
  Paint(inside, path, fill, stroke);
}

void Player::ClipToPath(uint32_t way) {
  building_ = false;
  QPainterPath area = std::exchange(path_, {});
  area.setFillRule(state_.fill_rule);
  JoinClip(area, way);
}

/// What goes on from where the last one ended lengthens its figure.
void Player::Add(const QPainterPath& path, bool continues) {
  if (path.isEmpty()) return;
  if (continues && figure_goes_on_ && path_.elementCount() > 0) {
    path_.connectPath(path);
  } else {
    path_.addPath(path);
  }
  figure_goes_on_ = continues;
}

}  // namespace zelvane
