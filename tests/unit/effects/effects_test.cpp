#include "effects/Effects.h"

#include <gtest/gtest.h>

#include <cmath>

#include "effects/frame/CommandLine.h"
#include "effects/frame/Reduced.h"
#include "effects/pixels/Pixels.h"
#include "surface/raster/FailingStep.h"

namespace zelvane {
namespace {

/// A picture of every sort of place, larger than a band; sides that no tile divides.
Bitmap Sample(int width = 61, int height = 47) {
  Bitmap picture(width, height, kOpaque);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) picture.WritableRow(y)[x] = Packed(x * 4, 255 - y * 5, (x * y * 7) % 256);
  }
  return picture;
}

Bitmap Row(const std::vector<Pixel>& pixels) {
  Bitmap row(static_cast<int>(pixels.size()), 1, kOpaque);
  std::copy(pixels.begin(), pixels.end(), row.WritableRow(0));
  return row;
}

/// By the command line's words, as a script would.
Bitmap Applied(const Effect& effect, std::vector<std::string> settings, const Bitmap& picture) {
  settings.emplace_back("file");
  const Order order = ReadCommandLine(effect, settings);
  EXPECT_EQ(order.mistake, "");
  Work work;
  return effect.apply(picture, order.values, work);
}

double Mean(const Bitmap& picture) {
  double sum = 0;
  for (int y = 0; y < picture.Height(); ++y) {
    for (int x = 0; x < picture.Width(); ++x) {
      const Pixel pixel = picture.Row(y)[x];
      EXPECT_EQ(pixel >> 24, 0xFFU);
      sum += Red(pixel) + Green(pixel) + Blue(pixel);
    }
  }
  return sum / picture.Width() / picture.Height() / 3;
}

TEST(Effects, NeutralSettingsChangeNothing) {
  const Bitmap picture = Sample();
  EXPECT_EQ(Applied(Sharpen(), {"--amount=0"}, picture), picture);
  EXPECT_EQ(Applied(Soften(), {"--radius=0"}, picture), picture);
  EXPECT_EQ(Applied(Emboss(), {"--amount=0", "--look=in-colour"}, picture), picture);
  EXPECT_EQ(Applied(Mosaic(), {"--size=1"}, picture), picture);
  EXPECT_EQ(Applied(BrightnessAndContrast(), {"--apply"}, picture), picture);
  EXPECT_EQ(Applied(HueAndSaturation(), {"--apply"}, picture), picture);
  EXPECT_EQ(Applied(HueAndSaturation(), {"--hue=-180"},
                    Applied(HueAndSaturation(), {"--hue=180"}, Row({kOpaque | 0xFF0000}))),
            Row({kOpaque | 0xFF0000}));
  EXPECT_EQ(Applied(Levels(), {"--apply"}, picture), picture);
  EXPECT_EQ(Applied(Sepia(), {"--amount=0"}, picture), picture);
  EXPECT_EQ(Applied(Noise(), {"--amount=0"}, picture), picture);
  EXPECT_EQ(Applied(Despeckle(), {"--strength=0"}, picture), picture);
  EXPECT_EQ(Applied(Rotate(), {"--apply"}, picture), picture);
}

TEST(Effects, EvenGroundStaysEvenInAnySize) {
  for (const auto make : kEffects) {
    for (const int side : {1, 2, 9}) {
      const Bitmap even = Applied(make(), {"--apply"}, Bitmap(side, 10 - side, 0xFF606060));
      EXPECT_TRUE(make().title == "Noise" || even == Bitmap(side, 10 - side, even.Row(0)[0]))
          << make().title << side;
      EXPECT_EQ(even.Width(), side);
    }
  }
}

