#pragma once

#include <vector>

#include "surface/codecs/Palette.h"

namespace zelvane {

/// Cuts the space of colours into at most `count` boxes, each time the one of the largest variance where that
/// leaves the least, and yields the mean of each (X. Wu, 1991). A box is at least 8 values a channel wide.
std::vector<ColourPoint> MeansOfBoxes(const std::vector<WeightedColour>& colours, size_t count);

}  // namespace zelvane
