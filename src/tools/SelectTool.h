#pragma once

#include <cstdint>

namespace zelvane {

class ImageDocument;

/// Makes the tool of the index, 0 to 14, the current one: its button, its option bar and its pointer.
void SelectTool(int16_t index);
/// Select the style of the Rectangle and the Circle tool, of the Pen, of the Brighten tool.
void SelectOption(int16_t index);
void SelectOption3(int16_t index);
void SelectOption4(int16_t index);

/// The picture's pointer is that of the current tool.
void ShowToolPointer(ImageDocument& document);

/// The read-outs stand at the right of the top bar, but never cover the current option bar.
void PlaceReadOuts();

}  // namespace zelvane
