#pragma once

#include "surface/raster/Numbers.h"

/// How much larger than 10 points the desktop writes, for which the panels of the main window are drawn. For
/// a smaller font they stay as they are drawn.
namespace zelvane {

/// By how much a line of text is higher, in whole logical pixels.
Single LineGrowth();
/// A width in logical pixels that holds text, wider as the text is; whole.
Single Widened(Single width);

}  // namespace zelvane
