#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "raster/AsciiArt.h"

namespace zelvane::art {
namespace {

TEST(Line, CoversWhatItsWidthSays) {
  const struct {
    double width;
    Single x1, y1, x2, y2;
    Lines expected;
  } cases[] = {
      {1, 0, 0, 8, 4, {"#........", ".##......", "...##....", ".....##..", ".......##"}},
      {2, 2, 2, 2, 2, {"....", ".##.", ".##.", "...."}},
      {4, 2, 2, 2, 2, {".##..", "####.", "####.", ".##..", "....."}},
      // The endless line through far ends.
      {1, -kFar, 2, kFar, 2, {"...", "...", "###", "..."}},
      {1, -kFar, -kFar, kFar, kFar, {"#..", ".#.", "..#"}},
      {3, kFar, kFar, -kFar, -kFar, {"###.", "####", "####", ".###"}},
      {2, 1, -kFar, 1, kFar, {"##..", "##.."}},
      {32767, 0, kFar, kFar, kFar, {"..", ".."}},
  };
  for (const auto& c : cases) {
    Sheet canvas(static_cast<int>(c.expected[0].size()), static_cast<int>(c.expected.size()));
    canvas.SetDrawWidth(c.width);
    canvas.Line(c.x1, c.y1, c.x2, c.y2, kBlack);
    EXPECT_EQ(Text(canvas), c.expected);
  }
}

TEST(Line, BeyondThirtyTwoBitsDoesNothing) {
  Sheet canvas(3, 3);
  for (const Single far : {3e38f, -3e38f, 2147483648.0f, std::numeric_limits<Single>::quiet_NaN()}) {
    canvas.Line(far, 0, 2, 2, kBlack);
    canvas.PSet(0, far, kBlack);
  }
  EXPECT_TRUE(canvas.Damage().IsEmpty());
  EXPECT_EQ(canvas.CurrentX(), 0);
}

TEST(Line, ContinuesFromTheLastEnd) {
  Sheet canvas(5, 2);
  canvas.PSet(1.25f, 0, kBlack);
  canvas.LineTo(3.75f, 0, kBlack);
  EXPECT_EQ(Text(canvas), (Lines{".####", "....."}));
  EXPECT_EQ(canvas.CurrentX(), 3.75f);
  EXPECT_EQ(canvas.Damage(), (Rect{1, 0, 5, 1}));
}

TEST(Line, OfNoLengthCoversAsManyRowsAndColumnsAsItIsWide) {
  for (int width = 1; width <= 60; ++width) {
    Sheet canvas(80, 80);
    canvas.SetDrawWidth(width);
    canvas.PSet(40, 40, kBlack);
    const int before = 40 - width / 2;
    EXPECT_EQ(canvas.Damage(), (Rect{before, before, before + width, before + width}));
  }
}

struct Ends {
  int x1, y1, x2, y2;
};

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

/// A line of that width on a surface of that size whose corner stands at (cut, cut).
Bitmap Drawn(int side, int cut, const Ends& ends, int width, DrawModes mode = kDrawCopy) {
  Sheet canvas(side, side);
  canvas.SetDrawWidth(width);
  canvas.SetDrawMode(mode);
  const auto place = [cut](int at) { return static_cast<Single>(at - cut); };
  canvas.Line(place(ends.x1), place(ends.y1), place(ends.x2), place(ends.y2), kBlack);
  return canvas.Image();
}

TEST(Line, HoldsByItsRulesInEveryDirectionAndWhereverItIsCut) {
  std::mt19937 random(7);
  const auto any = [&] { return static_cast<int>(random() % 140) - 30; };
  for (int i = 0; i < 600; ++i) {
    const Ends ends{any(), any(), any(), any()};
    const int width = i % 13 + 1;
    const Bitmap line = Drawn(80, 0, ends, width);
    EXPECT_TRUE(line == Drawn(80, 0, {ends.x2, ends.y2, ends.x1, ends.y1}, width));
    EXPECT_TRUE(line == Drawn(80, 0, ends, width, kDrawInvert)) << "a pixel is drawn twice";
    const Bitmap part = Drawn(20, 30, ends, width);
    for (int y = 0; y < 80; ++y) {
      ASSERT_TRUE(y >= 20 || std::equal(part.Row(y), part.Row(y) + 20, line.Row(30 + y) + 30));
      for (int x = 0; x < 80 && width > 1; ++x)
        ASSERT_EQ(ToColor(line.Row(y)[x]) == kBlack, IsWithin(ends, width, x, y)) << x << ' ' << y;
    }
  }
}

}  // namespace
}  // namespace zelvane::art
