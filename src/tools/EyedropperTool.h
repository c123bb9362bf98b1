#pragma once

#include "surface/raster/Canvas.h"

namespace zelvane {

/// Shows the colour of a picture at (X, Y) in the Eyedropper's option bar: image pixels, not rounded. Beyond
/// the picture, where a position below 0 or one that rounds to its width or height lies, the bar keeps what
/// it shows.
void ShowPixelInfo(const Canvas& Buffer, Single X, Single Y);

}  // namespace zelvane
