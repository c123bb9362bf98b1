#include "surface/codecs/Flatten.h"

namespace zelvane {

bool FlattenOnWhite(Pixel* row, int width) {
  Pixel all = 0xFF000000u;
  for (int x = 0; x < width; ++x) {
    all &= row[x];
    row[x] = OnWhite(row[x]);
  }
  return all == 0xFF000000u;
}

bool FlattenOnWhite(Bitmap& bitmap) {
  bool opaque = true;
  for (int y = 0; y < bitmap.Height(); ++y) {
    if (!FlattenOnWhite(bitmap.WritableRow(y), bitmap.Width())) opaque = false;
  }
  return opaque;
}

}  // namespace zelvane
