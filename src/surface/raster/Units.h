#pragma once

namespace zelvane {

/// Windows measure in twips, of which a logical pixel has so many on both axes, always.
inline constexpr int kTwipsPerPixel = 15;

/// How far behind the edge of its pixel a pointer position lies: just short of the middle, so that it rounds
/// to that pixel.
inline constexpr double kWithinPixel = 0.49;

}  // namespace zelvane
