#pragma once

#include "surface/raster/Bitmap.h"

class QImage;

namespace zelvane {

/// The pixels of any image on white, in the image's own memory where its format allows. Throws
/// `SurfaceTooLarge` where there is no memory for a conversion.
Bitmap BitmapOf(QImage image);

/// An image that shares the bitmap's pixels and keeps them alive.
QImage ImageOf(const Bitmap& bitmap);

}  // namespace zelvane
