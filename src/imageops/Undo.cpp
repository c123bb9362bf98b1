#include "imageops/Undo.h"

#include "surface/raster/FailingStep.h"

namespace zelvane {
namespace {

/// The memory of the last snapshot is kept where it fits: a copy into fresh memory costs four times as much.
void FitTo(PictureSurface& snapshot, const PictureSurface& live) {
  if (snapshot.ScaleWidth() == live.ScaleWidth() && snapshot.ScaleHeight() == live.ScaleHeight()) return;
  snapshot.SetImage(Bitmap());
  snapshot.SetImage(Bitmap::Uninitialised(live.ScaleWidth(), live.ScaleHeight()));
}

}  // namespace

void TakeUndoSnapshot(ImageDocument& document) {
  const PictureSurface& live = document.LiveLayer();
  Attempt([&] {
    FitTo(document.Undo, live);
    document.Undo.BitBlt(0, 0, live.ScaleWidth(), live.ScaleHeight(), live, 0, 0);
  });
}

void Undo_Click() {
  ImageDocument* document = ActiveDocument();
  if (!document) return;
  document->LiveLayer().ExchangePixels(document->Undo);
  RefreshPaintArea(document->Buffer);
}

}  // namespace zelvane
