#include "imageops/Flip.h"

#include <algorithm>

#include "document/layers/ImageDocument.h"

namespace zelvane {
namespace {

using Flip = void (*)(const Bitmap::Rows& rows, int width, int height);

void FlipRows(const Bitmap::Rows& rows, int width, int height) {
  for (int y = 0; y < height / 2; ++y) std::swap_ranges(rows[y], rows[y] + width, rows[height - 1 - y]);
}

void FlipColumns(const Bitmap::Rows& rows, int width, int height) {
  for (int y = 0; y < height; ++y) std::reverse(rows[y], rows[y] + width);
}

/// In place: a second layer to copy through would cost more than the flip.
void FlipLiveLayer(Flip flip) {
  ImageDocument* document = DocumentAtRest();
  if (!document) return;
  PictureSurface& layer = document->LiveLayer();
  flip(layer.WritableRows(), layer.ScaleWidth(), layer.ScaleHeight());
  layer.AddDamage(layer.Image().Bounds());
  RefreshPaintArea(document->Buffer);
  document->Dirty = true;
}

}  // namespace

void FlipHorizontal_Click() {
  FlipLiveLayer(FlipColumns);
}

void FlipVertical_Click() {
  FlipLiveLayer(FlipRows);
}

}  // namespace zelvane
