#pragma once

namespace zelvane {

/// Turns red, green and blue of every pixel of the active document's live layer into 255 minus their value.
void InvertImage_Click();

}  // namespace zelvane
