#pragma once

#include <array>
#include <cstdint>

#include "surface/raster/Canvas.h"

/// Round dabs of the soft brushes. A dab is a disc made of rings about two pixels wide, painted from the
/// inside out; a pixel belongs to the innermost ring that holds it and changes once.
namespace zelvane {

/// Radius of a dab in pixels and the number of its rings; 0 rings paint nothing.
struct DabSize {
  int32_t Size = 0, Steps = 0;
};
/// From the value of a size option.
DabSize DabSizeOf(double option);

/// What becomes of each colour in a ring, channel by channel.
struct ColorMap {
  using Curve = std::array<uint8_t, 256>;
  Curve red, green, blue;

  Pixel operator()(Pixel pixel) const {
    return 0xFF000000 | uint32_t{red[pixel >> 16 & 0xFF]} << 16 | uint32_t{green[pixel >> 8 & 0xFF]} << 8 |
           blue[pixel & 0xFF];
  }
};

/// Moves colours towards `Goal`. The whole way has `Length` steps; 0 or less leaves colours as they are.
class SprayColor {
 public:
  SprayColor(Color Goal, int32_t Length);
  /// The map that leaves `Position` steps of the way.
  ColorMap At(int32_t Position) const;

 private:
  /// All steps of one channel: to divide once for a dab and not in each ring halves its cost.
  struct Ramp {
    Ramp(int goal_channel, int32_t Length);
    ColorMap::Curve At(int32_t Position) const;
    int goal;
    std::array<double, 256> steps;
  };
  Ramp red_, green_, blue_;
  bool moves_, grey_;
};

/// The same towards white or black.
inline SprayColor BrightenColor(int32_t Length, bool Darken) {
  return SprayColor(Darken ? kBlack : kWhite, Length);
}

/// Each lays one dab with its centre at (X, Y) in pixels of `Target`, rounded; what lies beyond the edge is
/// lost. Sizes above 1,000 lay nothing. Pressures are 0 to 100; one that leaves 32 bits lays nothing.
void SprayDab(Canvas& Target, Single X, Single Y, DabSize size, Color Goal, double Pressure);
/// Needs ten times the dabs of `SprayDab` at the same pressure.
void BrightenDab(Canvas& Target, Single X, Single Y, DabSize size, bool Darken, double Pressure);
/// Averages each pixel with its left, upper and upper left neighbour and gives all four the result; beyond
/// the edge everything is black.
void BlurDab(Canvas& Target, Single X, Single Y, DabSize size);

}  // namespace zelvane
