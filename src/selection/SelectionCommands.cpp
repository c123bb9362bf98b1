#include "selection/SelectionCommands.h"

#include "imageops/Undo.h"
#include "selection/Selection.h"
#include "surface/system/desktop/Clipboard.h"

namespace zelvane {
namespace {

void SelectAll(ImageDocument& document) {
  LiftSelection(document, document.Buffer.Image().Bounds());
}

/// The clipboard shares the pixels until one side writes.
void Copy(ImageDocument& document) {
  if (!document.SelectArea.Visible()) SelectAll(document);
  Clipboard::SetBitmap(document.BufferSelected.Image());
}

}  // namespace

void SelectAll_Click() {
  if (ImageDocument* document = DocumentAtRest()) SelectAll(*document);
}

void Copy_Click() {
  if (ImageDocument* document = DocumentAtRest()) Copy(*document);
}

void Cut_Click() {
  ImageDocument* document = DocumentAtRest();
  if (!document) return;
  Copy(*document);
  WipeSelection(*document);
  document->Dirty = true;
}

void ClearSelection_Click() {
  ImageDocument* document = DocumentAtRest();
  if (!document || !document->SelectArea.Visible()) return;
  TakeUndoSnapshot(*document, document->Buffer);
  WipeSelection(*document);
}

}  // namespace zelvane
