#include <gtest/gtest.h>

#include "raster/AsciiArt.h"

namespace zelvane::art {
namespace {

TEST(Box, CoversBothCornersInAnyOrder) {
  for (const auto& [x1, x2] : {std::pair{1, 3}, {3, 1}}) {
    Sheet canvas(5, 5);
    canvas.SetFillColor(kRed);
    canvas.Box(static_cast<Single>(x1), 1, static_cast<Single>(x2), 3, kBlack);
    EXPECT_EQ(Text(canvas), (Lines{".....", ".###.", ".#r#.", ".###.", "....."}));
    EXPECT_EQ(canvas.Damage(), (Rect{1, 1, 4, 4}));
    canvas.SetDrawWidth(9);  // which a filled one pays no heed to
    canvas.FilledBox(static_cast<Single>(x1), 1, static_cast<Single>(x2), 3, kBlue);
    EXPECT_EQ(Text(canvas), (Lines{".....", ".bbb.", ".bbb.", ".bbb.", "....."}));
  }
}

TEST(Box, IsTheUnionOfItsEdgesAtEveryWidth) {
  for (int width = 1; width <= 14; ++width) {
    Sheet box(40, 40), lines(40, 40);
    box.SetDrawWidth(width);
    lines.SetDrawWidth(width);
    box.SetFillStyle(kFillTransparent);
    box.Box(9, 12, 30, 26, kBlack);
    lines.PSet(9, 12, kBlack);
    for (const auto& [x, y] : {std::pair{30, 12}, {30, 26}, {9, 26}, {9, 12}})
      lines.LineTo(static_cast<Single>(x), static_cast<Single>(y), kBlack);
    EXPECT_TRUE(box.Image() == lines.Image()) << width;
  }
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
    EXPECT_EQ(std::pair(canvas.Damage().Width(), canvas.Damage().Height()), std::pair(width, height));
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

/// The box of (10, 10) and (10 + width, 51 - width) with such corners, on a surface of 60 by 60.
Lines RoundBox(int width, int corner_width, int corner_height, int pen, DrawModes mode) {
  Sheet canvas(60, 60);
  canvas.SetFillColor(mode == kDrawInvert ? kBlack : kRed);
  canvas.SetDrawWidth(pen);
  canvas.SetDrawMode(mode);
  canvas.RoundRect(10, 10, 10 + width, 51 - width, corner_width, corner_height);
  return Text(canvas);
}

/// What is wrong with such a drawing, and with the same inverting, whose border has width `pen`.
std::string FaultOf(const Lines& lines, const Lines& inverted, int width, int pen) {
  // The first and the last column or row that is painted.
  const size_t first = 10 - static_cast<size_t>(pen / 2);
  const size_t right = static_cast<size_t>(9 + width + (pen - 1) / 2),
               bottom = static_cast<size_t>(50 - width + (pen - 1) / 2);
  for (size_t y = 0; y < 60; ++y) {
    for (size_t x = 0; x < 60; ++x) {
      const char here = lines[y][x];
      if ((here == '.') != (inverted[y][x] == '.')) return "a pixel is inverted twice or not";
      if (x < first || x > right || y < first || y > bottom) {
        if (here != '.') return "beyond its box";
      } else if (here != lines[y][first + right - x] || here != lines[first + bottom - y][x]) {
        return "not symmetrical";
      } else if (here == 'r') {
        for (char beside : {lines[y][x - 1], lines[y][x + 1], lines[y - 1][x], lines[y + 1][x]})
          if (beside == '.') return "an open border";
      }
    }
  }
  const auto touched = [](const std::string& line) { return line.find('#') != std::string::npos; };
  return touched(lines[first]) && touched(lines[bottom]) ? "" : "short of its box";
}

TEST(RoundRect, IsClosedAndSymmetricalAndInvertsEachPixelOnce) {
  for (int width = 1; width <= 40; width += 3)
    for (const auto& [corner_width, corner_height] : {std::pair{0, 0}, {7, 4}, {width, 3}, {99, 99}})
      for (const int pen : {1, 2, 3, 6})
        EXPECT_EQ(FaultOf(RoundBox(width, corner_width, corner_height, pen, kDrawCopy),
                          RoundBox(width, corner_width, corner_height, pen, kDrawInvert), width, pen),
                  "")
            << width << ' ' << corner_width << ' ' << pen;
}

TEST(FarShapes, FinishAndShowTheirCutOut) {
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
}  // namespace zelvane::art
