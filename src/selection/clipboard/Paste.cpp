#include "selection/clipboard/Paste.h"

#include <algorithm>
#include <utility>

#include "document/window/MakeDocument.h"
#include "selection/Selection.h"
#include "surface/raster/FailingStep.h"
#include "surface/system/desktop/Clipboard.h"
#include "ui/MsgBox.h"

namespace zelvane {
namespace {

void TellFailure() {
  MsgBox(
      "The picture on the clipboard can't be pasted.\r\n\r\n"
      "Reason: it is damaged, too large, or not handed out by its program.",
      kOkOnly + kExclamationIcon, "Zelvane");
}

/// Hands the clipboard's picture on. False, and told: it can't be had, or not be taken in.
template <class Taker>
bool Take(Taker&& taker) {
  const bool is_taken = Attempt([&] { taker(Clipboard::GetBitmap().value()); });
  if (is_taken) return true;
  LackedMemory = false;  // told with the rest
  TellFailure();
  return false;
}

/// How far the picture is scrolled, in image pixels.
Single ScrolledBy(Single place, double zoom) {
  return static_cast<Single>(std::max(-place, 0.0F) * 100 / zoom);
}

void Paste(ImageDocument& document, Bitmap picture) {
  FloatSelection(document, std::move(picture), ScrolledBy(document.PaintArea.Left(), document.Zoom),
                 ScrolledBy(document.PaintArea.Top(), document.Zoom));
  document.Dirty = true;
}

}  // namespace

void Paste_Click() {
  ImageDocument* document = DocumentAtRest();
  if (!document || !Clipboard::HasBitmap()) return;
  RefreshPaintArea(document->Buffer);
  Take([document](Bitmap picture) { Paste(*document, std::move(picture)); });
}

bool PasteSpecial() {
  if (!Clipboard::HasBitmap()) return false;
  return Take([](Bitmap picture) { MakeDocument(std::move(picture), {"Untitled", ""}).Dirty = true; });
}

}  // namespace zelvane
