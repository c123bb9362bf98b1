#include "surface/system/desktop/Screen.h"

#include <QCursor>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

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

std::vector<std::string> Fonts() {
  std::vector<std::string> names;
  for (const QString& family : QFontDatabase::families()) names.push_back(family.toStdString());
  std::sort(names.begin(), names.end());
  return names;
}

Point CursorPosition() {
  const QPoint position = QCursor::pos();
  return {position.x(), position.y()};
}

}  // namespace zelvane::Screen
