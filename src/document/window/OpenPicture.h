#pragma once

#include <optional>
#include <string>
#include <vector>

#include "document/window/frmPaint.h"
#include "surface/system/files/PictureFile.h"

namespace zelvane {

/// Reads a picture by the reader for its extension's first three letters. No value where it's missing or
/// invalid. Throws `ReadingGivenUp`.
std::optional<LoadedPicture> LoadPictureFile(const std::string& path);

/// Asks for a picture and opens it.
void OpenAskedFile();
/// Opens pictures that the user has picked, one after the other, and puts them on the recent list.
void OpenPickedFiles(const std::vector<std::string>& paths);
/// Opens a path of the recent list.
void OpenRecentFile(const std::string& path);
/// Opens a picture in a new document. Null: it couldn't be read, which the user has been told, and no
/// document stays. Throws `ReadingGivenUp`: what was to follow doesn't.
frmPaint* OpenPicture(const std::string& path);

}  // namespace zelvane
