#pragma once

#include <optional>

#include "surface/codecs/PictureDecoder.h"

namespace zelvane {

/// One picture of an icon or a pointer: a png, or a bitmap of twice the height, colours and above them a
/// mask. Its opacity is in the top byte. No value where any of it is missing.
std::optional<Bitmap> DecodeIconImage(ByteView picture, SizeLimit limit, ReadingWatch& watch);

bool IsPng(ByteView picture);
/// A png with its opacity in the top byte.
std::optional<Bitmap> DecodeSeeThroughPng(ByteView bytes, SizeLimit limit, ReadingWatch& watch);

}  // namespace zelvane
