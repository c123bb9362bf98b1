#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "raster/AsciiArt.h"

namespace zelvane::art {
namespace {

class Dice {
 public:
  int Between(int low, int high) {
    return low + static_cast<int>(random_() % static_cast<unsigned>(high - low + 1));
  }
  Bitmap Noise(int width, int height) {
    Bitmap noise(width, height, 0);
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x) noise.WritableRow(y)[x] = 0xFF000000 | Between(0, 99) * 0x3B1F57u;
    return noise;
  }

 private:
  std::mt19937 random_{3};
};

bool Holds(const Canvas& canvas, int x, int y) {
  return canvas.GetPixel(x, y) != kNoColor;
}

Pixel Combined(RasterOp op, Pixel target, Pixel source) {
  const Pixel bits = op == RasterOp::Copy ? source : op == RasterOp::And ? target & source : target ^ source;
  return bits | 0xFF000000;
}

TEST(BitBlt, MatchesACopyThroughAnotherSurfacePixelByPixel) {
  constexpr RasterOp kOps[] = {RasterOp::Copy, RasterOp::And, RasterOp::Xor};
  Dice dice;
  for (int i = 0; i < 600; ++i) {
    Canvas canvas, other, source, expected;
    canvas.SetImage(dice.Noise(12, 9));
    other.SetImage(dice.Noise(9, 11));
    const bool same = i % 3 != 0;
    const RasterOp op = kOps[i / 3 % 3];
    const int x = dice.Between(-4, 12), y = dice.Between(-4, 9), width = dice.Between(-1, 15),
              height = dice.Between(-1, 12), from_x = dice.Between(-4, 12), from_y = dice.Between(-4, 9);
    source.SetImage(same ? canvas.Image() : other.Image());
    expected.SetImage(canvas.Image());
    for (int row = 0; row < height; ++row) {
      for (int column = 0; column < width; ++column) {
        if (!Holds(canvas, x + column, y + row) || !Holds(source, from_x + column, from_y + row)) continue;
        expected.WritableRow(y + row)[x + column] = Combined(
            op, canvas.Image().Row(y + row)[x + column], source.Image().Row(from_y + row)[from_x + column]);
      }
    }
    canvas.BitBlt(x, y, width, height, same ? canvas : other, from_x, from_y, op);
    ASSERT_TRUE(canvas.Image() == expected.Image()) << i;
  }
}

TEST(BitBlt, WholeSurfaceAndFarRectangles) {
  Sheet a({"...", ".#."}), b(3, 2);
  const Bitmap shared = b.Image();
  b.BitBlt(0, 0, kMax, kMax, a, 0, 0);
  EXPECT_TRUE(b.Image() == a.Image());
  EXPECT_EQ(ToColor(shared.Row(1)[1]), kWhite);
  EXPECT_EQ(b.TakeDamage(), (Rect{0, 0, 3, 2}));
  b.BitBlt(kMin, 0, kMax, 2, a, 0, 0);
  b.BitBlt(kMax, kMax, kMax, kMax, a, kMax, kMax);
  b.BitBlt(0, 0, 3, 2, a, kMin, kMin);
  EXPECT_TRUE(b.Damage().IsEmpty());
}

/// One axis of a stretch: how much of the target pixel shows a source pixel, in target-ths of a pixel.
int64_t Part(int64_t target_pixel, int64_t source_pixel, int64_t source, int64_t target) {
  if (source <= target) return target_pixel * source / target == source_pixel ? target : 0;
  return std::max<int64_t>(0, std::min((target_pixel + 1) * source, (source_pixel + 1) * target) -
                                  std::max(target_pixel * source, source_pixel * target));
}

struct Stretch {
  int x, y, width, height, from_x, from_y, from_width, from_height;
};

Pixel Averaged(const Canvas& source, const Stretch& s, int dx, int dy, Pixel untouched) {
  int64_t weight = 0, red = 0, green = 0, blue = 0;
  for (int y = 0; y < s.from_height; ++y) {
    for (int x = 0; x < s.from_width; ++x) {
      const int64_t part = Part(dx, x, s.from_width, s.width) * Part(dy, y, s.from_height, s.height);
      if (part == 0 || !Holds(source, s.from_x + x, s.from_y + y)) continue;
      const Channels c = Split(source.GetPixel(s.from_x + x, s.from_y + y));
      weight += part, red += part * c.red, green += part * c.green, blue += part * c.blue;
    }
  }
  if (weight == 0) return untouched;
  const auto mean = [weight](int64_t sum) { return static_cast<int>((2 * sum + weight) / (2 * weight)); };
  return ToPixel(RGB(mean(red), mean(green), mean(blue)));
}

TEST(StretchBlt, MatchesTheAreasInEveryMixOfAxes) {
  Dice dice;
  for (int i = 0; i < 400; ++i) {
    const Bitmap before = dice.Noise(11, 10);
    Canvas canvas, source;
    canvas.SetImage(before);
    source.SetImage(dice.Noise(10, 12));
    const Stretch s{dice.Between(-6, 8), dice.Between(-6, 8), dice.Between(1, 20), dice.Between(1, 20),
                    dice.Between(-3, 6), dice.Between(-3, 6), dice.Between(1, 16), dice.Between(1, 16)};
    canvas.StretchBlt(s.x, s.y, s.width, s.height, source, s.from_x, s.from_y, s.from_width, s.from_height);
    for (int y = 0; y < 10; ++y) {
      for (int x = 0; x < 11; ++x) {
        const bool inside = x >= s.x && x < s.x + s.width && y >= s.y && y < s.y + s.height;
        const Pixel old = before.Row(y)[x];
        ASSERT_EQ(canvas.Image().Row(y)[x], inside ? Averaged(source, s, x - s.x, y - s.y, old) : old) << i;
      }
    }
  }
}

TEST(StretchBlt, WithinOneSurfaceReadsWhatWasThere) {
  Sheet canvas({"#rgb"});
  canvas.StretchBlt(0, 0, 4, 1, canvas, 0, 0, 2, 1);
  EXPECT_EQ(Text(canvas), (Lines{"##rr"}));
  EXPECT_EQ(canvas.Damage(), (Rect{0, 0, 4, 1}));
}

TEST(StretchBlt, FarRectanglesAreCutOut) {
  Sheet canvas(4, 2), source({"#r", "gb"});
  // Half of 2^31 - 1 columns, rounded down, lie left of the surface; the second source column begins there.
  canvas.StretchBlt(-(kMax / 2) + 1, 0, kMax, 2, source, 0, 0, 2, 2);
  EXPECT_EQ(Text(canvas), (Lines{"##rr", "ggbb"}));
  canvas.TakeDamage();
  canvas.StretchBlt(kMin, kMin, kMax, kMax, source, kMin, kMin, kMax, kMax - 1);
  canvas.StretchBlt(0, 0, -1, 2, source, 0, 0, 2, 2);
  EXPECT_TRUE(canvas.Damage().IsEmpty());
  canvas.StretchBlt(0, 0, 1, 1, source, -(kMax / 2), 0, kMax, 1);
  EXPECT_EQ(canvas.GetPixel(0, 0), RGB(128, 0, 0));  // the mean of black and red, halves up
}

}  // namespace
}  // namespace zelvane::art
