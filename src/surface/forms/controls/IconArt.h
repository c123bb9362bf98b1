#pragma once

#include <QCursor>
#include <QPixmap>
#include <string>

#include "surface/forms/controls/Control.h"

namespace zelvane {

/// An icon of the program, `size` logical pixels square, in as many pixels as the ratio asks for. In a
/// dark palette its outlines are light. Drawn once a name, size, ratio and kind of palette; null where there
/// is no such icon.
QPixmap IconArt(const std::string& name, int size, double ratio);

/// A drawn pointer, 32 logical pixels square. Drawn once a name and ratio.
QCursor PointerArt(const PointerIcon& icon, double ratio);

}  // namespace zelvane
