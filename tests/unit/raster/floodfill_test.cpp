#include <gtest/gtest.h>

#include <random>

#include "raster/AsciiArt.h"

namespace zelvane::art {
namespace {

TEST(FloodFill, StopsAtCornersAndPaintsIntoPockets) {
  Sheet canvas({
      "..#....",
      ".##.##.",
      "#...#..",
      "..###.#",
      "......#",
  });
  canvas.SetFillColor(kRed);
  canvas.SetDrawMode(kDrawInvert);
  canvas.ExtFloodFill(1, 2, kWhite);
  EXPECT_EQ(Text(canvas), (Lines{
                              "..#rrrr",
                              ".##r##r",
                              "#rrr#rr",
                              "rr###r#",
                              "rrrrrr#",
                          }));
  EXPECT_EQ(canvas.Damage(), (Rect{0, 0, 7, 5}));
}

TEST(FloodFill, LeavesEverythingWhereThereIsNothingToFill) {
  Sheet canvas(3, 3);
  const std::tuple<int, int, Color, Color, FillStyles> cases[] = {
      {0, 0, kBlack, kRed, kFillSolid},   {0, 0, kNoColor, kRed, kFillSolid},
      {-1, 0, kWhite, kRed, kFillSolid},  {0, 3, kWhite, kRed, kFillSolid},
      {0, 0, kWhite, kWhite, kFillSolid}, {0, 0, kWhite, kRed, kFillTransparent}};
  for (const auto& [x, y, area, paint, style] : cases) {
    canvas.SetFillColor(paint), canvas.SetFillStyle(style);
    canvas.ExtFloodFill(x, y, area);
  }
  EXPECT_EQ(Text(canvas), (Lines{"...", "...", "..."}));
  EXPECT_TRUE(canvas.Damage().IsEmpty());
}

/// Pixel by pixel, each put down to be looked at once.
Rect PlainFill(Bitmap& bitmap, int x, int y, Pixel area, Pixel paint) {
  Rect touched;
  std::vector<std::pair<int, int>> pending{{x, y}};
  while (!pending.empty()) {
    const auto [px, py] = pending.back();
    pending.pop_back();
    if (px < 0 || py < 0 || px >= bitmap.Width() || py >= bitmap.Height() || bitmap.Row(py)[px] != area)
      continue;
    bitmap.WritableRow(py)[px] = paint;
    touched = touched.United({px, py, px + 1, py + 1});
    for (const int step : {-1, 1}) {
      pending.emplace_back(px + step, py);
      pending.emplace_back(px, py + step);
    }
  }
  return touched;
}

void ExpectPlainFill(Sheet& canvas, int x, int y) {
  canvas.TakeDamage();
  canvas.SetFillColor(kRed);
  Bitmap expected = canvas.Image();
  const Color area = canvas.GetPixel(x, y);
  canvas.ExtFloodFill(x, y, area);
  EXPECT_EQ(canvas.Damage(), PlainFill(expected, x, y, ToPixel(area), ToPixel(kRed)));
  EXPECT_TRUE(canvas.Image() == expected);
}

TEST(FloodFill, MatchesAPlainFillOnNoiseOfEveryDensity) {
  std::mt19937 random(5);
  for (int i = 0; i < 400; ++i) {
    const int width = static_cast<int>(random() % 150) + 1, height = static_cast<int>(random() % 80) + 1;
    const unsigned walls = random() % 50;
    Sheet canvas(width, height);
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x)
        if (random() % 100 < walls) canvas.SetPixelV(x, y, kBlack);
    ExpectPlainFill(canvas, width / 2, height / 3);
  }
}

/// A corridor one pixel wide that winds through the whole surface, first along rows, then along columns.
TEST(FloodFill, FollowsASerpentineToItsEnd) {
  constexpr int kSide = 201;
  for (const bool across : {true, false}) {
    Sheet canvas(kSide, kSide);
    for (int wall = 1; wall < kSide; wall += 2)
      for (int i = 0; i < kSide; ++i)
        if (i != (wall % 4 == 1 ? kSide - 1 : 0))
          canvas.SetPixelV(across ? i : wall, across ? wall : i, kBlack);
    ExpectPlainFill(canvas, 0, 0);
  }
}

}  // namespace
}  // namespace zelvane::art
