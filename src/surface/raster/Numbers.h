#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

namespace zelvane {

/// Places and sizes in the unit of whatever holds them; they may carry a fraction.
using Single = float;

/// Nearest whole number, halves to even, of any size. All of the program rounds so; loops over pixels have a
/// quicker way to the same number.
inline double RoundHalfEven(double value) {
  const double below = std::floor(value);
  const double rest = value - below;
  if (rest != 0.5) return rest < 0.5 ? below : below + 1;
  return std::fmod(below, 2) == 0 ? below : below + 1;
}

/// `RoundHalfEven` as an `Integer`; no value where that doesn't hold it, or where there is no number to
/// round. The step that wanted the value is then not made.
template <class Integer>
std::optional<Integer> ToWhole(double value) {
  const double rounded = RoundHalfEven(value);
  constexpr double kLowest = std::numeric_limits<Integer>::min();
  constexpr double kHighest = std::numeric_limits<Integer>::max();
  if (!(rounded >= kLowest && rounded <= kHighest)) return std::nullopt;
  return static_cast<Integer>(rounded);
}

inline std::optional<int16_t> ToInt16(double value) {
  return ToWhole<int16_t>(value);
}
inline std::optional<int32_t> ToInt32(double value) {
  return ToWhole<int32_t>(value);
}

/// The product; no value where it leaves 16 bits.
inline std::optional<int16_t> Product16(int16_t a, int16_t b) {
  return ToInt16(static_cast<double>(a) * b);
}

}  // namespace zelvane
