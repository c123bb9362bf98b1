#include "surface/forms/controls/IconArt.h"

#include <QCoreApplication>
#include <QPainter>
#include <QSvgRenderer>
#include <cmath>
#include <map>
#include <tuple>

#include "surface/forms/controls/Conversions.h"

namespace zelvane {
namespace {

constexpr int kPointerSide = 32;

QPixmap Drawn(const QString& path, int size, double ratio) {
  QSvgRenderer drawing(path);
  if (!drawing.isValid() || size <= 0) return {};
  const int side = std::max(1, static_cast<int>(std::lround(size * ratio)));
  QPixmap pixels(side, side);
  pixels.fill(Qt::transparent);
  QPainter painter(&pixels);
  drawing.render(&painter, QRectF(0, 0, side, side));
  painter.end();
  pixels.setDevicePixelRatio(ratio);
  return pixels;
}

/// What has been drawn, until the toolkit ends: it can't destroy pixels later.
struct Gallery {
  std::map<std::tuple<std::string, int, double>, QPixmap> icons;
  std::map<std::tuple<std::string, double>, QCursor> pointers;
};

Gallery& Drawings() {
  static Gallery gallery = [] {
    qAddPostRoutine([] { Drawings() = {}; });
    return Gallery{};
  }();
  return gallery;
}

}  // namespace

QPixmap IconArt(const std::string& name, int size, double ratio) {
  if (name.empty()) return {};
  const auto [entry, is_new] = Drawings().icons.try_emplace({name, size, ratio});
  if (is_new) entry->second = Drawn(":/icons/" + ToQt(name) + ".svg", size, ratio);
  return entry->second;
}

QCursor PointerArt(const PointerIcon& icon, double ratio) {
  const auto [entry, is_new] = Drawings().pointers.try_emplace({icon.name, ratio}, Qt::ArrowCursor);
  if (is_new) {
    const QPixmap pixels = Drawn(":/cursors/" + ToQt(icon.name) + ".svg", kPointerSide, ratio);
    if (!pixels.isNull()) entry->second = QCursor(pixels, icon.hot_x, icon.hot_y);
  }
  return entry->second;
}

}  // namespace zelvane
