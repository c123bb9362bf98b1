#pragma once

#include <QColor>
#include <array>

#include "surface/raster/Color.h"

class QPalette;

namespace zelvane {

/// Takes the system colours from the desktop's palette.
void TakeSystemColors();

bool IsDark(const QPalette& palette);

/// The colour of the ground behind what stands on a window: `percent` darker than the window, or lighter
/// where that is nearly black already.
QColor GroundOf(const QPalette& palette, int percent);

/// The colours that parts of windows are painted in, as pixels.
using SystemShades = std::array<Pixel, 5>;
SystemShades ShadesOfParts();

}  // namespace zelvane
