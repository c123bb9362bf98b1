#include "tools/Sweep.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "raster/AsciiArt.h"
#include "tools/Ramp.h"

namespace zelvane {
namespace {

using art::Lines;
using art::Sheet;
using art::Text;

constexpr Color kFirst = RGB(250, 3, 40), kLast = RGB(0, 200, 140);

/// A dragged way and the picture it is dragged on; the picture measures `width` x `height`.
struct Way {
  double x1, y1, x2, y2;
  int width, height;
};

/// The end line through (x, y): at right angles to `angle` and long enough to span the picture from anywhere,
/// taken to the units of the view at the zoom and back.
EndLine EndLineAt(double x, double y, double reach, double angle, int zoom) {
  const double rad = angle * (3.14159265358979 / 180);
  const double s = std::sin(rad), c = std::cos(rad);
  const Single back = static_cast<Single>(1.0 / zoom);
  const auto there_and_back = [&](double position) { return back * static_cast<Single>(position * zoom); };
  return {there_and_back(x - s * reach), there_and_back(y - c * reach), there_and_back(x + s * reach),
          there_and_back(y + c * reach)};
}

std::vector<LineCopy> CopiesOf(const Way& way, int zoom) {
  double reach = 0;
  for (const int x : {0, way.width}) {
    for (const int y : {0, way.height}) reach = std::max(reach, std::hypot(x - way.x1, y - way.y1));
  }
  const double angle = AngleOfLine(way.x1, way.y1, way.x2, way.y2);
  return SweptCopies(EndLineAt(way.x1, way.y1, reach, angle, zoom),
                     EndLineAt(way.x2, way.y2, reach, angle, zoom), angle, way.width, kFirst, kLast);
}

void DrawOneByOne(Canvas& target, const std::vector<LineCopy>& copies) {
  for (const auto& [x1, y1, x2, y2, color] : copies) {
    target.Line(static_cast<Single>(x1), static_cast<Single>(y1), static_cast<Single>(x2),
                static_cast<Single>(y2), color);
  }
}

/// `left` and `top`: where the layer stands in the picture.
void ExpectSame(const Way& way, int zoom, int left = 0, int top = 0) {
  std::vector<LineCopy> copies = CopiesOf(way, zoom);
  for (LineCopy& copy : copies) copy.x1 -= left, copy.x2 -= left, copy.y1 -= top, copy.y2 -= top;
  Sheet ours(way.width, way.height), plain(way.width, way.height);
  ours.SetDrawWidth(3);
  plain.SetDrawWidth(3);
  DrawCopies(ours, copies);
  DrawOneByOne(plain, copies);
  ASSERT_TRUE(ours.Image() == plain.Image())
      << way.x1 << ' ' << way.y1 << ' ' << way.x2 << ' ' << way.y2 << ' ' << way.width << 'x' << way.height;
  EXPECT_EQ(ours.Damage().United(plain.Damage()), ours.Damage());
  EXPECT_EQ(ours.CurrentX(), plain.CurrentX());
  EXPECT_EQ(ours.CurrentY(), plain.CurrentY());
}

TEST(Angle, IsMeasuredFromTheRightAgainstTheClock) {
  EXPECT_EQ(AngleOfLine(0, 0, 5, 0), 0);
  EXPECT_EQ(AngleOfLine(0, 5, 0, 0), 90);
  EXPECT_EQ(AngleOfLine(5, 0, 0, 0), 180);
  EXPECT_EQ(AngleOfLine(0, 0, 0, 5), 270);
  EXPECT_EQ(AngleOfLine(3, 3, 3, 3), 90);
  EXPECT_NEAR(AngleOfLine(0, 5, 5, 0), 45, 1e-9);
  EXPECT_NEAR(AngleOfLine(5, 5, 0, 0), 135, 1e-9);
  EXPECT_NEAR(AngleOfLine(5, 0, 0, 5), 225, 1e-9);
  EXPECT_NEAR(AngleOfLine(0, 0, 5, 5), 315, 1e-9);
}

TEST(GradientColor_, RunsFromStartToEnd) {
  EXPECT_EQ(GradientColor(10, 0, kFirst, kLast), kFirst);
  EXPECT_EQ(GradientColor(10, 10, kFirst, kLast), kLast);
  EXPECT_EQ(GradientColor(2, 1, RGB(0, 3, 7), RGB(1, 6, 7)), RGB(0, 4, 7));  // 0.5 and 4.5 go to even
  EXPECT_EQ(GradientColor(0, 3, kFirst, kLast), kFirst);
  EXPECT_EQ(GradientColor(4, 9, RGB(0, 255, 0), RGB(255, 0, 0)), RGB(255, 0, 0));
}

TEST(Gradient, OfNoLengthIsALevelLine) {
  Sheet canvas(5, 5);
  canvas.SetDrawWidth(3);
  DrawCopies(canvas, SweptCopies({-8, 2, 12, 2}, {-8, 2, 12, 2}, 90, 5, RGB(255, 0, 0), kBlack));
  EXPECT_EQ(Text(canvas), (Lines{".....", "rrrrr", "rrrrr", "rrrrr", "....."}));
}

TEST(Gradient, ToTheRightHasUprightColumns) {
  Sheet canvas(9, 2);
  canvas.SetDrawWidth(3);
  DrawCopies(canvas, SweptCopies({3, -20, 3, 20}, {5, -20, 5, 20}, 0, 9, kBlack, RGB(2, 2, 2)));
  std::vector<int> reds;
  for (int x = 0; x < 9; ++x) reds.push_back(Split(canvas.GetPixel(x, 1)).red);
  // At 0.5 steps from 3 the copies stand at 3, 4 (3.5 to even) and 5; 4 and 4.5 fall on the one before.
  EXPECT_EQ(reds, (std::vector<int>{255, 255, 0, 0, 2, 2, 2, 255, 255}));
}

TEST(Gradient, PaintsWhatItsLinesPaintOneByOne) {
  for (int angle = 0; angle < 360; angle += 11) {
    const double rad = angle * 0.017453292519943295;
    for (const double length : {3.0, 40.0, 190.0}) {
      const double x = 75.99, y = 59.99;
      ExpectSame(
          {x, y, std::round(x + std::cos(rad) * length), std::round(y - std::sin(rad) * length), 150, 120},
          1 + angle % 8);
    }
  }
}

TEST(Gradient, FromAnywherePaintsTheSame) {
  std::mt19937 random(3);
  const auto within = [&](int low, int high) {
    return low + static_cast<int>(random() % static_cast<unsigned>(high - low));
  };
  for (int i = 0; i < 60; ++i) {
    const int width = within(1, 160), height = within(1, 160);
    const Way way{within(0, width) - 0.01,
                  within(0, height) - 0.01,
                  within(-width, 2 * width) * 1.0,
                  within(-height, 2 * height) * 1.0,
                  width,
                  height};
    ExpectSame(way, within(1, 9));
    ExpectSame(way, 1, within(-80, 80), within(-80, 80));
  }
}

TEST(Gradient, AlongTheEdgesAndDiagonalsPaintsTheSame) {
  for (const auto& [x, y] : {std::pair{0, 0}, {150, 0}, {0, 120}, {150, 120}, {75, 0}, {0, 60}}) {
    for (const auto& [x2, y2] : {std::pair{0, 0}, {149, 119}, {149, 0}, {0, 119}, {60, 75}, {120, -150}}) {
      ExpectSame({x - 0.01, y - 0.01, x2 * 1.0, y2 * 1.0, 150, 120}, 1);
    }
  }
}

}  // namespace
}  // namespace zelvane
