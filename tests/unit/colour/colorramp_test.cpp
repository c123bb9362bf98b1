#include "colour/ColorRamp.h"

#include <gtest/gtest.h>

#include <vector>

namespace zelvane {
namespace {

struct Ramp : Canvas {
  Ramp(int width, int height, Color left, Color right) {
    Resize(width, height);
    PaintRamp(*this, left, right);
  }
};

std::vector<int> Reds(int width, int first, int last) {
  const Ramp ramp(width, 9, RGB(first, 0, 0), RGB(last, 0, 0));
  std::vector<int> reds;
  for (int x = 0; x < width; ++x) reds.push_back(Split(ramp.GetPixel(x, 8)).red);
  return reds;
}

TEST(ColorRamp, StartsAStepAwayAndEndsAtTheEndRoundingHalvesToEven) {
  EXPECT_EQ(Reds(4, 0, 100), (std::vector{25, 50, 75, 100}));
  EXPECT_EQ(Reds(4, 100, 0), (std::vector{75, 50, 25, 0}));
  EXPECT_EQ(Reds(4, 0, 2), (std::vector{0, 1, 2, 2}));
  const std::vector<int> bar = Reds(101, 0, 255);
  EXPECT_EQ((std::vector{bar[0], bar[49], bar[100]}), (std::vector{3, 126, 255})) << "without drift";
  EXPECT_EQ(Ramp(2, 9, RGB(255, 0, 10), RGB(0, 255, 20)).GetPixel(1, 0), RGB(0, 255, 20));
}

TEST(ColorRamp, EqualEndsAreFlatAndOnlyTheTopIsCovered) {
  const Ramp flat(5, 30, RGB(7, 8, 9), RGB(7, 8, 9));
  for (int x = 0; x < 5; ++x) EXPECT_EQ(flat.GetPixel(x, 20), RGB(7, 8, 9));
  EXPECT_EQ(flat.GetPixel(2, 21), kWhite);
  EXPECT_EQ(Ramp(0, 9, kBlack, kWhite).ScaleWidth(), 0);
}

}  // namespace
}  // namespace zelvane
