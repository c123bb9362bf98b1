#include "surface/codecs/Flatten.h"

namespace zelvane {

void FlattenOnWhite(Pixel* row, int width) {
  for (int x = 0; x < width; ++x) row[x] = OnWhite(row[x]);
}

void FlattenOnWhite(Bitmap& bitmap) {
  for (int y = 0; y < bitmap.Height(); ++y) FlattenOnWhite(bitmap.WritableRow(y), bitmap.Width());
}

}  // namespace zelvane
