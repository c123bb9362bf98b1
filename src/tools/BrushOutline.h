#pragma once

#include "document/layers/ImageDocument.h"

namespace zelvane {

/// Outlines the pixels that the current brush would reach at an image position, at the document's zoom. Tools
/// that aren't brushes have no outline, nor has a brush too small to be seen round the pointer's tip.
void ShowBrushOutline(ImageDocument& document, int16_t X, int16_t Y);

}  // namespace zelvane
