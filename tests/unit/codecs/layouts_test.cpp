#include <gtest/gtest.h>

#include "codecs/PictureSamples.h"

namespace zelvane::test {
namespace {

TEST(Layouts, RowsOfAnInterlacedGifGoToTheirPlaces) {
  // Rows 0, 4, 2, 6, 1, 3, 5, 7; codes of three bits, kept at that width by clearing (4), the last first.
  uint64_t bits = 0;
  for (const uint64_t code : {5u, 1u, 0u, 4u, 2u, 1u, 4u, 0u, 2u, 4u, 1u, 0u, 4u}) bits = bits << 3 | code;
  EXPECT_EQ(
      PixelsOf(Text("GIF89a") + Bytes{1, 0, 8, 0, 0x81, 0, 0} +
               Bytes{255, 0, 0, 0, 255, 0, 0, 0, 255, 9, 9, 9} +
               Bytes{0x2C, 0, 0, 0, 0, 1, 0, 8, 0, 0x40, 2, 8} + Numbers({bits}, 8) + Numbers({0x3B00}, 2)),
      (std::vector{kRed, kGreen, kBlue, kBlue, kGreen, kRed, kRed, kGreen}));
}

TEST(Layouts, AnIconOfFewColoursIsClearWhereItsMaskSays) {
  const Bytes icon{0, 0, 1, 0, 1, 0, 3, 1, 2, 0, 0, 0, 0, 0, 56, 0, 0, 0, 22, 0, 0, 0};
  EXPECT_EQ(
      PixelsOf(icon + Part(BmpHeader(3, 2, 1, 0, 2), 14, 40) + Numbers({0xFF0000, 0x00FF00, 0x20, 0x40}, 4)),
      (std::vector{kRed, kWhitePixel, kGreen}));
}

TEST(Layouts, TheLargestPictureOfAnIconIsTaken) {
  const QImage large = Sample(16, 16);
  const Bytes png = Encoded(large, "png"), ico = Encoded(Sample(8, 8), "ico"),
              dib = Part(ico, 22, ico.size() - 22);
  for (const uint64_t kind : {1u, 2u}) {  // icons and cursors
    const Bytes icon = Numbers({0, kind, 2, 0x0808, 0, 0, 0}, 2) + Numbers({dib.size(), 38}, 4) +
                       Numbers({0x1010, 0, 0, 0}, 2) + Numbers({png.size(), 38 + dib.size()}, 4) + dib + png;
    EXPECT_EQ(Difference(icon, large), 0) << kind;
  }
}

TEST(Layouts, BitmapFilesOfEveryKind) {
  const Bytes palette = Numbers({0x000000, 0xFF0000, 0x00FF00}, 4);
  const std::pair<Bytes, std::vector<Pixel>> cases[] = {
      // The oldest header: sides of 16 bits, three bytes a colour.
      {Text("BM") + Numbers({0, 0, 32, 12}, 4) + Numbers({3, 1, 1, 1}, 2) +
           Bytes{0, 255, 0, 255, 0, 0, 0xA0, 0, 0, 0},
       {kBlue, kGreen, kBlue}},
      // From the top; 5 bits a channel.
      {BmpHeader(2, -1, 16, 0) + Numbers({0x7C00, 0x7FFF}, 2), {kRed, kWhitePixel}},
      // Masks for the channels.
      {BmpHeader(2, 1, 32, 3) + Numbers({0xFF, 0xFF00, 0xFF0000, 0x0000FF, 0x00FF00}, 4), {kRed, kGreen}},
      // Runs: two of colour 1, three one by one, the end of the row, a jump by (1, 0), the end.
      {BmpHeader(5, 2, 8, 1, 3) + palette + Bytes{2, 1, 0, 3, 2, 0, 1, 0, 0, 0, 0, 2, 1, 0, 1, 2, 0, 1},
       {kBlackPixel, kGreen, kBlackPixel, kBlackPixel, kBlackPixel, kRed, kRed, kGreen, kBlackPixel, kRed}},
      {BmpHeader(3, 1, 4, 2, 3) + palette + Bytes{3, 0x12, 0, 1}, {kRed, kGreen, kRed}},
  };
  for (const auto& [file, pixels] : cases) EXPECT_EQ(PixelsOf(file), pixels);
}

TEST(Layouts, PaintbrushFilesOfEveryKind) {
  const Bytes four{255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255};
  Bytes many(769, 0);
  many[0] = 12, many[1 + 3 * 0xC5] = 255;
  const std::pair<Bytes, std::vector<Pixel>> cases[] = {
      {PcxHeader(3, 1, 1, 1, 2) + Bytes{0x40, 0}, {kBlackPixel, kWhitePixel, kBlackPixel}},
      {PcxHeader(2, 1, 1, 1, 2, four) + Bytes{0x40, 0}, {kRed, kGreen}},
      // Four colours packed, and in two planes, of which the first has the lowest bit.
      {PcxHeader(4, 1, 2, 1, 2, four) + Bytes{0x1B, 0}, {kRed, kGreen, kBlue, kWhitePixel}},
      {PcxHeader(4, 1, 1, 2, 2, four) + Bytes{0x50, 0, 0x30, 0}, {kRed, kGreen, kBlue, kWhitePixel}},
      // No palette: the colours of old screens.
      {PcxHeader(2, 1, 4, 1, 2) + Bytes{0xC1, 0xF0, 0}, {kWhitePixel, kBlackPixel}},
      // A run over two rows; colours from 0xC0 on are runs of one. The palette is at the end.
      {PcxHeader(2, 2, 8, 1, 2) + Bytes{0xC3, 0xC5, 0} + many, {kRed, kRed, kRed, kBlackPixel}},
      {PcxHeader(2, 1, 8, 3, 2) + Bytes{0xC1, 255, 0, 0, 0, 0, 0xC1, 255}, {kRed, kBlue}},
      {PcxHeader(2, 1, 24, 1, 6) + Bytes{0xC1, 255, 0, 0, 0, 0, 0xC1, 255}, {kRed, kBlue}},
  };
  for (const auto& [file, pixels] : cases) {
    EXPECT_EQ(PixelsOf(file), pixels);
    EXPECT_FALSE(Decoded(Part(file, 0, file.size() - 1)));
  }
  EXPECT_FALSE(Decoded(PcxHeader(9, 1, 8, 1, 8) + Bytes{0xCF, 1} + many));  // rows too short for the picture
}

TEST(Layouts, ABitmapOfTheOldXKindHasSixteenPixelsANumber) {
  std::vector<Pixel> pixels(17, kWhitePixel);
  for (const size_t x : {0u, 15u, 16u}) pixels[x] = kBlackPixel;
  EXPECT_EQ(PixelsOf(Text("/* drawn */\n#define a_width 17\n#define a_height 1\n"
                          "static short a_bits[] = {0x8001, 1};\n")),
            pixels);
}

}  // namespace
}  // namespace zelvane::test
