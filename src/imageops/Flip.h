#pragma once

namespace zelvane {

/// Mirror the live layer of the active document from left to right, or from top to bottom. No undo copy is
/// taken, so Undo goes back to before the last change that took one.
void FlipHorizontal_Click();
void FlipVertical_Click();

}  // namespace zelvane
