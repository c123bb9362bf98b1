#pragma once

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "surface/raster/Canvas.h"

/// Surfaces as text: '.' white, '#' black, 'r', 'g', 'b' the primaries, '?' anything else.
namespace zelvane::art {

inline constexpr Color kRed = RGB(255, 0, 0), kGreen = RGB(0, 255, 0), kBlue = RGB(0, 0, 255);
inline constexpr int32_t kMin = std::numeric_limits<int32_t>::min(),
                         kMax = std::numeric_limits<int32_t>::max();
/// The largest that a Single holds below 2^31.
inline constexpr Single kFar = 2147483520.0f;

inline constexpr std::pair<char, Color> kInks[] = {
    {'.', kWhite}, {'#', kBlack}, {'r', kRed}, {'g', kGreen}, {'b', kBlue}};

using Lines = std::vector<std::string>;

inline Lines Text(const Canvas& canvas) {
  const auto width = static_cast<size_t>(canvas.ScaleWidth());
  Lines lines(static_cast<size_t>(canvas.ScaleHeight()), std::string(width, '?'));
  for (int y = 0; y < canvas.ScaleHeight(); ++y)
    for (int x = 0; x < canvas.ScaleWidth(); ++x)
      for (const auto& [letter, color] : kInks)
        if (canvas.GetPixel(x, y) == color) lines[static_cast<size_t>(y)][static_cast<size_t>(x)] = letter;
  return lines;
}

/// A white surface of that size, or one as its text tells, with nothing damaged.
struct Sheet : Canvas {
  Sheet(int width, int height) {
    Resize(width, height);
    TakeDamage();
  }
  explicit Sheet(const Lines& lines)
      : Sheet(static_cast<int>(lines[0].size()), static_cast<int>(lines.size())) {
    for (int y = 0; y < ScaleHeight(); ++y)
      for (int x = 0; x < ScaleWidth(); ++x)
        for (const auto& [letter, color] : kInks)
          if (lines[static_cast<size_t>(y)][static_cast<size_t>(x)] == letter) SetPixelV(x, y, color);
    TakeDamage();
  }
};

}  // namespace zelvane::art
