#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include "raster/AsciiArt.h"

namespace zelvane {
namespace {

using art::Lines;
using art::Sheet;
using art::Text;

class Dice {
 public:
  int Between(int low, int high) {
    return low + static_cast<int>(random_() % static_cast<unsigned>(high - low + 1));
  }
  /// A surface with each pixel one of so many colours.
  void Fill(Canvas& canvas, int width, int height, int colors) {
    canvas.Resize(width, height);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x)
        canvas.SetPixelV(x, y, Color{Between(0, colors - 1) * 0x3B1F57 & 0xFFFFFF});
    }
    canvas.TakeDamage();
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
  Dice dice;
  for (int i = 0; i < 600; ++i) {
    Canvas canvas, other;
    dice.Fill(canvas, 12, 9, 100);
    dice.Fill(other, 9, 11, 100);
    const bool same = i % 3 != 0;
    const RasterOp op =
        std::vector{RasterOp::Copy, RasterOp::And, RasterOp::Xor}[static_cast<size_t>(i / 3 % 3)];
    const int x = dice.Between(-4, 12), y = dice.Between(-4, 9), width = dice.Between(-1, 15),
              height = dice.Between(-1, 12), from_x = dice.Between(-4, 12), from_y = dice.Between(-4, 9);
    Canvas source, expected;
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
  constexpr int32_t kMin = std::numeric_limits<int32_t>::min(), kMax = std::numeric_limits<int32_t>::max();
  Sheet a(3, 2), b(3, 2);
  a.SetPixelV(1, 1, kBlack);
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

/// What one target pixel shows of a source, worked out by cutting source pixels into target-ths: the part of
/// the axis in those units.
std::pair<int64_t, int64_t> Covered(int64_t d, int64_t source, int64_t target) {
  if (source > target) return {d * source, (d + 1) * source};
  const int64_t pixel = d * source / target;
  return {pixel * target, (pixel + 1) * target};
}

int64_t Part(std::pair<int64_t, int64_t> covered, int64_t pixel, int64_t target) {
  return std::max<int64_t>(
      0, std::min(covered.second, (pixel + 1) * target) - std::max(covered.first, pixel * target));
}

struct Stretch {
  int x, y, width, height, from_x, from_y, from_width, from_height;
};

Pixel Averaged(const Canvas& source, const Stretch& s, int dx, int dy, Pixel untouched) {
  const auto across = Covered(dx, s.from_width, s.width), down = Covered(dy, s.from_height, s.height);
  int64_t weight = 0, red = 0, green = 0, blue = 0;
  for (int y = 0; y < s.from_height; ++y) {
    for (int x = 0; x < s.from_width; ++x) {
      const int64_t part = Part(across, x, s.width) * Part(down, y, s.height);
      if (part == 0 || !Holds(source, s.from_x + x, s.from_y + y)) continue;
      const Channels c = Split(source.GetPixel(s.from_x + x, s.from_y + y));
      weight += part;
      red += part * c.red;
      green += part * c.green;
      blue += part * c.blue;
    }
  }
  if (weight == 0) return untouched;
  const auto mean = [weight](int64_t sum) { return static_cast<int>((2 * sum + weight) / (2 * weight)); };
  return ToPixel(RGB(mean(red), mean(green), mean(blue)));
}

TEST(StretchBlt, MatchesTheAreasInEveryMixOfAxes) {
  Dice dice;
  for (int i = 0; i < 400; ++i) {
    Canvas canvas, source;
    dice.Fill(canvas, 11, 10, 100);
    dice.Fill(source, 10, 12, 100);
    const Stretch s{dice.Between(-6, 8), dice.Between(-6, 8), dice.Between(1, 20), dice.Between(1, 20),
                    dice.Between(-3, 6), dice.Between(-3, 6), dice.Between(1, 16), dice.Between(1, 16)};
    const Bitmap before = canvas.Image();
    canvas.StretchBlt(s.x, s.y, s.width, s.height, source, s.from_x, s.from_y, s.from_width, s.from_height);
    const Rect target{s.x, s.y, s.x + s.width, s.y + s.height};
    for (int y = 0; y < 10; ++y) {
      for (int x = 0; x < 11; ++x) {
        const bool inside = !target.Intersected({x, y, x + 1, y + 1}).IsEmpty();
        const Pixel old = before.Row(y)[x];
        ASSERT_EQ(canvas.Image().Row(y)[x], inside ? Averaged(source, s, x - s.x, y - s.y, old) : old) << i;
      }
    }
  }
}

TEST(StretchBlt, WithinOneSurfaceReadsWhatWasThere) {
  Sheet canvas(4, 1);
  art::Draw(canvas, {"#rgb"});
  canvas.StretchBlt(0, 0, 4, 1, canvas, 0, 0, 2, 1);
  EXPECT_EQ(Text(canvas), (Lines{"##rr"}));
  EXPECT_EQ(canvas.Damage(), (Rect{0, 0, 4, 1}));
}

TEST(StretchBlt, FarRectanglesAreCutOut) {
  constexpr int32_t kMin = std::numeric_limits<int32_t>::min(), kMax = std::numeric_limits<int32_t>::max();
  Sheet canvas(4, 2), source(2, 2);
  art::Draw(source, {"#r", "gb"});
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
}  // namespace zelvane
