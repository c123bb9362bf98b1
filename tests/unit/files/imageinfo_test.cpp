#include <gtest/gtest.h>

#include <fstream>

#include "codecs/PictureSamples.h"
#include "files/CImageInfo.h"

namespace zelvane::test {
namespace {

class ImageInfo : public testing::Test {
 protected:
  CImageInfo Of(const Bytes& bytes) {
    const std::string path = folder_.Path("head");
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    CImageInfo info;
    info.ReadImageInfo(path);
    return info;
  }
  void Expect(const Bytes& bytes, int type, int width, int height, int depth) {
    const CImageInfo info = Of(bytes);
    EXPECT_EQ(info.ImageType(), type);
    EXPECT_EQ(info.Width(), width);
    EXPECT_EQ(info.Height(), height);
    EXPECT_EQ(info.Depth(), depth);
  }
  static Bytes Png(uint8_t bits, uint8_t color_type) {
    return {137, 'P', 'N', 'G', 13, 10, 26,  10, 0, 0, 0, 13,   'I',
            'H', 'D', 'R', 0,   1,  17, 112, 0,  0, 2, 3, bits, color_type};
  }

  Folder folder_;
};

TEST_F(ImageInfo, PngDepthComesOfTheColorType) {
  Expect(Png(8, 0), CImageInfo::kPng, 70000 - 65536, 515, 8);
  Expect(Png(16, 2), CImageInfo::kPng, 4464, 515, 48);
  Expect(Png(4, 3), CImageInfo::kPng, 4464, 515, 8);
  Expect(Png(8, 4), CImageInfo::kPng, 4464, 515, 16);
  Expect(Png(16, 6), CImageInfo::kPng, 4464, 515, 64);
  Expect(Png(8, 5), CImageInfo::kUnknown, 0, 0, 0);
  Expect(Png(255, 6), CImageInfo::kPng, 4464, 515, 0);
}

TEST_F(ImageInfo, GifAndBitmap) {
  Expect({'G', 'I', 'F', '8', '9', 'a', 2, 1, 4, 3, 0xF7}, CImageInfo::kGif, 258, 772, 8);
  Bytes bitmap(30);
  bitmap[0] = 'B', bitmap[1] = 'M', bitmap[18] = 5, bitmap[22] = 6, bitmap[23] = 1, bitmap[28] = 24;
  Expect(bitmap, CImageInfo::kBmp, 5, 262, 24);
}

TEST_F(ImageInfo, JpegSegmentsArePassedByTheirLengths) {
  const Bytes frame{0xFF, 0xFF, 0xC2, 0, 17, 8, 1, 2, 3, 4, 3};
  Bytes bytes{'x', 0xFF, 0xD8, 0xFF, 0xE1, 0, 6, 0xFF, 0xC0, 9, 9, 0xFF, 0xC4, 0, 2};
  bytes.insert(bytes.end(), frame.begin(), frame.end());
  Expect(bytes, CImageInfo::kJpeg, 772, 258, 24);
  bytes.back() = 32;
  Expect(bytes, CImageInfo::kJpeg, 772, 258, 0);

  // The frame header has to begin before byte 65,525.
  Bytes late{0xFF, 0xD8, 0xFF, 0xE1, 0xFF, 0xF0};
  late.resize(3 + 0xFFF0);
  late.insert(late.end(), frame.begin(), frame.end());
  Expect(late, CImageInfo::kJpeg, 772, 258, 24);
  late.insert(late.end() - static_cast<ptrdiff_t>(frame.size()), 8, 0);
  Expect(late, CImageInfo::kUnknown, 0, 0, 0);
}

TEST_F(ImageInfo, NothingToTell) {
  Expect({}, CImageInfo::kUnknown, 0, 0, 0);
  Expect(Bytes(100000, 0xFF), CImageInfo::kUnknown, 0, 0, 0);
  CImageInfo info = Of(Png(8, 2));
  info.ReadImageInfo(folder_.Path("missing"));
  EXPECT_EQ(info.ImageType() + info.Width() + info.Height() + info.Depth(), 0);
}

}  // namespace
}  // namespace zelvane::test
