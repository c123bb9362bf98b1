#pragma once

#include <QCursor>
#include <QPixmap>
#include <string>

#include "surface/forms/controls/Control.h"

namespace zelvane {

/// An icon of the program, in logical pixels, and in as many pixels as the ratio asks for. In a dark palette
/// its outlines are light. Drawn once a name, size, ratio and kind of palette; null where there is no such
/// icon.
QPixmap IconArt(const std::string& name, QSize size, double ratio);
inline QPixmap IconArt(const std::string& name, int side, double ratio) {
  return IconArt(name, QSize(side, side), ratio);
}

/// Begins to draw an icon that will be seen soon, on another thread, for `IconArt` to take: some twenty of
/// them stand in the first window.
void DrawIconAhead(const std::string& name, int side);

/// A drawn pointer, 32 logical pixels square. Drawn once a name and ratio.
QCursor PointerArt(const PointerIcon& icon, double ratio);

}  // namespace zelvane
