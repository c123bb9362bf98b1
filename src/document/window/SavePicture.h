#pragma once

#include <string>

#include "document/layers/ImageDocument.h"

namespace zelvane {

inline constexpr char kSaveFilter[] =
    "Bitmap (*.bmp)|*.bmp|GIF image (*.gif)|*.gif|JPEG image (*.jpg;*.jpe;*.jpeg)|*.jpg;*.jpe;*.jpeg|Tagged "
    "image format "
    "file (*.tif;*.tiff;*.jfx)|*.tif;*.tiff;*.jfx|Icon (*.ico)|*.ico";

/// Sets `State.SaveType` by the extension: a bitmap for an empty path and for any other one.
void SetSaveType(const std::string& path);

/// Asks for a name, starting at the document's own. Empty when cancelled; a name without a dot takes the
/// extension of the present `State.SaveType`, which then follows the result.
std::string GetSaveName(ImageDocument& document, const std::string& WindowTitle, const std::string& Filters);

/// Asks before another file than the document's own is replaced.
bool MayReplace(const ImageDocument& document, const std::string& name);

/// Writes the picture and names the document after the file. False: it couldn't be written, which the user
/// has been told with the reason; the document stays changed and a file that stood there stays as it was. An
/// empty path does nothing.
bool SaveFile(ImageDocument& document, const std::string& path);

/// The menu entries, on the active document.
void Save_Click();
void SaveAs_Click();

}  // namespace zelvane
