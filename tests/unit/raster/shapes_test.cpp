#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "raster/AsciiArt.h"

namespace zelvane {
namespace {

using art::Lines;
using art::Sheet;
using art::Text;

constexpr Color kRed = RGB(255, 0, 0);

TEST(Box, CoversBothCornersInAnyOrder) {
  const Lines expected{".....", ".###.", ".#r#.", ".###.", "....."};
  for (const bool swapped : {false, true}) {
    Sheet canvas(5, 5);
    canvas.SetFillColor(kRed);
    canvas.Box(swapped ? 3 : 1, 1, swapped ? 1 : 3, 3, kBlack);
    EXPECT_EQ(Text(canvas), expected);
    EXPECT_EQ(canvas.Damage(), (Rect{1, 1, 4, 4}));
  }
}

TEST(Box, IsTheUnionOfItsEdgesAtEveryWidth) {
  for (int width = 1; width <= 14; ++width) {
    Sheet box(40, 40), lines(40, 40);
    box.SetDrawWidth(width);
    lines.SetDrawWidth(width);
    box.SetFillStyle(kFillTransparent);
    box.Box(9, 12, 30, 26, kBlack);
    lines.Line(9, 12, 30, 12, kBlack);
    lines.LineTo(30, 26, kBlack);
    lines.LineTo(9, 26, kBlack);
    lines.LineTo(9, 12, kBlack);
    EXPECT_EQ(Text(box), Text(lines)) << width;
  }
}

TEST(FilledBox, HoldsBothCornersWhateverThePen) {
  Sheet canvas(4, 3);
  canvas.SetDrawWidth(9);
  canvas.FilledBox(2, 1, 1, 1, kRed);
  EXPECT_EQ(Text(canvas), (Lines{"....", ".rr.", "...."}));
}

TEST(Circle, IsThinRoundAndFilledUpToItsBorder) {
  Sheet canvas(9, 9);
  canvas.SetFillColor(kRed);
  canvas.Circle(4, 4, 4, kBlack);
  // Every row runs to the last pixel with its centre within 4.5 of the middle.
  EXPECT_EQ(Text(canvas), (Lines{
                              "..#####..",
                              ".#rrrrr#.",
                              "#rrrrrrr#",
                              "#rrrrrrr#",
                              "#rrrrrrr#",
                              "#rrrrrrr#",
                              "#rrrrrrr#",
                              ".#rrrrr#.",
                              "..#####..",
                          }));
  EXPECT_EQ(canvas.CurrentX(), 4);
}

TEST(Circle, AspectMeasuresHeightByWidth) {
  for (const auto& [aspect, width, height] :
       {std::tuple{0.5, 41, 21}, {1.0, 41, 41}, {4.0, 11, 41}, {0.0, 41, 1}}) {
    Sheet canvas(50, 50);
    canvas.Circle(25, 25, 20, kBlack, aspect);
    EXPECT_EQ(canvas.Damage().Width(), width);
    EXPECT_EQ(canvas.Damage().Height(), height);
  }
}

TEST(RoundRect, StopsShortOfRightAndBottom) {
  Sheet canvas(8, 7);
  canvas.SetFillColor(kRed);
  canvas.RoundRect(8, 6, 1, 0, -4, 4);
  // The corner ellipse of 4 x 4 loses its outermost pixel only.
  EXPECT_EQ(Text(canvas), (Lines{
                              "..#####.",
                              ".#rrrrr#",
                              ".#rrrrr#",
                              ".#rrrrr#",
                              ".#rrrrr#",
                              "..#####.",
                              "........",
                          }));
  canvas.TakeDamage();
  canvas.RoundRect(3, 3, 3, 9, 2, 2);
  EXPECT_TRUE(canvas.Damage().IsEmpty());
}

/// A drawing on a surface of 60 x 60 with the pen of that width.
Lines Drawn(int pen, int16_t mode, const std::function<void(Canvas&)>& draw) {
  Sheet canvas(60, 60);
  canvas.SetFillColor(mode == kDrawInvert ? kBlack : kRed);
  canvas.SetDrawWidth(pen);
  canvas.SetDrawMode(mode);
  draw(canvas);
  return Text(canvas);
}

struct Corner {
  int width, height;
};

template <class Check>
void ForRoundRects(Check check) {
  for (int size = 1; size <= 40; size += 3) {
    for (const Corner corner : {Corner{0, 0}, {7, 4}, {size, 3}, {99, 99}}) {
      for (const int pen : {1, 2, 3, 6}) {
        check(pen, [=](Canvas& canvas) {
          canvas.RoundRect(10, 10, 10 + size, 10 + 41 - size, corner.width, corner.height);
        });
      }
    }
  }
}

TEST(RoundRect, CoversItsBoxSymmetricallyAndInvertsEachPixelOnce) {
  ForRoundRects([](int pen, const std::function<void(Canvas&)>& draw) {
    const Lines lines = Drawn(pen, kDrawCopy, draw);
    Sheet canvas(60, 60);
    art::Draw(canvas, lines);
    const Lines inverted = Drawn(pen, kDrawInvert, draw);
    Rect box{60, 60, 0, 0};
    for (int y = 0; y < 60; ++y) {
      for (int x = 0; x < 60; ++x) {
        const bool painted = canvas.GetPixel(x, y) != kWhite;
        EXPECT_EQ(painted, inverted[static_cast<size_t>(y)][static_cast<size_t>(x)] == '#');
        if (painted) box = box.United({x, y, x + 1, y + 1});
      }
    }
    for (int y = box.top; y < box.bottom; ++y) {
      for (int x = box.left; x < box.right; ++x) {
        ASSERT_EQ(canvas.GetPixel(x, y), canvas.GetPixel(box.left + box.right - 1 - x, y));
        ASSERT_EQ(canvas.GetPixel(x, y), canvas.GetPixel(x, box.top + box.bottom - 1 - y));
      }
    }
  });
}

TEST(RoundRect, BorderClosesRoundTheInside) {
  ForRoundRects([](int pen, const std::function<void(Canvas&)>& draw) {
    const Lines lines = Drawn(pen, kDrawCopy, draw);
    for (size_t y = 1; y < 59; ++y) {
      for (size_t x = 1; x < 59; ++x) {
        if (lines[y][x] != 'r') continue;
        EXPECT_NE(lines[y][x - 1], '.');
        EXPECT_NE(lines[y][x + 1], '.');
        EXPECT_NE(lines[y - 1][x], '.');
        EXPECT_NE(lines[y + 1][x], '.');
      }
    }
  });
}

TEST(FarShapes, FinishAndShowTheirCutOut) {
  constexpr int32_t kMin = std::numeric_limits<int32_t>::min(), kMax = std::numeric_limits<int32_t>::max();
  constexpr Single kFar = 2147483520.0f;
  Sheet canvas(3, 2);
  canvas.SetFillColor(kRed);
  canvas.SetDrawWidth(32767);
  canvas.RoundRect(kMin, kMin, kMax, kMax, kMin, 5);
  EXPECT_EQ(Text(canvas), (Lines{"rrr", "rrr"}));
  canvas.SetDrawWidth(1);
  canvas.Box(1, -kFar, kFar, kFar, kBlack);
  EXPECT_EQ(Text(canvas), (Lines{"r#r", "r#r"}));
  canvas.FilledBox(kFar, kFar, 2, 1, kBlack);
  EXPECT_EQ(Text(canvas), (Lines{"r#r", "r##"}));
  canvas.SetFillStyle(kFillTransparent);
  canvas.TakeDamage();
  canvas.Circle(kFar, 0, 3e38f, kBlack);
  canvas.Circle(0, 0, -1, kBlack);
  canvas.Circle(-kFar, -kFar, kFar, kBlack);
  EXPECT_TRUE(canvas.Damage().IsEmpty());
}

}  // namespace
}  // namespace zelvane
