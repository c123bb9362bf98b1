#include <gtest/gtest.h>

#include <array>

#include "codecs/PictureSamples.h"
#include "surface/codecs/Flatten.h"
#include "surface/system/files/PictureFile.h"

namespace zelvane::test {
namespace {

constexpr Pixel kRed = 0xFFFF0000u, kGreen = 0xFF00FF00u, kBlue = 0xFF0000FFu, kWhitePixel = 0xFFFFFFFFu,
                kBlackPixel = 0xFF000000u;

std::vector<Pixel> PixelsOf(const std::optional<Bitmap>& bitmap) {
  std::vector<Pixel> pixels;
  for (int y = 0; bitmap && y < bitmap->Height(); ++y) {
    pixels.insert(pixels.end(), bitmap->Row(y), bitmap->Row(y) + bitmap->Width());
  }
  return pixels;
}

/// Red and half see-through blue, and nothing at all.
QImage Clear(QImage::Format format) {
  QImage image(3, 1, format);
  image.setPixelColor(0, 0, QColor(255, 0, 0));
  image.setPixelColor(1, 0, QColor(0, 0, 255, 128));
  image.setPixelColor(2, 0, QColor(10, 20, 30, 0));
  return image;
}

TEST(Pictures, FilesWithoutLossComeOutToTheBit) {
  const QImage sample = Sample();
  for (const char* format : {"png", "bmp", "tiff", "ico"}) {
    EXPECT_EQ(Difference(Decoded(Encoded(sample, format)), sample), 0) << format;
  }
  for (const QImage::Format indexed :
       {QImage::Format_Indexed8, QImage::Format_Mono, QImage::Format_Grayscale8}) {
    const QImage few = sample.convertToFormat(indexed);
    for (const char* format : {"png", "bmp", "tiff"}) {
      EXPECT_EQ(Difference(Decoded(Encoded(few, format)), few), 0) << format << indexed;
    }
  }
  EXPECT_EQ(Difference(Decoded(Mng(37, 23, Encoded(sample, "png"), 0, 0)), sample), 0);
  const QImage mono = sample.convertToFormat(QImage::Format_Mono);
  EXPECT_EQ(Difference(Decoded(Encoded(mono, "xbm")), mono), 0);
}

TEST(Pictures, JpegsAreCloseInColourAndInGrey) {
  const QImage smooth = Smooth(64, 48);
  EXPECT_LE(Difference(Decoded(Encoded(smooth, "jpeg", 100)), smooth), 6);
  const QImage grey = smooth.convertToFormat(QImage::Format_Grayscale8);
  EXPECT_LE(Difference(Decoded(Encoded(grey, "jpeg", 100)), grey), 3);
}

TEST(Pictures, JpegsOfInksComeOutInColours) {
  QImage expected(8, 8, QImage::Format_RGB32);
  expected.fill(qRgb(200, 100, 50));
  EXPECT_LE(Difference(LoadPicture(TEST_DATA "/pictures/cmyk.jpg"), expected), 2);
}

TEST(Pictures, TransparentPartsLieOnWhiteRoundedToNearest) {
  const std::vector<Pixel> expected{kRed, 0xFF7F7FFFu, kWhitePixel};
  EXPECT_EQ(PixelsOf(Decoded(Encoded(Clear(QImage::Format_ARGB32), "png"))), expected);
  EXPECT_EQ(PixelsOf(Decoded(Encoded(Clear(QImage::Format_RGBA64), "png"))), expected);
  EXPECT_EQ(PixelsOf(Decoded(Encoded(Clear(QImage::Format_ARGB32), "tiff"))), expected);
  EXPECT_EQ(PixelsOf(Decoded(Encoded(Clear(QImage::Format_ARGB32), "ico"))), expected);
  EXPECT_EQ(PixelsOf(Decoded(Mng(3, 1, Encoded(Clear(QImage::Format_ARGB32), "png"), 0, 0))), expected);
}

TEST(Pictures, EveryChannelAtEveryOpacityIsRoundedToNearest) {
  for (uint32_t alpha = 0; alpha < 256; ++alpha) {
    for (uint32_t channel = 0; channel < 256; ++channel) {
      const uint32_t expected = (2 * (channel * alpha + 255 * (255 - alpha)) + 255) / 510;
      const Pixel pixel = OnWhite(alpha << 24 | channel << 16 | (255 - channel) << 8 | channel);
      ASSERT_EQ(pixel >> 16, 0xFF00 | expected) << channel << " at " << alpha;
      ASSERT_EQ(pixel & 0xFF, expected) << channel << " at " << alpha;
    }
  }
}

TEST(Pictures, SixteenBitsAChannelAreRoundedToNearest) {
  QImage deep(3, 1, QImage::Format_RGBX64);
  const std::array<quint16, 3> values{257 * 200, 257 * 200 + 128, 257 * 200 + 129};
  for (int x = 0; x < 3; ++x) {
    reinterpret_cast<QRgba64*>(deep.bits())[x] = qRgba64(values[static_cast<size_t>(x)], 0, 65535, 65535);
  }
  const std::vector<Pixel> expected{0xFFC800FFu, 0xFFC800FFu, 0xFFC900FFu};
  EXPECT_EQ(PixelsOf(Decoded(Encoded(deep, "png"))), expected);
  EXPECT_EQ(PixelsOf(Decoded(Encoded(deep, "tiff"))), expected);
}

TEST(Pictures, TheOrientationIsCarriedOut) {
  const QImage sample = Smooth(64, 32);
  using T = QImageIOHandler;
  for (const auto& [transformation, turned] :
       {std::pair<T::Transformation, QImage>{T::TransformationRotate90,
                                             sample.transformed(QTransform().rotate(90))},
        {T::TransformationMirror, sample.mirrored(true, false)},
        {T::TransformationFlipAndRotate90, sample.mirrored(false, true).transformed(QTransform().rotate(90))},
        {T::TransformationMirrorAndRotate90,
         sample.mirrored(true, false).transformed(QTransform().rotate(90))},
        {T::TransformationRotate270, sample.transformed(QTransform().rotate(270))}}) {
    EXPECT_EQ(Difference(Decoded(Encoded(sample, "tiff", -1, transformation)), turned), 0) << transformation;
    EXPECT_LE(Difference(Decoded(Encoded(sample, "jpeg", 100, transformation)), turned), 10)
        << transformation;
  }
}

TEST(Pictures, AnimationsGiveTheirFirstFrameOnAWhiteScreen) {
  const Pixel expected[4][5] = {{kWhitePixel, kWhitePixel, kWhitePixel, kWhitePixel, kWhitePixel},
                                {kWhitePixel, kRed, kGreen, kBlue, kWhitePixel},
                                {kWhitePixel, kWhitePixel, kRed, kGreen, kWhitePixel},
                                {kWhitePixel, kWhitePixel, kWhitePixel, kWhitePixel, kWhitePixel}};
  EXPECT_EQ(PixelsOf(Decoded(Gif())), std::vector<Pixel>(&expected[0][0], &expected[0][0] + 20));

  const QImage sample = Sample(4, 3);
  QImage canvas(9, 8, QImage::Format_RGB32);
  canvas.fill(Qt::white);
  for (int y = 0; y < 3; ++y) {
    for (int x = 0; x < 4; ++x) canvas.setPixel(x + 2, y + 5, sample.pixel(x, y));
  }
  EXPECT_EQ(Difference(Decoded(Mng(9, 8, Encoded(sample, "png"), 2, 5)), canvas), 0);
}

TEST(Pictures, TheLargestPictureOfAnIconIsTaken) {
  const QImage small = Sample(8, 8), large = Sample(16, 16);
  const std::array<Bytes, 2> files{Encoded(small, "ico"), Encoded(large, "png")};
  for (const unsigned char kind : {1, 2}) {  // icons and cursors
    Bytes icon{0, 0, kind, 0, 2, 0};
    const Bytes dib(files[0].begin() + 22, files[0].end());
    size_t at = 6 + 2 * 16;
    for (const Bytes* picture : {&dib, &files[1]}) {
      AppendNumber(icon, picture == &dib ? 0x0808 : 0x1010, 2);
      AppendNumber(icon, 0, 6);
      AppendNumber(icon, picture->size(), 4);
      AppendNumber(icon, at, 4);
      at += picture->size();
    }
    icon.insert(icon.end(), dib.begin(), dib.end());
    icon.insert(icon.end(), files[1].begin(), files[1].end());
    EXPECT_EQ(Difference(Decoded(icon), large), 0) << int{kind};
  }
}

TEST(Pictures, BitmapFilesOfEveryKind) {
  Bytes bytes = BmpHeader(2, -1, 16, 0);  // from the top; 5 bits a channel
  AppendNumber(bytes, 0x7C00, 2);
  AppendNumber(bytes, 0x7FFF, 2);
  EXPECT_EQ(PixelsOf(Decoded(bytes)), (std::vector<Pixel>{kRed, kWhitePixel}));

  bytes = BmpHeader(2, 1, 32, 3);
  for (const uint32_t mask : {0xFFu, 0xFF00u, 0xFF0000u, 0x0000FFu, 0x00FF00u}) AppendNumber(bytes, mask, 4);
  EXPECT_EQ(PixelsOf(Decoded(bytes)), (std::vector<Pixel>{kRed, kGreen}));

  // Runs: two of colour 1, three one by one, the end of the row, a jump by (1, 0), the end.
  bytes = BmpHeader(5, 2, 8, 1, 3);
  for (const uint32_t color : {0x000000u, 0xFF0000u, 0x00FF00u}) AppendNumber(bytes, color, 4);
  const Bytes runs{2, 1, 0, 3, 2, 0, 1, 0, 0, 0, 0, 2, 1, 0, 1, 2, 0, 1};
  bytes.insert(bytes.end(), runs.begin(), runs.end());
  EXPECT_EQ(PixelsOf(Decoded(bytes)),
            (std::vector<Pixel>{kBlackPixel, kGreen, kBlackPixel, kBlackPixel, kBlackPixel, kRed, kRed,
                                kGreen, kBlackPixel, kRed}));

  bytes = BmpHeader(3, 1, 4, 2, 3);
  for (const uint32_t color : {0x000000u, 0xFF0000u, 0x00FF00u}) AppendNumber(bytes, color, 4);
  for (const unsigned char byte : {3, 0x12, 0, 1}) bytes.push_back(byte);
  EXPECT_EQ(PixelsOf(Decoded(bytes)), (std::vector<Pixel>{kRed, kGreen, kRed}));
}

TEST(Pictures, ABitmapOfTheOldXKindHasSixteenPixelsANumber) {
  Bytes bytes;
  AppendText(bytes,
             "/* drawn */\n#define a_width 17\n#define a_height 1\nstatic short a_bits[] = {0x8001, 1};\n");
  const auto pixels = PixelsOf(Decoded(bytes));
  ASSERT_EQ(pixels.size(), 17u);
  for (size_t x = 0; x < 17; ++x) {
    EXPECT_EQ(pixels[x], x == 0 || x == 15 || x == 16 ? kBlackPixel : kWhitePixel) << x;
  }
}

TEST(Pictures, SavedOnesReadBackTheSame) {
  const Folder folder;
  for (const int width : {1, 2, 3, 4, 5, 37}) {
    const QImage sample = Sample(std::max(2, width), 3).copy(0, 0, width, 3);
    const std::string path = folder.Path("saved.png");  // the name doesn't matter
    const auto picture = Decoded(Encoded(sample, "png"));
    ASSERT_TRUE(picture);
    ASSERT_EQ(SavePicture(*picture, path).reason, "");
    EXPECT_EQ(Difference(LoadPicture(path), sample), 0) << width;
    const QImage by_qt(QString::fromStdString(path), "bmp");
    EXPECT_EQ(by_qt.convertToFormat(QImage::Format_RGB32), sample) << width;
    EXPECT_EQ(by_qt.dotsPerMeterX(), 2835);
    EXPECT_EQ(QFile(QString::fromStdString(path)).size(), 54 + (width * 3 + 3) / 4 * 4 * 3);
  }
  EXPECT_NE(SavePicture(Bitmap(), folder.Path("none.bmp")).reason, "");
  EXPECT_FALSE(QFile::exists(QString::fromStdString(folder.Path("none.bmp"))));
}

}  // namespace
}  // namespace zelvane::test
