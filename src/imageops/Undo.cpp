#include "imageops/Undo.h"

#include "surface/raster/FailingStep.h"

namespace zelvane {

/// The memory of the last snapshot is kept where it fits: a copy into fresh memory costs four times as much.
void TakeUndoSnapshot(ImageDocument& document, const PictureSurface& layer) {
  Attempt([&] {
    document.Undo.ResizeToOverwrite(layer.ScaleWidth(), layer.ScaleHeight());
    document.Undo.BitBlt(0, 0, layer.ScaleWidth(), layer.ScaleHeight(), layer, 0, 0);
  });
}

void TakeUndoSnapshot(ImageDocument& document) {
  TakeUndoSnapshot(document, document.LiveLayer());
}

void Undo_Click() {
  ImageDocument* document = DocumentAtRest();
  if (!document) return;
  document->LiveLayer().ExchangePixels(document->Undo);
  RefreshPaintArea(document->Buffer);
}

}  // namespace zelvane
