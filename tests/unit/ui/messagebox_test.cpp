#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "surface/forms/controls/Label.h"
#include "surface/raster/Contrast.h"
#include "ui/Gradients.h"
#include "ui/MsgBox.h"
#include "ui/MsgBoxLayout.h"
#include "ui/MsgBoxProperties.h"

namespace zelvane {
namespace {

TEST(MessageLayout, StyleSumsComeApart) {
  constexpr int kSums[][4] = {{0, 0, -1, 0},       {35, 3, 1, 0}, {4 + 32 + 256, 4, 1, 1}, {512, 0, -1, 2},
                              {64 + 15, 15, 3, 0}, {16, 0, 0, 0}, {-20, -20, -2, 0}};
  for (const auto& [sum, set, icon, button] : kSums) {
    const MsgBoxStyle style = SplitStyle(sum);
    EXPECT_EQ((std::array{style.button_set, style.icon_index, style.default_button}),
              (std::array{set, icon, button}))
        << sum;
  }
  std::string rows;
  for (int set = -1; set <= 6; ++set) {
    for (const MsgBoxButton& button : ButtonsOfSet(set)) rows += button.caption + std::to_string(button.code);
    rows += '|';
  }
  EXPECT_EQ(rows, "|&OK1|&OK1Cancel2|&Abort3&Retry4&Ignore5|&Yes6&No7Cancel2|&Yes6&No7|&Retry4Cancel2||");
}

/// Worked by hand from the texts' sizes.
TEST(MessageLayout, FiguresOfTextsSetsAndIcons) {
  const auto figures = [](const MsgBoxPlaces& p) {
    return std::array{p.width,      p.height,          p.text_left, p.text_top, p.first_button_left,
                      p.button_top, p.control_box_left};
  };
  const std::pair<MsgBoxParts, MsgBoxPlaces> cases[] = {
      // The title decides: 700 + 300 + 270. The text would stand at 570 and is kept off the icon.
      {{700, 100, 240, 0, true, true, kAlignCentre, 19200}, {1270, 1755, 750, 285, 687.5, 810, 910}},
      // The row of three buttons decides: 3 * 1095 + 570 + 2 * 105.
      {{700, 900, 195, 3, false, true, kAlignLeft, 19200}, {4065, 1470, 150, 150, 285, 525, 3705}},
      // The text decides, centred: (6405 - 6000) / 2 = 202.5, 202, on a pixel 195, less 30, and 150 at least.
      {{700, 6000, 720, 2, false, true, kAlignCentre, 19200}, {6405, 1995, 165, 150, 2055, 1050, 6045}},
      // With an icon that the text is taller than, at the right: 7005 - 6000 - 270 gives way to 750.
      {{700, 6000, 720, 1, true, false, kAlignRight, 19200}, {7005, 1995, 750, 150, 2955, 1050, 6645}},
      // A narrow one at the right of a wide title: 5270 - 1000 - 270.
      {{4700, 1000, 240, 1, false, true, kAlignRight, 19200}, {5270, 1515, 4000, 150, 2087.5, 570, 4910}},
      // The screen cuts: 9600 - 240.
      {{700, 30000, 240, 1, false, true, kAlignCentre, 9600}, {9360, 1515, 150, 150, 4132.5, 570, 9000}},
  };
  for (const auto& [parts, places] : cases)
    EXPECT_EQ(figures(LayOut(parts)), figures(places)) << parts.title_width << ' ' << parts.text_width;
  EXPECT_EQ(Centred(3000, 1000, 1600), 2700) << "wider than its owner";
}

TEST(MessageProperties, RulesOnWriting) {
  MsgBoxProperties box;
  const auto colours = [&box] {
    return std::array{box.BackColorBody().value, box.BackColorButtons().value, box.BackColorHeading().value,
                      box.ForeColorBody().value, box.ForeColorHeading().value};
  };
  const auto defaults = colours();
  for (const Color colour : {RGB(1, 2, 3), kNoColor}) {
    box.SetBackColorBody(colour), box.SetBackColorButtons(colour), box.SetBackColorHeading(colour);
    box.SetForeColorBody(colour), box.SetForeColorHeading(colour);
    EXPECT_EQ(colours() == defaults, colour == kNoColor);
  }
  std::vector<int16_t> kept;
  for (int16_t direction = 0; direction <= 17; ++direction) {
    box.SetGradientDirection(direction);
    kept.push_back(box.GradientDirection());
  }
  EXPECT_EQ(kept, (std::vector<int16_t>{1, 1, 2, 3, 4, 6, 5, 8, 7, 10, 9, 12, 11, 14, 13, 16, 15, 1}));
  for (const int16_t beyond : {int16_t{-1}, int16_t{3}}) {
    box.SetHeadingType(beyond), box.SetTextAlignment(beyond), box.SetStartUpPosition(beyond);
    EXPECT_EQ((std::array{box.HeadingType(), box.TextAlignment(), box.StartUpPosition()}),
              (std::array<int16_t, 3>{0, 0, 2}));
  }
  box.SetTimerSeconds(-3), box.SetTop(-1), box.SetLeft(-1);
  EXPECT_EQ(box.TimerSeconds() + box.Top() + box.Left(), 0);
}

/// A surface of whole bands: 85 * 30 twips each way.
struct Ground : Canvas {
  Ground(int width = 170, int height = 170) {
    Resize(width, height);
    SetBackColor(RGB(9, 9, 9));
  }
  /// The middle of the band.
  Color Band(int16_t direction, int index) const {
    const int near = index * 2 + 1, far = 169 - index * 2;
    const std::array<std::array<int, 2>, 4> places{{{80, near}, {80, far}, {near, 80}, {far, 80}}};
    const auto [x, y] = places[static_cast<size_t>(direction - 1)];
    return GetPixel(x, y);
  }
};

TEST(Gradients, BandsChangeByThree) {
  struct Case {
    Color colour;
    bool brighten, fast;
    std::vector<std::pair<int, int>> bands;  // and by how many changes each is lighter
  };
  const Case cases[] = {
      {RGB(250, 6, 100), false, false, {{0, 0}, {1, -1}, {2, -2}, {3, -3}, {40, -40}, {84, -84}}},
      // Of the first 29 changes 14 count; the lightest is white.
      {RGB(10, 20, 200), true, true, {{0, 0}, {1, 0}, {2, 1}, {29, 14}, {30, 15}, {84, 69}}},
      {RGB(10, 20, 200), true, false, {{0, 0}, {2, 0}, {3, 1}, {83, 27}}},
  };
  for (int16_t direction = 1; direction <= 4; ++direction) {
    for (const auto& [colour, brighten, fast, bands] : cases) {
      Ground ground;
      FillGradient(ground, colour, direction, brighten, fast);
      const auto [red, green, blue] = Split(colour);
      for (const auto& [band, steps] : bands) {
        EXPECT_EQ(ground.Band(direction, band), RGB(red + 3 * steps, green + 3 * steps, blue + 3 * steps))
            << direction << ' ' << band;
      }
    }
  }
  Ground plain;
  FillGradient(plain, kNoColor, 1, false, false);
  EXPECT_EQ(plain.GetPixel(0, 0), RGB(9, 9, 9));
  // Backwards the last band reaches the border, however long it has to be.
  Ground odd(100, 100);
  FillGradient(odd, kWhite, kBottomUp, false, false);
  EXPECT_EQ(odd.GetPixel(50, 0), RGB(3, 3, 3));
}

TEST(Gradients, DirectionsLeadFromOneEndToTheOther) {
  const Color colour = RGB(255, 0, 128);
  // Where it is black, and where it is full.
  constexpr int kEnds[][5] = {{1, 128, 0, 128, 255}, {3, 128, 255, 128, 0}, {2, 0, 128, 255, 128},
                              {4, 255, 128, 0, 128}, {5, 128, 128, 3, 3},   {6, 3, 3, 128, 128},
                              {9, 0, 0, 255, 255},   {10, 255, 255, 0, 0},  {11, 255, 0, 0, 255},
                              {12, 0, 255, 255, 0},  {13, 0, 255, 255, 0},  {14, 255, 0, 0, 255},
                              {15, 255, 255, 0, 0},  {16, 0, 0, 255, 255}};
  for (const auto& [direction, black_x, black_y, full_x, full_y] : kEnds) {
    Ground ground(256, 256);
    ASSERT_TRUE(FillGradientDirectional(ground, colour, static_cast<int16_t>(direction)));
    const Channels dark = Split(ground.GetPixel(black_x, black_y));
    const Channels full = Split(ground.GetPixel(full_x, full_y));
    // The pen is 12 wide, so an end may show a step that came up to 12 later.
    EXPECT_LE(dark.red, 12) << direction;
    EXPECT_GE(full.red, 243) << direction;
    EXPECT_EQ(full, (Channels{full.red, 0, 128})) << "no component grows beyond its own";
  }
}

TEST(Contrast, InkIsKeptWhereItReads) {
  const Pixel navy = ToPixel(RGB(0, 0, 128));
  EXPECT_EQ(ReadableInk(ToPixel(kWhite), navy), navy);
  // Along the shade of a message every line of text reads in one ink.
  Ground ground;
  FillGradient(ground, kWhite, kTopDown, false, false);
  for (int top = 0; top + 10 <= 170; top += 10) {
    const Rect line{0, top, 170, top + 10};
    const Pixel ink = ReadableInk(ground.Image(), line, navy);
    EXPECT_GE(LowestContrast(ground.Image(), line, ink), 3.5) << top;
    EXPECT_EQ(ink == navy, top <= 70) << top;
  }
}

}  // namespace
}  // namespace zelvane
