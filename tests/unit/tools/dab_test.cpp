#include "tools/Dab.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <tuple>
#include <vector>

namespace zelvane {
namespace {

constexpr Color kInk = RGB(200, 30, 100);

/// A surface of many colours, always the same.
struct Noise : Canvas {
  Noise(int width, int height) {
    Resize(width, height);
    std::mt19937 random;
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x) WritableRow(y)[x] = 0xFF000000 | static_cast<Pixel>(random() >> 8);
    TakeDamage();
  }
};

int Rounded(double value) {
  return static_cast<int>(std::nearbyint(value));
}

/// The dabs pixel by pixel, each ring over its whole square: slow, and too simple to be wrong.
template <class PaintPixel>
void PlainRings(DabSize size, PaintPixel paint_pixel) {
  const int side = 2 * size.Size + 1;
  std::vector<bool> done(static_cast<size_t>(side * side));
  for (int i = 1; i <= size.Steps; ++i) {
    const int ring = Rounded(static_cast<double>(size.Size) / size.Steps * i);
    for (int dx = -ring; dx <= ring; ++dx) {
      for (int dy = -ring; dy <= ring; ++dy) {
        const auto offset = static_cast<size_t>((dx + size.Size) * side + dy + size.Size);
        if (done[offset] || dx * dx + dy * dy > ring * ring) continue;
        paint_pixel(i, dx, dy);
        done[offset] = true;
      }
    }
  }
}

/// `weight`: 10 for the Airbrush with a tenth of the pressure, 100 for Brighten with the pressure.
void PlainSoft(Canvas& target, int x, int y, DabSize size, Color goal, double weight, double pressure) {
  const Channels to = Split(goal);
  const int length = Rounded((weight + 1 - pressure) * size.Steps);
  PlainRings(size, [&](int i, int dx, int dy) {
    const int left = Rounded((weight - pressure) * size.Steps + i);
    const auto moved = [&](int end, int from) {
      return length <= 0 ? from : Rounded(std::clamp(end - left * (double(end - from) / length), 0.0, 255.0));
    };
    const auto [red, green, blue] = Split(target.GetPixel(x + dx, y + dy));
    target.SetPixelV(x + dx, y + dy, RGB(moved(to.red, red), moved(to.green, green), moved(to.blue, blue)));
  });
}

void PlainBlur(Canvas& target, int x, int y, DabSize size) {
  PlainRings(size, [&](int, int dx, int dy) {
    const int px = x + dx, py = y + dy;
    const std::pair<int, int> block[] = {{px, py}, {px, py - 1}, {px - 1, py - 1}, {px - 1, py}};
    int red = 0, green = 0, blue = 0;
    for (const auto& [column, row] : block) {
      const Channels channels = Split(target.GetPixel(column, row));
      red += std::max(channels.red, 0), green += channels.green, blue += channels.blue;
    }
    const Color mean = RGB(Rounded(red / 4.0), Rounded(green / 4.0), Rounded(blue / 4.0));
    for (const auto& [column, row] : block) target.SetPixelV(column, row, mean);
  });
}

/// One dab of ours and one of the plain kind on equal surfaces; whatever the plain one touched is shown.
template <class Ours, class Plain>
void ExpectSame(int width, int height, Ours ours, Plain plain) {
  Noise a(width, height), b(width, height);
  ours(a), plain(b);
  ASSERT_TRUE(a.Image() == b.Image());
  EXPECT_EQ(b.Damage().United(a.Damage()), a.Damage());
}

TEST(DabSize_, RoundsTheOptionAndItsHalfToEven) {
  for (const auto& [option, size, steps] :
       {std::tuple{1.0, 1, 0}, {3.0, 3, 2}, {5.0, 5, 2}, {10.0, 10, 5}, {2.5, 2, 1}, {1e12, 0, 0}}) {
    EXPECT_EQ(DabSizeOf(option).Size, size);
    EXPECT_EQ(DabSizeOf(option).Steps, steps);
  }
}

/// In the middle of a surface and of a tiny one, with parts beyond each edge, and with the rim at an edge.
TEST(Dabs, PaintWhatThePlainRingsPaint) {
  constexpr double kPressures[] = {0, 37.4, 50, 99.5, 100};
  size_t turn = 0;
  const auto check = [&](DabSize size, int side, int x, int y) {
    const auto column = static_cast<Single>(x), row = static_cast<Single>(y);
    const double pressure = kPressures[turn++ % 5];
    const bool darken = turn % 2 == 0;
    ExpectSame(
        side, side, [&](Canvas& c) { SprayDab(c, column, row, size, kInk, pressure); },
        [&](Canvas& c) { PlainSoft(c, x, y, size, kInk, 10, pressure / 10); });
    ExpectSame(
        side, side, [&](Canvas& c) { BrightenDab(c, column, row, size, darken, pressure); },
        [&](Canvas& c) { PlainSoft(c, x, y, size, darken ? kBlack : kWhite, 100, pressure); });
    for (const int height : {side, 1, 2})
      ExpectSame(
          side, height, [&](Canvas& c) { BlurDab(c, column, row, size); },
          [&](Canvas& c) { PlainBlur(c, x, y, size); });
  };
  for (int size = 0; size <= 100; size += size < 12 ? 1 : 44)
    for (const int side : {2 * size + 5, 3})
      for (const int x : {-size, size / 3, size, side / 2, side - size - 1, side - size, side + size - 1})
        for (const int y : {x, side - 1 - x}) check(DabSizeOf(size), side, x, y);
}

TEST(Dabs, OfNoUseLeaveTheSurface) {
  Noise canvas(30, 30);
  const Bitmap before = canvas.Image();
  for (const double size : {1.0, 0.0, -7.0, 5000.0, 1e12}) {
    SprayDab(canvas, 15, 15, DabSizeOf(size), kInk, 100);
    BlurDab(canvas, 15, 15, DabSizeOf(size));
  }
  SprayDab(canvas, 15, 15, DabSizeOf(2), kInk, 100);                                      // one ring: the rim
  for (const double p : {110.0, 1e12}) SprayDab(canvas, 15, 15, DabSizeOf(10), kInk, p);  // no way left to go
  SprayDab(canvas, 3e9F, 15, DabSizeOf(10), kInk, 100);
  BlurDab(canvas, 15, -3e9F, DabSizeOf(10));
  EXPECT_TRUE(canvas.Image() == before);
  Canvas nothing;
  BlurDab(nothing, 0, 0, DabSizeOf(10));
  EXPECT_TRUE(nothing.Image().IsEmpty());
}

}  // namespace
}  // namespace zelvane
