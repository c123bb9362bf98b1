#pragma once

#include <cstdint>
#include <optional>

#include "surface/codecs/PictureDecoder.h"

namespace zelvane {

struct TiffPage {
  int64_t width = 0, height = 0;
  bool only = true;      // no further pages, no layers
  bool ordinary = true;  // of 8 bits a channel at most, no inks
};

/// The first page of a tiff file, both sizes of places. No value where a page's directory or data leaves the
/// file, the pages run in a circle, or the first one is larger than admitted or than its data could fill: the
/// library notices late, if at all.
std::optional<TiffPage> FirstTiffPage(ByteView bytes, SizeLimit limit);

}  // namespace zelvane
