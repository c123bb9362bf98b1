#include "document/window/Clear.h"

#include "document/layers/ImageDocument.h"
#include "imageops/Undo.h"

namespace zelvane {

void clearButton_Click() {
  ImageDocument* document = ActiveDocument();
  if (!document) return;
  TakeUndoSnapshot(*document);
  document->Buffer.Cls();
  RefreshPaintArea(document->Buffer);
}

}  // namespace zelvane
