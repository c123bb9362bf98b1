#pragma once

namespace zelvane {

class ImageDocument;

/// Prints the text that is being typed on the active document, where its box stands, and closes the box.
void ApplyText();

/// Closes the box, if there is one; what was being typed is dropped.
void CancelText(ImageDocument& document);

}  // namespace zelvane
