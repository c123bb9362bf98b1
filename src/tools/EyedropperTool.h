#pragma once

#include "surface/raster/Canvas.h"

namespace zelvane {

/// Shows the colour of a picture at (X, Y) in the Eyedropper's option bar: image pixels, not rounded. Beyond
/// the picture the bar keeps what it shows.
void ShowPixelInfo(const Canvas& Buffer, Single X, Single Y);

}  // namespace zelvane
