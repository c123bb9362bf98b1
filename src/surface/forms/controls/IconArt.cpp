#include "surface/forms/controls/IconArt.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QThreadPool>
#include <algorithm>
#include <cmath>
#include <future>
#include <map>
#include <memory>
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

/// On any thread.
QImage Drawn(const QString& path, QSize size, double ratio, bool on_dark) {
  QSvgRenderer drawing(Source(path, on_dark));
  if (!drawing.isValid() || size.isEmpty()) return {};
  const auto scaled = [ratio](int side) { return std::max(1, static_cast<int>(std::lround(side * ratio))); };
  QImage pixels(scaled(size.width()), scaled(size.height()), QImage::Format_ARGB32_Premultiplied);
  pixels.fill(Qt::transparent);
  QPainter painter(&pixels);
  drawing.render(&painter, QRectF(pixels.rect()));
  painter.end();
  pixels.setDevicePixelRatio(ratio);
  return pixels;
}

/// Name, width, height, ratio, whether on a dark palette.
using Icon = std::tuple<std::string, int, int, double, bool>;

Icon IconOf(const std::string& name, QSize size, double ratio) {
  return {name, size.width(), size.height(), ratio, IsDark(QApplication::palette())};
}

QImage DrawnIcon(const Icon& icon) {
  const auto& [name, width, height, ratio, on_dark] = icon;
  return Drawn(":/icons/" + ToQt(name) + ".svg", QSize(width, height), ratio, on_dark);
}

/// What has been drawn, until the toolkit ends: it can't destroy pixels later.
struct Gallery {
  std::map<Icon, QPixmap> icons;
  std::map<Icon, std::future<QImage>> ahead;
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
  const Icon icon = IconOf(name, size, ratio);
  const auto [entry, is_new] = Drawings().icons.try_emplace(icon);
  if (is_new) {
    const auto begun = Drawings().ahead.extract(icon);
    entry->second = QPixmap::fromImage(begun ? begun.mapped().get() : DrawnIcon(icon));
  }
  return entry->second;
}

void DrawIconAhead(const std::string& name, int side) {
  const Icon icon = IconOf(name, QSize(side, side), qApp->devicePixelRatio());
  if (name.empty() || Drawings().icons.contains(icon) || Drawings().ahead.contains(icon)) return;
  const auto task = std::make_shared<std::packaged_task<QImage()>>([icon] { return DrawnIcon(icon); });
  Drawings().ahead.emplace(icon, task->get_future());
  QThreadPool::globalInstance()->start([task] { (*task)(); });
}

QCursor PointerArt(const PointerIcon& icon, double ratio) {
  const auto [entry, is_new] = Drawings().pointers.try_emplace({icon.name, ratio}, Qt::ArrowCursor);
  if (is_new) {
    const QPixmap pixels = QPixmap::fromImage(
        Drawn(":/cursors/" + ToQt(icon.name) + ".svg", QSize(kPointerSide, kPointerSide), ratio, false));
    if (!pixels.isNull()) entry->second = QCursor(pixels, icon.hot_x, icon.hot_y);
  }
  return entry->second;
}

}  // namespace zelvane
