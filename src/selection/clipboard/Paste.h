#pragma once

namespace zelvane {

/// Floats the clipboard's picture at the top left corner of what the active document shows. A selection that
/// floats stays in the picture where it is. Can't be undone. Does nothing without a document or a picture,
/// and while a stroke runs.
void Paste_Click();

}  // namespace zelvane
