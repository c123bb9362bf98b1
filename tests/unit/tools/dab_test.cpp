#include "tools/Dab.h"

#include <gtest/gtest.h>

#include "tools/PlainDabs.h"

namespace zelvane {
namespace {

using art::Sheet;
using plain::Noise;

constexpr double kPressures[] = {0, 37.4, 50, 99.5, 100};
constexpr Color kInk = RGB(200, 30, 100);

/// One dab of ours and one of the plain kind on equal surfaces.
template <class Ours, class Plain>
void ExpectSame(int width, int height, int seed, Ours ours, Plain plain) {
  Noise a(width, height, static_cast<unsigned>(seed)), b(width, height, static_cast<unsigned>(seed));
  ours(a);
  plain(b);
  ASSERT_TRUE(a.Image() == b.Image());
  const Rect seen = b.Damage().United(a.Damage());
  EXPECT_EQ(seen, a.Damage());  // whatever the plain dab touched is shown
}

/// Calls `check` with all sizes, each in the middle of a surface and with parts beyond each of its edges.
template <class Check>
void ForDabs(Check check) {
  for (int size = 0; size <= 100; size += size < 12 ? 1 : 22) {
    const DabSize dab = DabSizeOf(size);
    const int side = 2 * size + 5, near = size / 3, far = side - 1 - near;
    check(dab, side, side / 2, side / 2);
    for (const auto& [x, y] : {std::pair{near, near}, {far, near}, {near, far}, {far, far}})
      check(dab, side, x, y);
    for (const int x : {size, size + 1, side - size - 1, side - size}) {  // the rim at an edge
      check(dab, side, x, side / 2);
      check(dab, side, side / 2, x);
    }
    check(dab, side, -size, side / 2);
    check(dab, side, side / 2, side + size - 1);
    check(dab, 3, 1, 1);
  }
}

TEST(DabSize_, RoundsTheOptionAndItsHalfToEven) {
  EXPECT_EQ(DabSizeOf(1).Steps, 0);
  EXPECT_EQ(DabSizeOf(3).Steps, 2);
  EXPECT_EQ(DabSizeOf(5).Steps, 2);
  EXPECT_EQ(DabSizeOf(10).Steps, 5);
  EXPECT_EQ(DabSizeOf(2.5).Size, 2);
  EXPECT_EQ(DabSizeOf(1e12).Steps, 0);
}

TEST(Spray, PaintsWhatThePlainRingsPaint) {
  ForDabs([](DabSize size, int side, int x, int y) {
    for (const double pressure : kPressures) {
      ExpectSame(
          side, side, size.Size,
          [&](Canvas& c) {
            SprayDab(c, static_cast<Single>(x), static_cast<Single>(y), size, kInk, pressure);
          },
          [&](Canvas& c) { plain::Soft(c, x, y, size, kInk, 10, pressure / 10); });
    }
  });
}

TEST(Brighten, PaintsWhatThePlainRingsPaint) {
  ForDabs([](DabSize size, int side, int x, int y) {
    for (const double pressure : kPressures) {
      const bool darken = x > y;
      ExpectSame(
          side, side, size.Size,
          [&](Canvas& c) {
            BrightenDab(c, static_cast<Single>(x), static_cast<Single>(y), size, darken, pressure);
          },
          [&](Canvas& c) { plain::Soft(c, x, y, size, darken ? kBlack : kWhite, 100, pressure); });
    }
  });
}

TEST(Blur, PaintsWhatThePlainRingsPaint) {
  ForDabs([](DabSize size, int side, int x, int y) {
    for (const int height : {side, 1, 2}) {
      ExpectSame(
          side, height, size.Size,
          [&](Canvas& c) { BlurDab(c, static_cast<Single>(x), static_cast<Single>(y), size); },
          [&](Canvas& c) { plain::Blur(c, x, y, size); });
    }
  });
}

/// What one dab of size 10 makes of the middle of a flat surface.
template <class Dab>
int RedInTheMiddle(Color ground, Dab dab) {
  Sheet canvas(41, 41);
  canvas.FilledBox(0, 0, 40, 40, ground);
  dab(canvas);
  EXPECT_EQ(canvas.GetPixel(20, 10), ground);  // the rim stays
  return Split(canvas.GetPixel(20, 20)).red;
}

TEST(SoftDabs, AreStrongestInTheMiddle) {
  const DabSize size = DabSizeOf(10);
  const auto spray = [&](double pressure) {
    return RedInTheMiddle(kWhite, [&](Canvas& c) { SprayDab(c, 20, 20, size, kBlack, pressure); });
  };
  EXPECT_EQ(spray(100), 51);
  EXPECT_EQ(spray(50), 221);
  EXPECT_EQ(spray(0), 236);  // pressure 0 still paints
  EXPECT_EQ(RedInTheMiddle(kBlack, [&](Canvas& c) { BrightenDab(c, 20, 20, size, false, 100); }), 204);
  EXPECT_EQ(RedInTheMiddle(kWhite, [&](Canvas& c) { BrightenDab(c, 20, 20, size, true, 100); }), 51);
  EXPECT_EQ(RedInTheMiddle(kWhite, [&](Canvas& c) { BrightenDab(c, 20, 20, size, false, 100); }), 255);
}

TEST(Dabs, OfNoUseLeaveTheSurface) {
  Noise canvas(30, 30, 1);
  const Bitmap before = canvas.Image();
  const Single beyond = 3e9F;
  for (const DabSize size : {DabSizeOf(1), DabSizeOf(0), DabSizeOf(-7), DabSizeOf(5000)}) {
    SprayDab(canvas, 15, 15, size, kInk, 100);
    BrightenDab(canvas, 15, 15, size, false, 100);
    BlurDab(canvas, 15, 15, size);
  }
  SprayDab(canvas, 15, 15, DabSizeOf(2), kInk, 100);    // the one ring is the rim
  SprayDab(canvas, 15, 15, DabSizeOf(10), kInk, 110);   // no way left to go
  SprayDab(canvas, 15, 15, DabSizeOf(10), kInk, 1e12);  // nor here
  SprayDab(canvas, beyond, 15, DabSizeOf(10), kInk, 100);
  BlurDab(canvas, 15, -beyond, DabSizeOf(10));
  EXPECT_TRUE(canvas.Image() == before);
  Canvas nothing;
  SprayDab(nothing, 0, 0, DabSizeOf(10), kInk, 100);
  BlurDab(nothing, 0, 0, DabSizeOf(10));
  EXPECT_TRUE(nothing.Image().IsEmpty());
}

}  // namespace
}  // namespace zelvane
