#pragma once

/// The entries of the Edit menu that work on the selection of the active document. Without a document, and
/// while a stroke runs, they do nothing.
namespace zelvane {

/// Lifts the whole picture; a selection that floats stays in it where it is.
void SelectAll_Click();
/// Puts the selection on the clipboard, which is the whole picture where there was none.
void Copy_Click();
/// The same, then wipes it with the background colour. Can't be undone.
void Cut_Click();
/// Wipes the selection with the background colour, if there is one. Can be undone; doesn't mark a change.
void ClearSelection_Click();

}  // namespace zelvane
