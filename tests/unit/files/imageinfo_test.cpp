#include <gtest/gtest.h>

#include <array>
#include <fstream>

#include "codecs/PictureSamples.h"
#include "files/CImageInfo.h"

namespace zelvane::test {
namespace {

/// Type, width, height and depth.
std::array<int, 4> Facts(const Bytes& bytes) {
  const Folder folder;
  std::ofstream(folder.Path("head"), std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()), std::ssize(bytes));
  CImageInfo info;
  info.ReadImageInfo(folder.Path("head"));
  return {info.ImageType(), info.Width(), info.Height(), info.Depth()};
}
constexpr std::array<int, 4> kNothing{};

Bytes Png(uint8_t bits, uint8_t kind) {
  return Text("\x89PNG....") + Text("....IHDR") + Numbers({70000, 515}, 4, true) + Bytes{bits, kind};
}

TEST(ImageInfo, SizesHave16BitsAndDepthsComeOfTheKind) {
  const int depths[][3] = {{8, 0, 8}, {16, 2, 48}, {4, 3, 8}, {8, 4, 16}, {16, 6, 64}, {255, 6, 0}};
  for (const auto& [bits, kind, depth] : depths)
    EXPECT_EQ(Facts(Png(static_cast<uint8_t>(bits), static_cast<uint8_t>(kind))),
              (std::array{3, 70000 - 65536, 515, depth}));
  EXPECT_EQ(Facts(Png(8, 5)), kNothing);
  EXPECT_EQ(Facts(Text("GIF89a") + Numbers({258, 772}, 2) + Bytes{0xF7}), (std::array{1, 258, 772, 8}));
  const Bytes bitmap = Text("BM................") + Numbers({5, 262}, 4) + Numbers({1, 24}, 2);
  EXPECT_EQ(Facts(bitmap), (std::array{4, 5, 262, 24}));
}

TEST(ImageInfo, JpegSegmentsArePassedByTheirLengths) {
  const Bytes frame{0xFF, 0xFF, 0xC2, 0, 17, 8, 1, 2, 3, 4, 3};
  const Bytes start{'x', 0xFF, 0xD8, 0xFF, 0xE1, 0, 6, 0xFF, 0xC0, 9, 9, 0xFF, 0xC4, 0, 2};
  EXPECT_EQ(Facts(start + frame), (std::array{2, 772, 258, 24}));
  Bytes late{0xFF, 0xD8, 0xFF, 0xE1, 0xFF, 0xF0};
  late.resize(3 + 0xFFF0);
  EXPECT_EQ(Facts(late + frame), (std::array{2, 772, 258, 24}));
  EXPECT_EQ(Facts(late + Bytes{8, 0} + frame), kNothing) << "begins behind byte 65,525";
  EXPECT_EQ(Facts(Bytes(100000, 0xFF)), kNothing);
}

}  // namespace
}  // namespace zelvane::test
