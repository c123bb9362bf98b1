#pragma once

#include "document/layers/ImageDocument.h"

namespace zelvane {

/// Copies the live layer into the document's `Undo`, before the first pixel of a change is written.
void TakeUndoSnapshot(ImageDocument& document);
/// The same of one of its layers, whichever is live.
void TakeUndoSnapshot(ImageDocument& document, const PictureSurface& layer);

/// Exchanges the snapshot with the live layer of the active document and shows it, so a second call takes the
/// change back in. Where the sizes differ, the part that both have at the top left is exchanged. `Dirty`
/// stays. While a stroke runs it does nothing.
void Undo_Click();

}  // namespace zelvane
