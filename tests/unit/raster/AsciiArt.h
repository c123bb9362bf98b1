#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "surface/raster/Canvas.h"

/// Surfaces as text: '.' white, '#' black, 'r', 'g', 'b' the primaries, '?' anything else.
namespace zelvane::art {

struct Ink {
  char letter;
  Color color;
};
inline constexpr Ink kInks[] = {
    {'.', kWhite}, {'#', kBlack}, {'r', RGB(255, 0, 0)}, {'g', RGB(0, 255, 0)}, {'b', RGB(0, 0, 255)}};

inline char Letter(Color color) {
  for (const Ink& ink : kInks) {
    if (ink.color == color) return ink.letter;
  }
  return '?';
}

inline Color ColorOf(char letter) {
  for (const Ink& ink : kInks) {
    if (ink.letter == letter) return ink.color;
  }
  return kNoColor;
}

using Lines = std::vector<std::string>;

inline Lines Text(const Canvas& canvas) {
  Lines lines(static_cast<size_t>(canvas.ScaleHeight()));
  for (int y = 0; y < canvas.ScaleHeight(); ++y) {
    for (int x = 0; x < canvas.ScaleWidth(); ++x)
      lines[static_cast<size_t>(y)] += Letter(canvas.GetPixel(x, y));
  }
  return lines;
}

inline void Draw(Canvas& canvas, const Lines& lines) {
  canvas.Resize(static_cast<int>(lines[0].size()), static_cast<int>(lines.size()));
  for (int y = 0; y < canvas.ScaleHeight(); ++y) {
    for (int x = 0; x < canvas.ScaleWidth(); ++x) {
      canvas.SetPixelV(x, y, ColorOf(lines[static_cast<size_t>(y)][static_cast<size_t>(x)]));
    }
  }
  canvas.TakeDamage();
}

/// A white surface of that size with nothing damaged.
struct Sheet : Canvas {
  Sheet(int width, int height) {
    Resize(width, height);
    TakeDamage();
  }
};

}  // namespace zelvane::art
