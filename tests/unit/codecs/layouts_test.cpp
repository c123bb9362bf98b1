#include <gtest/gtest.h>

#include "codecs/PictureSamples.h"

namespace zelvane::test {
namespace {

constexpr Pixel kRed = 0xFFFF0000u, kGreen = 0xFF00FF00u, kBlue = 0xFF0000FFu, kWhitePixel = 0xFFFFFFFFu;

TEST(Layouts, RowsOfAnInterlacedGifGoToTheirPlaces) {
  Bytes gif{'G', 'I', 'F', '8', '9', 'a', 1, 0, 8, 0, 0x81, 0, 0};
  for (const unsigned char byte : {255, 0, 0, 0, 255, 0, 0, 0, 255, 9, 9, 9}) gif.push_back(byte);
  for (const unsigned char byte : {0x2C, 0, 0, 0, 0, 1, 0, 8, 0, 0x40, 2, 8}) gif.push_back(byte);
  // Rows 0, 4, 2, 6, 1, 3, 5, 7; codes of three bits, kept at that width by clearing (4).
  const uint64_t codes[] = {4, 0, 1, 4, 2, 0, 4, 1, 2, 4, 0, 1, 5};
  uint64_t bits = 0;
  for (size_t i = 0; i < std::size(codes); ++i) bits |= codes[i] << 3 * i;
  AppendNumber(gif, bits, 8);
  AppendNumber(gif, 0x3B00, 2);
  const auto picture = Decoded(gif);
  ASSERT_TRUE(picture);
  const Pixel rows[] = {kRed, kGreen, kBlue, kBlue, kGreen, kRed, kRed, kGreen};
  for (int y = 0; y < 8; ++y) EXPECT_EQ(picture->Row(y)[0], rows[y]) << y;
}

void ExpectRow(const Bytes& file, const std::vector<Pixel>& row) {
  const auto picture = Decoded(file);
  ASSERT_TRUE(picture && picture->Height() == 1);
  EXPECT_EQ(std::vector<Pixel>(picture->Row(0), picture->Row(0) + picture->Width()), row);
}

TEST(Layouts, AnIconOfFewColoursIsClearWhereItsMaskSays) {
  Bytes icon{0, 0, 1, 0, 1, 0, 3, 1, 2, 0, 0, 0, 0, 0, 56, 0, 0, 0, 22, 0, 0, 0};
  const Bytes header = BmpHeader(3, 2, 1, 0, 2);
  icon.insert(icon.end(), header.begin() + 14, header.end());
  for (const uint32_t number : {0xFF0000u, 0x00FF00u, 0x20u, 0x40u}) AppendNumber(icon, number, 4);
  ExpectRow(icon, {kRed, kWhitePixel, kGreen});
}

/// Sides of 16 bits, three bytes a colour.
TEST(Layouts, TheOldestBitmapHeader) {
  ExpectRow({'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0,   32, 0,   0, 0, 12,   0, 0, 0,
             3,   0,   1, 0, 1, 0, 1, 0, 0, 255, 0,  255, 0, 0, 0xA0, 0, 0, 0},
            {kBlue, kGreen, kBlue});
}

}  // namespace
}  // namespace zelvane::test
