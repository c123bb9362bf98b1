#include "tools/Dab.h"

#include <gtest/gtest.h>

#include <tuple>

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
  for (const auto& [option, size, steps] :
       {std::tuple{1.0, 1, 0}, {3.0, 3, 2}, {5.0, 5, 2}, {10.0, 10, 5}, {2.5, 2, 1}, {1e12, 0, 0}}) {
    EXPECT_EQ(DabSizeOf(option).Size, size);
    EXPECT_EQ(DabSizeOf(option).Steps, steps);
  }
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

TEST(SoftDabs, PaintWhatThePlainRingsPaint) {
  ForDabs([](DabSize size, int side, int x, int y) {
    const auto column = static_cast<Single>(x), row = static_cast<Single>(y);
    const bool darken = x > y;
    for (const double pressure : kPressures) {
      ExpectSame(
          side, side, size.Size, [&](Canvas& c) { SprayDab(c, column, row, size, kInk, pressure); },
          [&](Canvas& c) { plain::Soft(c, x, y, size, kInk, 10, pressure / 10); });
      ExpectSame(
          side, side, size.Size, [&](Canvas& c) { BrightenDab(c, column, row, size, darken, pressure); },
          [&](Canvas& c) { plain::Soft(c, x, y, size, darken ? kBlack : kWhite, 100, pressure); });
    }
  });
}

TEST(SoftDabs, AreStrongestInTheMiddle) {
  /// What one dab of size 10 makes of the middle of a flat surface.
  const auto middle = [](Color ground, auto dab) {
    Sheet canvas(41, 41);
    canvas.FilledBox(0, 0, 40, 40, ground);
    dab(canvas, DabSizeOf(10));
    EXPECT_EQ(canvas.GetPixel(20, 10), ground) << "the rim stays";
    return Split(canvas.GetPixel(20, 20)).red;
  };
  for (const auto& [pressure, red] : {std::pair{100, 51}, {50, 221}, {0, 236}})
    EXPECT_EQ(middle(kWhite, [&](Canvas& c, DabSize size) { SprayDab(c, 20, 20, size, kBlack, pressure); }),
              red);
  EXPECT_EQ(middle(kBlack, [](Canvas& c, DabSize size) { BrightenDab(c, 20, 20, size, false, 100); }), 204);
  EXPECT_EQ(middle(kWhite, [](Canvas& c, DabSize size) { BrightenDab(c, 20, 20, size, true, 100); }), 51);
}

TEST(Dabs, OfNoUseLeaveTheSurface) {
  Noise canvas(30, 30, 1);
  const Bitmap before = canvas.Image();
  for (const double size : {1.0, 0.0, -7.0, 5000.0, 1e12}) {
    SprayDab(canvas, 15, 15, DabSizeOf(size), kInk, 100);
    BlurDab(canvas, 15, 15, DabSizeOf(size));
  }
  SprayDab(canvas, 15, 15, DabSizeOf(2), kInk, 100);    // the one ring is the rim
  SprayDab(canvas, 15, 15, DabSizeOf(10), kInk, 110);   // no way left to go
  SprayDab(canvas, 15, 15, DabSizeOf(10), kInk, 1e12);  // nor here
  SprayDab(canvas, 3e9F, 15, DabSizeOf(10), kInk, 100);
  BlurDab(canvas, 15, -3e9F, DabSizeOf(10));
  EXPECT_TRUE(canvas.Image() == before);
  Canvas nothing;
  BlurDab(nothing, 0, 0, DabSizeOf(10));
  EXPECT_TRUE(nothing.Image().IsEmpty());
}

}  // namespace
}  // namespace zelvane
