#include "surface/system/desktop/Screen.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>

#include "surface/raster/Units.h"

namespace zelvane::Screen {

namespace {

/// Both are empty where no screen is attached.
QRect Whole() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  return screen ? screen->geometry() : QRect();
}
QRect Free() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  return screen ? screen->availableGeometry() : QRect();
}

constexpr double kTwips = kTwipsPerPixel;

double Common(double start_a, double size_a, double start_b, double size_b) {
  return std::max(0.0, std::min(start_a + size_a, start_b + size_b) - std::max(start_a, start_b));
}

/// How much of the area the screens show. Those that show the same count twice.
double Seen(const std::vector<Area>& screens, const Area& area) {
  double seen = 0;
  for (const Area& screen : screens)
    seen += Common(screen.left, screen.width, area.left, area.width) *
            Common(screen.top, screen.height, area.top, area.height);
  return seen;
}

Area MovedInto(const Area& screen, Area area) {
  area.left = std::max(screen.left, std::min(area.left, screen.left + screen.width - area.width));
  area.top = std::max(screen.top, std::min(area.top, screen.top + screen.height - area.height));
  return area;
}

double Way(const Area& from, const Area& to) {
  return std::hypot(to.left - from.left, to.top - from.top);
}

}  // namespace

double Width() {
  return Whole().width() * kTwipsPerPixel;
}
double Height() {
  return Whole().height() * kTwipsPerPixel;
}
double WorkAreaWidth() {
  return Free().width() * kTwipsPerPixel;
}
double WorkAreaHeight() {
  return Free().height() * kTwipsPerPixel;
}

std::vector<Area> WorkAreas() {
  std::vector<Area> areas;
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QRect free = screen->availableGeometry();
    areas.push_back({free.x() * kTwips, free.y() * kTwips, free.width() * kTwips, free.height() * kTwips});
  }
  return areas;
}

Area BroughtOnto(const std::vector<Area>& screens, Area area) {
  if (screens.empty() || Seen(screens, area) >= area.width * area.height) return area;
  const auto nearer = [&](const Area& a, const Area& b) {
    return Way(area, MovedInto(a, area)) < Way(area, MovedInto(b, area));
  };
  return MovedInto(*std::min_element(screens.begin(), screens.end(), nearer), area);
}

Point CursorPosition() {
  const QPoint position = QCursor::pos();
  return {position.x(), position.y()};
}

}  // namespace zelvane::Screen