TEST(Effects, QuarterTurnsAreExact) {
  const Bitmap picture = Sample();
  const Bitmap right = Applied(Rotate(), {"--turn=right"}, picture);
  ASSERT_EQ(right.Width(), picture.Height());
  EXPECT_EQ(right.Row(0)[right.Width() - 1], picture.Row(0)[0]);
  EXPECT_EQ(right.Row(60)[46], picture.Row(0)[60]);
  Bitmap turned = right;
  for (int i = 0; i < 3; ++i) turned = Applied(Rotate(), {"--angle=90"}, turned);
  EXPECT_EQ(turned, picture);
  EXPECT_EQ(Applied(Rotate(), {"--turn", "left"}, right), picture);
  EXPECT_EQ(Applied(Rotate(), {"--turn=half"}, picture), Applied(Rotate(), {"--turn=right"}, right));
  EXPECT_EQ(Applied(Rotate(), {"--angle=-180"}, picture), Applied(Rotate(), {"--turn=half"}, picture));
}

/// The picture grows to hold everything; what wasn't there is the background; there and back the middle is
/// about what it was.
TEST(Effects, AnyAngleGrowsOntoTheBackground) {
  const Bitmap picture = Applied(Soften(), {"--radius=3"}, Bitmap(100, 60, 0xFF2060A0));
  const Bitmap slanted = Applied(Rotate(), {"--angle=30", "--background=#ff0000"}, picture);
  EXPECT_EQ(slanted.Width(), static_cast<int>(std::ceil(100 * std::sqrt(0.75) + 30)));
  EXPECT_EQ(slanted.Height(), static_cast<int>(std::ceil(60 * std::sqrt(0.75) + 50)));
  for (const int y : {0, slanted.Height() - 1}) {
    EXPECT_EQ(slanted.Row(y)[y == 0 ? slanted.Width() - 1 : 0], 0xFFFF0000);
  }
  const Bitmap back = Applied(Rotate(), {"--angle=-30"}, slanted);
  EXPECT_EQ(back.Row(back.Height() / 2)[back.Width() / 2], 0xFF2060A0);
  EXPECT_THROW(Applied(Rotate(), {"--angle=1"}, Bitmap(32767, 400, 0)), SurfaceTooLarge);
}

TEST(Effects, MeansAreKept) {
  const Bitmap picture = Sample(120, 50);
  EXPECT_NEAR(Mean(Applied(Mosaic(), {"--size=10"}, picture)), Mean(picture), 0.5);
  const Bitmap grey(200, 200, 0xFF808080);
  for (const char* grain : {"--grain=grey", "--grain=coloured"}) {
    const Bitmap noisy = Applied(Noise(), {"--amount=30", grain}, grey);
    EXPECT_NEAR(Mean(noisy), 128, 1);
    EXPECT_FALSE(noisy == grey);
  }
  Bitmap dot(41, 41, kOpaque);
  dot.WritableRow(20)[20] = 0xFFFFFFFF;
  EXPECT_NEAR(Mean(Applied(Soften(), {"--radius=1.5"}, dot)), Mean(dot), 0.05);
  EXPECT_NEAR(Mean(Applied(Emboss(), {"--apply"}, dot)), 128, 0.2);
}

TEST(Effects, ValuesFollowTheirCurves) {
  const auto greys = [](std::vector<int> values) {
    std::vector<Pixel> pixels;
    for (const int value : values) pixels.push_back(Packed(value, value, value));
    return Row(pixels);
  };
  const Bitmap ramp = greys({0, 50, 100, 150, 200, 255});
  EXPECT_EQ(Applied(Posterize(), {"--levels=3"}, ramp), greys({0, 0, 128, 128, 255, 255}));
  EXPECT_EQ(Applied(Levels(), {"--darkest=50", "--lightest=175"}, ramp), greys({0, 0, 102, 204, 255, 255}));
  EXPECT_EQ(Applied(Levels(), {"--black-becomes=255", "--white-becomes=0"}, ramp),
            greys({255, 205, 155, 105, 55, 0}));
  EXPECT_EQ(Applied(BrightnessAndContrast(), {"--brightness=20"}, ramp),
            greys({51, 101, 151, 201, 251, 255}));
  EXPECT_EQ(Applied(BrightnessAndContrast(), {"--contrast=100"}, ramp), greys({0, 0, 0, 255, 255, 255}));
  EXPECT_EQ(Applied(BlackAndWhite(), {"--look=two-tones", "--white-from=150"}, ramp),
            greys({0, 0, 0, 255, 255, 255}));
  EXPECT_EQ(Applied(HueAndSaturation(), {"--hue=120"}, Row({0xFFFF0000, 0xFF00FF00, 0xFF808080})),
            Row({0xFF00FF00, 0xFF0000FF, 0xFF808080}));
  EXPECT_EQ(Applied(HueAndSaturation(), {"--lightness=-100"}, ramp), greys({0, 0, 0, 0, 0, 0}));
  const Pixel toned = Applied(Sepia(), {"--apply"}, greys({128})).Row(0)[0];
  EXPECT_TRUE(Red(toned) > Green(toned) && Green(toned) > Blue(toned));
}

