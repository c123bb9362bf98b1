#include "surface/forms/controls/IconArt.h"

#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/SystemColors.h"

namespace zelvane {
namespace {

constexpr int kPointerSide = 32;

/// The outlines of icons are of one colour, which a dark palette would swallow.
constexpr char kOutline[] = "#6b7e96", kOutlineOnDark[] = "#b3c2d4";

QByteArray Source(const QString& path, bool on_dark) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  const QByteArray source = file.readAll();
  return on_dark ? QByteArray(source).replace(kOutline, kOutlineOnDark) : source;
}

QPixmap Drawn(const QString& path, QSize size, double ratio, bool on_dark) {
  QSvgRenderer drawing(Source(path, on_dark));
  if (!drawing.isValid() || size.isEmpty()) return {};
  const auto scaled = [ratio](int side) { return std::max(1, static_cast<int>(std::lround(side * ratio))); };
  QPixmap pixels(scaled(size.width()), scaled(size.height()));
  pixels.fill(Qt::transparent);
  QPainter painter(&pixels);
  drawing.render(&painter, QRectF(pixels.rect()));
  painter.end();
  pixels.setDevicePixelRatio(ratio);
  return pixels;
}

/// What has been drawn, until the toolkit ends: it can't destroy pixels later.
struct Gallery {
  std::map<std::tuple<std::string, int, int, double, bool>, QPixmap> icons;
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

QPixmap IconArt(const std::string& name, QSize size, double ratio) {
  if (name.empty()) return {};
  const bool on_dark = IsDark(QApplication::palette());
  const auto [entry, is_new] =
      Drawings().icons.try_emplace({name, size.width(), size.height(), ratio, on_dark});
  if (is_new) entry->second = Drawn(":/icons/" + ToQt(name) + ".svg", size, ratio, on_dark);
  return entry->second;
}

QCursor PointerArt(const PointerIcon& icon, double ratio) {
  const auto [entry, is_new] = Drawings().pointers.try_emplace({icon.name, ratio}, Qt::ArrowCursor);
  if (is_new) {
    const QPixmap pixels =
        Drawn(":/cursors/" + ToQt(icon.name) + ".svg", QSize(kPointerSide, kPointerSide), ratio, false);
    if (!pixels.isNull()) entry->second = QCursor(pixels, icon.hot_x, icon.hot_y);
  }
  return entry->second;
}

}  // namespace zelvane
