#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <random>

#include "raster/AsciiArt.h"

namespace zelvane {
namespace {

using art::Lines;
using art::Sheet;
using art::Text;

Lines LineText(double width, Single x1, Single y1, Single x2, Single y2, int columns = 9, int rows = 5) {
  Sheet canvas(columns, rows);
  canvas.SetDrawWidth(width);
  canvas.Line(x1, y1, x2, y2, kBlack);
  return Text(canvas);
}

TEST(ThinLine, TakesOnePixelAColumnNearestToTheLine) {
  EXPECT_EQ(LineText(1, 0, 0, 8, 4), (Lines{
                                         "#........",
                                         ".##......",
                                         "...##....",
                                         ".....##..",
                                         ".......##",
                                     }));
}

TEST(WidePoint, CoversAsManyRowsAndColumnsAsItIsWide) {
  EXPECT_EQ(LineText(2, 2, 2, 2, 2, 4, 4), (Lines{"....", ".##.", ".##.", "...."}));
  EXPECT_EQ(LineText(4, 2, 2, 2, 2, 5, 5), (Lines{".##..", "####.", "####.", ".##..", "....."}));
  for (int width = 1; width <= 60; ++width) {
    Sheet canvas(80, 80);
    canvas.SetDrawWidth(width);
    canvas.PSet(40, 40, kBlack);
    const Rect touched = canvas.Damage();
    EXPECT_EQ(touched, (Rect{40 - width / 2, 40 - width / 2, 40 + (width + 1) / 2, 40 + (width + 1) / 2}));
  }
}

struct Ends {
  int x1, y1, x2, y2;
};

template <class Check>
void ForRandomLines(int count, int reach, Check check) {
  std::mt19937 random(7);
  const auto any = [&] { return static_cast<int>(random() % static_cast<unsigned>(2 * reach)) - reach / 2; };
  for (int i = 0; i < count; ++i)
    check(Ends{any(), any(), any(), any()}, static_cast<int>(random() % 12) + 1);
}

void DrawLine(Canvas& canvas, const Ends& ends, int by = 0) {
  canvas.Line(static_cast<Single>(ends.x1 - by), static_cast<Single>(ends.y1 - by),
              static_cast<Single>(ends.x2 - by), static_cast<Single>(ends.y2 - by), kBlack);
}

TEST(Lines_, AreTheSameInEitherDirectionAndUndoThemselvesWhenInverting) {
  ForRandomLines(300, 40, [](const Ends& ends, int width) {
    Sheet canvas(40, 40);
    canvas.SetDrawWidth(width);
    canvas.SetDrawMode(kDrawInvert);
    const Bitmap blank = canvas.Image();
    DrawLine(canvas, ends);
    Sheet copied(40, 40);
    copied.SetDrawWidth(width);
    DrawLine(copied, ends);
    EXPECT_TRUE(canvas.Image() == copied.Image());  // no pixel twice
    DrawLine(canvas, {ends.x2, ends.y2, ends.x1, ends.y1});
    EXPECT_TRUE(canvas.Image() == blank);
  });
}

TEST(Lines_, ClippingEqualsCropping) {
  constexpr int kCut = 30, kSide = 20;
  ForRandomLines(300, 80, [](const Ends& ends, int width) {
    Sheet large(100, 100), small(kSide, kSide), cropped(kSide, kSide);
    large.SetDrawWidth(width);
    small.SetDrawWidth(width);
    DrawLine(large, ends);
    DrawLine(small, ends, kCut);
    cropped.BitBlt(0, 0, kSide, kSide, large, kCut, kCut);
    EXPECT_TRUE(small.Image() == cropped.Image());
  });
}

/// Whether a pixel lies within half the width of the segment, by the distance itself, everything doubled.
bool IsWithin(const Ends& ends, int width, int x, int y) {
  const int64_t shift = width % 2 == 0 ? 1 : 0;
  const int64_t px = 2 * (x - ends.x1) + shift, py = 2 * (y - ends.y1) + shift;
  const int64_t dx = 2 * (ends.x2 - ends.x1), dy = 2 * (ends.y2 - ends.y1);
  const int64_t along = px * dx + py * dy, length2 = dx * dx + dy * dy, reach2 = int64_t{width} * width;
  if (along <= 0) return px * px + py * py <= reach2;
  if (along >= length2) return (px - dx) * (px - dx) + (py - dy) * (py - dy) <= reach2;
  const int64_t cross = px * dy - py * dx;
  return cross * cross <= reach2 * length2;
}

TEST(WideLine, HoldsThePixelsWithinHalfItsWidth) {
  ForRandomLines(300, 40, [](const Ends& ends, int width) {
    if (width == 1) return;
    Sheet canvas(40, 40);
    canvas.SetDrawWidth(width);
    DrawLine(canvas, ends);
    for (int y = 0; y < 40; ++y) {
      for (int x = 0; x < 40; ++x) {
        ASSERT_EQ(canvas.GetPixel(x, y) == kBlack, IsWithin(ends, width, x, y))
            << x << ' ' << y << ' ' << width;
      }
    }
  });
}

/// The largest that a Single holds below 2^31.
constexpr Single kFar = 2147483520.0f;

TEST(FarLines, CrossTheSurfaceWhereTheEndlessLineDoes) {
  EXPECT_EQ(LineText(1, -kFar, 2, kFar, 2, 3, 4), (Lines{"...", "...", "###", "..."}));
  EXPECT_EQ(LineText(1, -kFar, -kFar, kFar, kFar, 3, 3), (Lines{"#..", ".#.", "..#"}));
  EXPECT_EQ(LineText(3, kFar, kFar, -kFar, -kFar, 4, 4), (Lines{"###.", "####", "####", ".###"}));
  EXPECT_EQ(LineText(2, 1, -kFar, 1, kFar, 4, 2), (Lines{"##..", "##.."}));
  EXPECT_EQ(LineText(32767, 0, kFar, kFar, kFar, 2, 2), (Lines{"..", ".."}));
}

TEST(FarLines, BeyondThirtyTwoBitsNothingHappens) {
  Sheet canvas(3, 3);
  const Single nan = std::numeric_limits<Single>::quiet_NaN();
  for (const Single far : {3e38f, -3e38f, 2147483648.0f, nan}) {
    canvas.Line(far, 0, 2, 2, kBlack);
    canvas.PSet(0, far, kBlack);
  }
  EXPECT_TRUE(canvas.Damage().IsEmpty());
  EXPECT_EQ(canvas.CurrentX(), 0);
}

TEST(CurrentPoint, FollowsTheLastEnd) {
  Sheet canvas(5, 2);
  canvas.PSet(1.25f, 0, kBlack);
  canvas.LineTo(3.75f, 0, kBlack);
  EXPECT_EQ(Text(canvas), (Lines{".####", "....."}));
  EXPECT_EQ(canvas.CurrentX(), 3.75f);
  EXPECT_EQ(canvas.Damage(), (Rect{1, 0, 5, 1}));
}

}  // namespace
}  // namespace zelvane
