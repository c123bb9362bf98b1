#include "imageops/InvertImage.h"

#include "imageops/Undo.h"

namespace zelvane {

void InvertImage_Click() {
  ImageDocument* document = DocumentAtRest();
  if (!document) return;
  TakeUndoSnapshot(*document);
  PictureSurface& layer = document->LiveLayer();
  layer.InvertRect(0, 0, layer.ScaleWidth(), layer.ScaleHeight());
  RefreshPaintArea(document->Buffer);
  document->Dirty = true;
}

}  // namespace zelvane
