#pragma once

#include <cstdint>
#include <vector>

#include "surface/codecs/PngChunks.h"

/// What a png's further chunks tell of the picture.
namespace zelvane {

/// How the picture is to be turned, 1 to 8 as in a camera's notes: from the chunk for these, or else from the
/// text that older programs hid them in. 1 where neither tells.
uint32_t PngOrientation(const std::vector<Chunk>& chunks);

/// The colour profile; empty where there is none, or it's that of the screen.
std::vector<unsigned char> PngProfile(const std::vector<Chunk>& chunks);

}  // namespace zelvane
