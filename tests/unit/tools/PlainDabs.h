#pragma once

#include <cmath>
#include <random>
#include <utility>
#include <vector>

#include "raster/AsciiArt.h"
#include "tools/Dab.h"

/// The dabs pixel by pixel, each ring over its whole square: slow, and too simple to be wrong.
namespace zelvane::plain {

/// Nearest, halves to even, as the processor rounds.
inline int Rounded(double value) {
  return static_cast<int>(std::nearbyint(value));
}

template <class PaintPixel>
void Dab(int size, int steps, PaintPixel paint_pixel) {
  std::vector<bool> done(static_cast<size_t>((2 * size + 1) * (2 * size + 1)));
  for (int i = 1; i <= steps; ++i) {
    const int ring = Rounded(static_cast<double>(size) / steps * i);
    for (int dx = -ring; dx <= ring; ++dx) {
      for (int dy = -ring; dy <= ring; ++dy) {
        const auto offset = static_cast<size_t>((dx + size) * (2 * size + 1) + dy + size);
        if (done[offset] || dx * dx + dy * dy > ring * ring) continue;
        paint_pixel(i, dx, dy);
        done[offset] = true;
      }
    }
  }
}

inline int Moved(int goal, int channel, int length, int position) {
  const double step = goal == channel ? 0 : static_cast<double>(goal - channel) / length;
  double value = goal - position * step;
  if (value < 0) value = 0;
  if (value > 255) value = 255;
  return Rounded(value);
}

inline Color Moved(Color goal, Color pixel, int length, int position) {
  if (length <= 0) return pixel;
  const Channels s = Split(goal), q = Split(pixel);
  return RGB(Moved(s.red, q.red, length, position), Moved(s.green, q.green, length, position),
             Moved(s.blue, q.blue, length, position));
}

/// `weight`: 10 for the Airbrush with a tenth of the pressure, 100 for Brighten with the pressure.
inline void Soft(Canvas& target, int x, int y, DabSize size, Color goal, double weight, double pressure) {
  Dab(size.Size, size.Steps, [&](int i, int dx, int dy) {
    const Color pixel = target.GetPixel(x + dx, y + dy);
    const int position = Rounded((weight - pressure) * size.Steps + i);
    const int length = Rounded((weight + 1 - pressure) * size.Steps);
    target.SetPixelV(x + dx, y + dy, Moved(goal, pixel, length, position));
  });
}

inline void Blur(Canvas& target, int x, int y, DabSize size) {
  Dab(size.Size, size.Steps, [&](int, int dx, int dy) {
    const int px = x + dx, py = y + dy;
    const std::pair<int, int> block[] = {{px, py}, {px, py - 1}, {px - 1, py - 1}, {px - 1, py}};
    int red = 0, green = 0, blue = 0;
    for (const auto& [column, row] : block) {
      const Channels channels = Split(target.GetPixel(column, row));
      red += std::max(channels.red, 0);
      green += std::max(channels.green, 0);
      blue += std::max(channels.blue, 0);
    }
    const Color mean = RGB(Rounded(red / 4.0), Rounded(green / 4.0), Rounded(blue / 4.0));
    for (const auto& [column, row] : block) target.SetPixelV(column, row, mean);
  });
}

/// A surface of many colours, the same for the same seed.
struct Noise : Canvas {
  Noise(int width, int height, unsigned seed) {
    Resize(width, height);
    std::mt19937 random(seed);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) WritableRow(y)[x] = 0xFF000000 | static_cast<Pixel>(random() >> 8);
    }
    TakeDamage();
  }
};

}  // namespace zelvane::plain
