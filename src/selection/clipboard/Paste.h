#pragma once

namespace zelvane {

/// Floats the clipboard's picture at the top left corner of what the active document shows. A selection that
/// floats stays in the picture where it is. Can't be undone. Does nothing without a document or a picture,
/// and while a stroke runs.
void Paste_Click();

/// Makes a changed document called "Untitled" of the clipboard's picture. False: there is none, or it can't
/// be had.
bool PasteSpecial();

}  // namespace zelvane
