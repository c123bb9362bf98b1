#pragma once

#include <QColor>
#include <QKeyEvent>
#include <QPalette>
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "surface/forms/controls/Control.h"
#include "surface/raster/Color.h"
#include "surface/raster/Numbers.h"
#include "surface/system/text/QtText.h"

namespace zelvane {

inline QColor ToQt(Color color) {
  return QColor::fromRgb(ToPixel(color));
}

/// Gives a widget a colour of its own; what else it paints with stays its window's.
void Tint(QWidget& widget, QPalette::ColorRole role, Color color);

/// The largest side and the farthest place that the toolkit's widgets can have, in logical pixels.
inline constexpr double kFarthest = 16777215;

/// Whole logical pixels, halves to even; far values and no numbers come down to what a widget can have.
inline int ToPlace(double pixels) {
  return std::isnan(pixels) ? 0 : static_cast<int>(RoundHalfEven(std::clamp(pixels, -kFarthest, kFarthest)));
}
inline int ToSize(double pixels) {
  return std::max(0, ToPlace(pixels));
}

/// The sum of `ShiftMask`.
int16_t ShiftOf(Qt::KeyboardModifiers modifiers);
/// The sum of `PointerButtons`; the further buttons of a mouse count on as 8, 16.
int16_t ButtonsOf(Qt::MouseButtons buttons);
/// The virtual key code; 0 for a key without one.
int16_t KeyCodeOf(const QKeyEvent& key);

}  // namespace zelvane
