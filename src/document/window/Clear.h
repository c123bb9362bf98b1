#pragma once

namespace zelvane {

/// Wipes the picture of the active document with its background colour. Can be undone; doesn't mark a change.
void clearButton_Click();

}  // namespace zelvane
