#include "tools/Sweep.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <tuple>

#include "raster/AsciiArt.h"
#include "tools/Ramp.h"

namespace zelvane {
namespace {

using art::Sheet;

constexpr Color kFirst = RGB(250, 3, 40), kLast = RGB(0, 200, 140);
constexpr double kDegree = 3.14159265358979 / 180;

/// A dragged way and the picture it is dragged on; the picture measures `width` x `height`.
struct Way {
  double x1, y1, x2, y2;
  int width, height, zoom = 1;

  double Angle() const { return AngleOfLine(x1, y1, x2, y2); }
  /// The line through (x, y): at right angles to the way and long enough to span the picture from its start,
  /// taken to the units of the view and back.
  EndLine Across(double x, double y) const {
    double reach = 0;
    for (const int column : {0, width})
      for (const int row : {0, height}) reach = std::max(reach, std::hypot(column - x1, row - y1));
    const double s = std::sin(Angle() * kDegree) * reach, c = std::cos(Angle() * kDegree) * reach;
    const Single back = static_cast<Single>(1.0 / zoom);
    const auto seen = [&](double position) { return back * static_cast<Single>(position * zoom); };
    return {seen(x - s), seen(y - c), seen(x + s), seen(y + c)};
  }
  std::vector<LineCopy> Copies() const {
    return SweptCopies(Across(x1, y1), Across(x2, y2), Angle(), width, kFirst, kLast);
  }
};

template <class Check>
void ForWays(Check check) {
  for (int angle = 0; angle < 360; angle += 11) {
    for (const double length : {0.0, 3.0, 40.0, 190.0}) {
      const double x = 75.99, y = 59.99, turn = angle * kDegree;
      check({x, y, std::round(x + std::cos(turn) * length), std::round(y - std::sin(turn) * length), 150, 120,
             1 + angle % 8});
    }
  }
  std::mt19937 random(3);
  const auto within = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
  for (int i = 0; i < 100; ++i) {
    const int width = within(1, 160), height = within(1, 160), zoom = within(1, 8);
    const double x = within(0, width) - 0.01, y = within(0, height) - 0.01;
    check({x, y, x + within(-width, width), y + within(-height, height), width, height, zoom});
  }
}

/// Half a pixel after half a pixel, with every copy that there is to skip looked at on its own.
std::vector<LineCopy> StepByStep(const Way& way) {
  const EndLine from = way.Across(way.x1, way.y1), to = way.Across(way.x2, way.y2);
  const double length = std::hypot(double{to.x1} - from.x1, double{to.y1} - from.y1);
  std::vector<LineCopy> copies;
  LineCopy last{};
  for (int step = 0; step <= 2 * length; ++step) {
    const double d = step / 2.0, turn = way.Angle() * kDegree, u = std::cos(turn) * d,
                 v = -std::sin(turn) * d;
    const auto whole = [](double value) { return static_cast<int32_t>(std::nearbyint(value)); };
    LineCopy copy{whole(from.x1 + u), whole(from.y1 + v), whole(from.X2 + u), whole(from.y2 + v), {}};
    if (copy.x1 == last.x1 && copy.y1 == last.y1) continue;
    if (copy.x1 < -4 && copy.x2 < -4) continue;
    if (copy.x1 > way.width + 4 && copy.x2 > way.width + 4) continue;
    copy.color = GradientColor(whole(length), whole(d), kFirst, kLast);
    copies.push_back(last = copy);
  }
  return copies;
}

/// Draws the copies on a layer at (left, top) in both ways.
void ExpectDrawnAsOneByOne(const Way& way, int left, int top) {
  std::vector<LineCopy> copies = way.Copies();
  for (LineCopy& copy : copies) copy.x1 -= left, copy.x2 -= left, copy.y1 -= top, copy.y2 -= top;
  Sheet ours(way.width, way.height), plain(way.width, way.height);
  ours.SetDrawWidth(3), plain.SetDrawWidth(3);
  DrawCopies(ours, copies);
  for (const auto& [x1, y1, x2, y2, color] : copies)
    plain.Line(Single(x1), Single(y1), Single(x2), Single(y2), color);
  ASSERT_TRUE(ours.Image() == plain.Image())
      << way.x1 << ' ' << way.y1 << ' ' << way.x2 << ' ' << way.y2 << ' ' << way.width << 'x' << way.height;
  EXPECT_EQ(ours.Damage().United(plain.Damage()), ours.Damage());
  EXPECT_EQ(std::pair(ours.CurrentX(), ours.CurrentY()), std::pair(plain.CurrentX(), plain.CurrentY()));
}

TEST(Gradient, RunsFromStartToEnd) {
  EXPECT_EQ(GradientColor(10, 0, kFirst, kLast), kFirst);
  EXPECT_EQ(GradientColor(10, 10, kFirst, kLast), kLast);
  EXPECT_EQ(GradientColor(2, 1, RGB(0, 3, 7), RGB(1, 6, 7)), RGB(0, 4, 7)) << "0.5 and 4.5 go to even";
  EXPECT_EQ(GradientColor(0, 3, kFirst, kLast), kFirst);
  EXPECT_EQ(GradientColor(4, 9, RGB(0, 255, 0), RGB(255, 0, 0)), RGB(255, 0, 0));
}

TEST(Gradient, SweepsInHalfPixelsAndSparesWhatIsNotSeen) {
  const auto same = [](const LineCopy& a, const LineCopy& b) {
    return std::tie(a.x1, a.y1, a.x2, a.y2, a.color) == std::tie(b.x1, b.y1, b.x2, b.y2, b.color);
  };
  ForWays([&](const Way& way) {
    const std::vector<LineCopy> ours = way.Copies(), plain = StepByStep(way);
    ASSERT_TRUE(std::equal(ours.begin(), ours.end(), plain.begin(), plain.end(), same))
        << way.x1 << ' ' << way.y1 << ' ' << way.x2 << ' ' << way.y2;
  });
}

TEST(Gradient, PaintsWhatItsLinesPaintOneByOne) {
  int shift = -80;
  ForWays([&](const Way& way) {
    ExpectDrawnAsOneByOne(way, 0, 0);
    ExpectDrawnAsOneByOne(way, shift, -shift / 2);
    shift = shift < 80 ? shift + 7 : -80;
  });
}

}  // namespace
}  // namespace zelvane
