#include "surface/forms/controls/TextGrowth.h"

#include <QApplication>
#include <QFontInfo>
#include <QFontMetrics>
#include <algorithm>
#include <cmath>

namespace zelvane {
namespace {

constexpr int kDrawnFor = 13;  // pixels of 10 points, 96 to the inch

int FontPixels() {
  return std::max(QFontInfo(QApplication::font()).pixelSize(), kDrawnFor);
}

}  // namespace

Single LineGrowth() {
  if (FontPixels() == kDrawnFor) return 0;
  QFont font = QApplication::font();
  const int height = QFontMetrics(font).height();
  font.setPixelSize(kDrawnFor);
  return static_cast<Single>(std::max(height - QFontMetrics(font).height(), 0));
}

Single Widened(Single width) {
  return std::ceil(width * static_cast<Single>(FontPixels()) / kDrawnFor);
}

}  // namespace zelvane
