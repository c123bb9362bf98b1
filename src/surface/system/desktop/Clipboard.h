#pragma once

#include <optional>
#include <string>

#include "surface/raster/Bitmap.h"

/// The desktop's clipboard, for a bitmap and for text.
namespace zelvane::Clipboard {

void Clear();
bool HasBitmap();
std::optional<Bitmap> GetBitmap();
void SetBitmap(const Bitmap& bitmap);
std::string GetText();
void SetText(const std::string& text);

}  // namespace zelvane::Clipboard