TEST(Effects, NeighboursAreSeen) {
  const Bitmap step = Row({0xFF404040, 0xFF404040, 0xFF404040, 0xFFC0C0C0, 0xFFC0C0C0, 0xFFC0C0C0});
  const Bitmap sharp = Applied(Sharpen(), {"--radius=0.5"}, step),
               edges = Applied(Edges(), {"--apply"}, step);
  EXPECT_LT(Red(sharp.Row(0)[2]), 0x40);
  EXPECT_GT(Red(sharp.Row(0)[3]), 0xC0);
  EXPECT_EQ(Applied(Sharpen(), {"--threshold=100"}, step), step);
  EXPECT_EQ(edges, Row({kOpaque, kOpaque, 0xFF808080, 0xFF808080, kOpaque, kOpaque}));
  const Bitmap lit = Applied(Emboss(), {"--light-from=0"}, step),
               unlit = Applied(Emboss(), {"--light-from=180"}, step);
  EXPECT_NE(Red(lit.Row(0)[2]) > 128, Red(unlit.Row(0)[2]) > 128);
  Bitmap speckled(9, 9, 0xFF336699);
  for (const int at : {0, 4, 8}) speckled.WritableRow(at)[at] = 0xFFFFFFFF;
  EXPECT_EQ(Applied(Despeckle(), {"--apply"}, speckled).Row(4)[4], 0xFF336699);
  EXPECT_EQ(Applied(Despeckle(), {"--apply"}, step), step);
}

TEST(Effects, StoppedWorkEndsAndWorkTellsHowFarItIs) {
  for (const auto make : kEffects) {
    Work work, stopped;
    stopped.Stop();
    make().apply(Sample(), StartOf(make()), stopped);
    EXPECT_EQ(stopped.Progress(), 0) << make().title;
    make().apply(Sample(), StartOf(make()), work);
    EXPECT_NEAR(work.Progress(), 1, 1e-4) << make().title;
  }
  Work work;
  EXPECT_THROW(ForBands(100, work, [](int, int) { throw std::bad_alloc(); }), std::bad_alloc);
}

TEST(Effects, MistakenWordsAreTold) {
  using Words = std::vector<std::string>;
  for (const Words& words : {Words{},
                             {"a", "b"},
                             {"--turn=up", "a"},
                             {"--angle", "181", "a"},
                             {"--angle=4x", "a"},
                             {"--background=red", "a"},
                             {"--speed=1", "a"},
                             {"a", "--angle"},
                             {"--angle=nan", "a"}}) {
    const Order order = ReadCommandLine(Rotate(), words);
    EXPECT_EQ(order.kind, Order::Kind::Mistaken);
    EXPECT_NE(order.mistake, "");
  }
  EXPECT_EQ(ReadCommandLine(Rotate(), {"/a b.bmp"}).kind, Order::Kind::Window);
  EXPECT_EQ(ReadCommandLine(Rotate(), {"--angle", "-4.5", "/a"}).values, (Values{0, -4.5, 0xFFFFFF}));
}

TEST(Effects, ReducedCopiesHaveReducedLengths) {
  const Bitmap large(2000, 1000, 0xFF112233);
  const double scale = ReducedScale(large);
  EXPECT_EQ(scale, 0.5);
  EXPECT_EQ(Reduced(large, scale), Bitmap(1000, 500, 0xFF112233));
  EXPECT_EQ(Reduced(Sharpen(), {100, 8, 5}, scale), (Values{100, 4, 5}));
  EXPECT_EQ(ReducedScale(Sample()), 1);
}

}  // namespace
}  // namespace zelvane
