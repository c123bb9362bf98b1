#include <gtest/gtest.h>
#include <sys/resource.h>

#include "raster/AsciiArt.h"

namespace zelvane::art {
namespace {

TEST(Colours, SplitAndPixelsKeepTheirChannels) {
  EXPECT_EQ(Split(RGB(300, -4, 7)), (Channels{255, 0, 7}));
  EXPECT_EQ(Split(kNoColor), (Channels{-1, 0, 0}));
  EXPECT_EQ(ToPixel(RGB(0x12, 0x34, 0x56)), 0xFF123456u);
  EXPECT_EQ(ToColor(0xFF123456u), RGB(0x12, 0x34, 0x56));
}

TEST(Bitmaps, CopiesPartOnlyWhenWritten) {
  Bitmap a(300, 400, 0xFF000001);
  Bitmap b = a;
  EXPECT_EQ(a.Row(0), b.Row(0));
  b.WritableRow(3)[7] = 0xFF000002;
  EXPECT_EQ(a.Row(3)[7], 0xFF000001u);
  EXPECT_EQ(b.Row(399)[299], 0xFF000001u);
  EXPECT_FALSE(a == b);
  const Bitmap moved = std::move(b);
  EXPECT_TRUE(b.IsEmpty());
  EXPECT_EQ(moved.Row(3)[7], 0xFF000002u);
}

TEST(CanvasSize, ResizeKeepsTheCommonPart) {
  Sheet canvas(3, 2);
  canvas.SetBackColor(kRed);
  canvas.SetPixelV(1, 1, kBlack);
  canvas.Resize(4, 3);
  EXPECT_EQ(Text(canvas), (Lines{"rrrr", "r#rr", "rrrr"}));
  EXPECT_EQ(canvas.TakeDamage(), (Rect{0, 0, 4, 3}));
  canvas.Resize(4, 3);
  EXPECT_TRUE(canvas.Damage().IsEmpty());
  canvas.Resize(2, 2);
  EXPECT_EQ(Text(canvas), (Lines{"rr", "r#"}));
  canvas.Resize(-1, 5);
  EXPECT_TRUE(canvas.Image().IsEmpty());
}

TEST(CanvasSize, TooLargeLeavesTheSurfaceAsItWas) {
  Sheet canvas({"#.", ".."});
  EXPECT_THROW(canvas.Resize(32768, 1), SurfaceTooLarge);
  EXPECT_THROW(canvas.Resize(1, 32768), SurfaceTooLarge);
#ifndef __SANITIZE_ADDRESS__  // which needs far more address space for itself
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_AS, &limit), 0);
  rlimit lower = limit;
  lower.rlim_cur = rlim_t{1} << 31;  // half of what 32,767 x 32,767 pixels take
  ASSERT_EQ(setrlimit(RLIMIT_AS, &lower), 0);
  EXPECT_THROW(canvas.Resize(kLargestSide, kLargestSide), SurfaceTooLarge);
  ASSERT_EQ(setrlimit(RLIMIT_AS, &limit), 0);
#endif
  EXPECT_EQ(Text(canvas), (Lines{"#.", ".."}));
  EXPECT_TRUE(canvas.Damage().IsEmpty());
}

TEST(CanvasSize, ExchangeSwapsOrTradesTheCommonPart) {
  Sheet a({"#.", ".."}), b(2, 2), c({".bg"});
  const Pixel* const pixels = a.Image().Row(0);
  a.ExchangePixels(b);
  EXPECT_EQ(b.Image().Row(0), pixels);
  EXPECT_EQ(a.Damage(), a.Image().Bounds());
  c.ExchangePixels(b);
  EXPECT_EQ(Text(c), (Lines{"#.g"}));
  EXPECT_EQ(Text(b), (Lines{".b", ".."}));
}

TEST(CanvasPixels, BeyondTheSurfaceNothingIsReadOrWritten) {
  Sheet canvas(2, 2);
  for (const int32_t far : {kMin, -1, 2, kMax}) {
    canvas.SetPixelV(far, 0, kBlack);
    canvas.SetPixelV(0, far, kBlack);
    EXPECT_EQ(canvas.GetPixel(far, 1), kNoColor);
    EXPECT_EQ(canvas.GetPixel(1, far), kNoColor);
  }
  EXPECT_EQ(canvas.Point(3e38f, 0), kNoColor);
  EXPECT_EQ(canvas.Point(1.5f, 0), kNoColor);  // halves to even: column 2
  EXPECT_EQ(canvas.Point(0.5f, 1), kWhite);
  EXPECT_EQ(Text(canvas), (Lines{"..", ".."}));
  EXPECT_TRUE(canvas.Damage().IsEmpty());
}

TEST(CanvasPixels, ClsLeavesSharedPixelsAlone) {
  Sheet canvas({"#."});
  const Bitmap before = canvas.Image();
  canvas.PSet(1, 0, kBlack);
  canvas.Cls();
  EXPECT_EQ(Text(canvas), (Lines{".."}));
  EXPECT_EQ(canvas.CurrentX(), 0);
  EXPECT_EQ(ToColor(before.Row(0)[0]), kBlack);
}

}  // namespace
}  // namespace zelvane::art
