#pragma once

#include <algorithm>
#include <cstdint>

#include "surface/raster/Color.h"

/// The step from one colour to another that soft brushes and gradients share.
namespace zelvane {

/// A number of small size rounded to nearest, halves to even: beside 1.5 * 2^52 a double has no room for a
/// fraction, so the addition rounds. Takes no branch and no call, so loops of it become vector code.
inline double RoundSmall(double value) {
  constexpr double kNoFraction = 6755399441055744.0;
  return value + kNoFraction - kNoFraction;
}

/// One of `Length` equal steps from `goal` to `other`; `Length` above 0.
inline double RampStep(int goal, int other, int32_t Length) {
  return static_cast<double>(goal - other) / Length;
}

/// The channel that lies `Position` steps away from `goal`, limited to 0..255.
inline int RampChannel(int goal, double step, int32_t Position) {
  const double value = RoundSmall(goal - Position * step);
  return static_cast<int>(std::min(std::max(value, 0.0), 255.0));
}

/// The colour on the way from `start` to `end`; `start` where the way has no length.
inline Color GradientColor(int32_t Length, int32_t Position, Color start, Color end) {
  if (Length <= 0) return start;
  const Channels from = Split(start), to = Split(end);
  const auto channel = [&](int goal, int other) {
    return RampChannel(goal, RampStep(goal, other, Length), Position);
  };
  return RGB(channel(from.red, to.red), channel(from.green, to.green), channel(from.blue, to.blue));
}

}  // namespace zelvane
