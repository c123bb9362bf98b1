#pragma once

#include "document/layers/ImageDocument.h"

/// The floating selection of a document. There is one exactly while `SelectArea` is visible: its pixels are
/// in `BufferSelected`, whose place in the picture the marquee shows, and every `RefreshPaintArea` merges
/// them into `Buffer`. `SelectedBack`, of the same size and place, is what returns to the picture when the
/// selection moves on.
namespace zelvane {

/// Lifts a rectangle of the picture, in image pixels. The picture looks as before; beneath lies a hole in the
/// background colour. An empty rectangle leaves nothing selected. Throws `SurfaceTooLarge`, with nothing
/// selected.
void LiftSelection(ImageDocument& document, const Rect& area);

/// Floats pixels from elsewhere over the picture, which stays whole beneath, and shows them. Left and top are
/// rounded, halves to even; a part may lie off the picture. Throws `SurfaceTooLarge`, with everything as it
/// was.
void FloatSelection(ImageDocument& document, Bitmap pixels, Single left, Single top);

/// Gives the floating selection other pixels, of another size perhaps; its corner stays where it is, and the
/// picture whole beneath.
void ReplaceSelection(ImageDocument& document, Bitmap pixels);

/// Moves the floating selection, in image pixels rounded halves to even: what lay beneath it returns, what
/// lies beneath the new place is kept.
void MoveSelection(ImageDocument& document, Single left, Single top);

/// Fills the selection with the background colour and drops it.
void WipeSelection(ImageDocument& document);

/// Ends the selection, if there is one; its pixels stay in the picture where they are.
void DropSelection(ImageDocument& document);

}  // namespace zelvane
