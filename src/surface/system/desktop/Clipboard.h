#pragma once

#include <optional>
#include <string>

#include "surface/raster/Bitmap.h"

/// The desktop's clipboard, for a bitmap and for text. An owner that doesn't answer costs a wait of five
/// seconds; then it counts as empty for half a minute, or until the clipboard changes hands.
namespace zelvane::Clipboard {

void Clear();
/// Its owner offers a picture in one of the formats that we read.
bool HasBitmap();
/// On white where it is transparent; one that this program put there shares its pixels. No value where there
/// is none, where what comes is no whole picture, and where it's too large.
std::optional<Bitmap> GetBitmap();
/// Replaces what was there. The pixels are shared until either side writes, and converted to png, bmp and
/// what else the toolkit knows when somebody asks. When the program ends they go to the desktop's clipboard
/// manager, where there is one, and are lost otherwise.
void SetBitmap(const Bitmap& bitmap);
std::string GetText();
void SetText(const std::string& text);

}  // namespace zelvane::Clipboard
