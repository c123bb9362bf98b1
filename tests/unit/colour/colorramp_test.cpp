#include "colour/ColorRamp.h"

#include <gtest/gtest.h>

#include <vector>

namespace zelvane {
namespace {

class Ramp : public Canvas {
 public:
  Ramp(int width, int height, Color left, Color right) {
    Resize(width, height);
    PaintRamp(*this, left, right);
  }
  std::vector<int> Reds(int y = 0) const {
    std::vector<int> reds;
    for (int x = 0; x < ScaleWidth(); ++x) reds.push_back(Split(GetPixel(x, y)).red);
    return reds;
  }
};

TEST(ColorRamp, ColumnZeroCarriesAStepAndTheLastColumnTheEnd) {
  EXPECT_EQ(Ramp(4, 9, RGB(0, 0, 0), RGB(100, 0, 0)).Reds(), (std::vector{25, 50, 75, 100}));
  EXPECT_EQ(Ramp(4, 9, RGB(100, 0, 0), RGB(0, 0, 0)).Reds(), (std::vector{75, 50, 25, 0}));
  const Ramp both(2, 9, RGB(255, 0, 10), RGB(0, 255, 20));
  EXPECT_EQ(both.GetPixel(1, 0), RGB(0, 255, 20));
}

TEST(ColorRamp, RoundsHalvesToEvenWithoutDrift) {
  EXPECT_EQ(Ramp(4, 1, RGB(0, 0, 0), RGB(2, 0, 0)).Reds(), (std::vector{0, 1, 2, 2}));
  const std::vector<int> bar = Ramp(101, 9, RGB(0, 0, 0), RGB(255, 0, 0)).Reds();
  EXPECT_EQ(bar[0], 3);
  EXPECT_EQ(bar[49], 126);
  EXPECT_EQ(bar[100], 255);
}

TEST(ColorRamp, EqualEndsAreFlatAndOnlyTheTopIsCovered) {
  const Ramp flat(5, 30, RGB(7, 8, 9), RGB(7, 8, 9));
  for (int x = 0; x < 5; ++x) EXPECT_EQ(flat.GetPixel(x, 20), RGB(7, 8, 9));
  EXPECT_EQ(flat.GetPixel(2, 21), kWhite);
  EXPECT_EQ(Ramp(0, 9, kBlack, kWhite).ScaleWidth(), 0);
}

}  // namespace
}  // namespace zelvane
