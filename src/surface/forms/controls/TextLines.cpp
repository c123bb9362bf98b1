#include "surface/forms/controls/TextLines.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <algorithm>
#include <cmath>

#include "surface/raster/Numbers.h"
#include "surface/system/text/QtText.h"

namespace zelvane {
namespace {

constexpr int kDotsPerInch = 96, kPointsPerInch = 72, kTabInBlanks = 8;
constexpr double kWidestLine = 1 << 23;  // units; where the toolkit stops to count

QFontMetricsF MetricsOf(const TextFont& font) {
  return QFontMetricsF(ToQt(font, 1));
}

int PixelsOf(double points) {
  return std::max(1, static_cast<int>(RoundHalfEven(points * kDotsPerInch / kPointsPerInch)));
}

}  // namespace

QFont ToQt(const TextFont& font, int multiple) {
  QFont result;
  if (!font.Name.empty()) result.setFamilies({ToQt(font.Name)});
  result.setPixelSize(PixelsOf(font.Size) * multiple);
  result.setBold(font.Bold);
  result.setItalic(font.Italic);
  result.setHintingPreference(QFont::PreferVerticalHinting);
  result.setStyleStrategy(QFont::StyleStrategy(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
  return result;
}

LinePitch PitchOf(const TextFont& font) {
  const QFontMetricsF metrics = MetricsOf(font);
  const auto ascent = static_cast<int>(std::ceil(metrics.ascent()));
  const auto descent = static_cast<int>(std::ceil(metrics.descent()));
  return {ascent, std::max(1, ascent + descent + qRound(std::max(0.0, metrics.leading())))};
}

QTextOption LineOption(const TextFont& font, int multiple) {
  QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
  option.setTextDirection(Qt::LayoutDirectionAuto);
  option.setWrapMode(QTextOption::NoWrap);
  option.setFlags(QTextOption::IncludeTrailingSpaces);
  option.setTabStopDistance(multiple * kTabInBlanks * MetricsOf(font).horizontalAdvance(' '));
  return option;
}

QTextLine LayOutLine(QTextLayout& layout, const LinePitch& pitch, int multiple) {
  layout.beginLayout();
  QTextLine line = layout.createLine();
  if (line.isValid()) {
    line.setLineWidth(kWidestLine);
    line.setPosition({0, pitch.ascent * multiple - line.ascent()});
  }
  layout.endLayout();
  return line;
}

QRect InkOf(const QTextLayout& layout) {
  QRectF ink;
  for (const QGlyphRun& run : layout.glyphRuns()) ink |= run.boundingRect();
  return ink.toAlignedRect().adjusted(-1, -1, 1, 1);
}

}  // namespace zelvane
