#pragma once

#include <QString>
#include <cstdint>

#include "surface/codecs/ByteView.h"

/// Texts of metafiles, which their font's character set tells the meaning of.
namespace zelvane {

/// Of 8-bit characters; in the Windows code page of the set, western where it has none.
QString TextOf(ByteView bytes, uint32_t charset);
/// Of 16-bit characters.
QString WideText(ByteView bytes);
/// What the signs of the font named Symbol are in Unicode. Any other character stays.
QString FromSymbolFont(QString text);

/// The character set of fonts with signs of their own.
inline constexpr uint32_t kSymbolCharset = 2;

}  // namespace zelvane
