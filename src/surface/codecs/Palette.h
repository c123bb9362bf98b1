#pragma once

#include <cstddef>
#include <vector>

#include "surface/codecs/ColourCounts.h"
#include "surface/codecs/NearestColour.h"
#include "surface/raster/Bitmap.h"

namespace zelvane {

inline constexpr size_t kPaletteSize = 256;
using Palette = std::vector<Pixel>;

struct WeightedColour : ColourPoint {
  float weight = 0;
};

/// All colours of a picture that has few.
std::vector<WeightedColour> ColoursOf(const ColourCounts& counts);
/// The means of a picture's like colours, out of about a million of its pixels.
std::vector<WeightedColour> MeanColoursOf(const Bitmap& picture);

/// The best palette for these colours, of `kPaletteSize` at most: boxes of least variance (X. Wu, Efficient
/// Statistical Computations for Optimal Color Quantization, 1991), improved by k-means (M. E. Celebi,
/// Improving the Performance of K-Means for Color Quantization, 2011). The last places go to what is farthest
/// from all others (T. F. Gonzalez, 1985): dithering can't mix colours beyond those of the palette.
Palette Quantise(const std::vector<WeightedColour>& colours);

std::vector<ColourPoint> PointsOf(const Palette& palette);

}  // namespace zelvane
