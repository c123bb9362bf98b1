#include "surface/system/metafiles/Mapping.h"

#include <algorithm>
#include <cmath>

namespace zelvane {

namespace {

constexpr double kMost = 1e9, kLeast = 1e-9;

/// Logical units in a millimetre; 0 for modes without a fixed one.
double UnitsPerMm(MapMode mode) {
  switch (mode) {
    case MapMode::LoMetric:
      return 10;
    case MapMode::HiMetric:
      return 100;
    case MapMode::LoEnglish:
      return 100 / 25.4;
    case MapMode::HiEnglish:
      return 1000 / 25.4;
    case MapMode::Twips:
      return 1440 / 25.4;
    default:
      return 0;
  }
}

bool IsUsable(const QTransform& map) {
  for (const double value : {map.m11(), map.m12(), map.m21(), map.m22(), map.dx(), map.dy()})
    if (!(std::abs(value) <= kMost)) return false;
  return std::abs(map.determinant()) >= kLeast * kLeast;
}

}  // namespace

Mapping::Mapping(const QTransform& to_sheet, QSizeF pixels_per_mm)
    : to_sheet_(to_sheet), all_(to_sheet), pixels_per_mm_(pixels_per_mm) {}

template <class Change>
void Mapping::Try(Change&& change) {
  Mapping changed = *this;
  change(changed);
  changed.all_ = changed.world_ * changed.Page() * to_sheet_;
  if (IsUsable(changed.world_) && IsUsable(changed.all_)) *this = changed;
}

QTransform Mapping::Page() const {
  double x = viewport_extent_.width() / window_extent_.width();
  double y = viewport_extent_.height() / window_extent_.height();
  if (mode_ == MapMode::Isotropic) {
    const double least = std::min(std::abs(x), std::abs(y));
    x = std::copysign(least, x);
    y = std::copysign(least, y);
  }
  return {x, 0, 0, y, viewport_.x() - window_.x() * x, viewport_.y() - window_.y() * y};
}

void Mapping::SetMode(MapMode mode) {
  Try([&](Mapping& changed) {
    changed.mode_ = mode;
    const double units = UnitsPerMm(mode);
    if (mode == MapMode::Text) {
      changed.window_extent_ = changed.viewport_extent_ = {1, 1};
    } else if (units > 0) {
      changed.window_extent_ = {units, units};
      changed.viewport_extent_ = {pixels_per_mm_.width(), -pixels_per_mm_.height()};
    }
  });
}

void Mapping::SetWindowOrigin(QPointF origin) {
  Try([&](Mapping& changed) { changed.window_ = origin; });
}

void Mapping::SetViewportOrigin(QPointF origin) {
  Try([&](Mapping& changed) { changed.viewport_ = origin; });
}

void Mapping::SetWindowExtent(QSizeF extent) {
  if (!TakesExtents() || extent.width() == 0 || extent.height() == 0) return;
  Try([&](Mapping& changed) { changed.window_extent_ = extent; });
}

void Mapping::SetViewportExtent(QSizeF extent) {
  if (!TakesExtents() || extent.width() == 0 || extent.height() == 0) return;
  Try([&](Mapping& changed) { changed.viewport_extent_ = extent; });
}

void Mapping::ScaleWindow(QSizeF by) {
  SetWindowExtent({window_extent_.width() * by.width(), window_extent_.height() * by.height()});
}

void Mapping::ScaleViewport(QSizeF by) {
  SetViewportExtent({viewport_extent_.width() * by.width(), viewport_extent_.height() * by.height()});
}

void Mapping::SetWorld(const QTransform& world) {
  Try([&](Mapping& changed) { changed.world_ = world; });
}

QPointF Mapping::Map(QPointF point) const {
  constexpr double kFar = 1e6;
  const QPointF mapped = all_.map(point);
  return {std::clamp(mapped.x(), -kFar, kFar), std::clamp(mapped.y(), -kFar, kFar)};
}

QRectF Mapping::DevicePixels(QPointF corner, QSizeF size) const {
  const QPointF from = all_.map(corner);
  const QPointF to = from + QPointF(size.width() * to_sheet_.m11(), size.height() * to_sheet_.m22());
  const QTransform back = all_.inverted();
  return {back.map(from), back.map(to)};
}

double Mapping::ScaleX() const {
  return std::hypot(all_.m11(), all_.m12());
}

double Mapping::ScaleY() const {
  return std::hypot(all_.m21(), all_.m22());
}

double Mapping::PenScale() const {
  return std::sqrt(std::abs(all_.determinant()));
}

QSizeF Mapping::PageScale() const {
  const QTransform page = Page() * to_sheet_;
  return {std::abs(page.m11()), std::abs(page.m22())};
}

QTransform Mapping::WorldOnSheet() const {
  const QTransform map = (Page() * to_sheet_).inverted() * all_;
  return {map.m11(), map.m12(), map.m21(), map.m22(), 0, 0};
}

}  // namespace zelvane
