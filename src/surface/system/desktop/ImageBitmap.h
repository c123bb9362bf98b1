#pragma once

#include "surface/raster/Bitmap.h"

class QImage;

namespace zelvane {

/// An image that shares the bitmap's pixels and keeps them alive.
QImage ImageOf(const Bitmap& bitmap);

}  // namespace zelvane
