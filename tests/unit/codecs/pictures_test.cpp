#include <gtest/gtest.h>
#include <tiffio.h>

#include <QFloat16>
#include <QPainter>
#include <array>
#include <bit>
#include <cmath>
#include <tuple>

#include "codecs/PictureSamples.h"
#include "surface/codecs/Flatten.h"
#include "surface/codecs/PictureEncoder.h"
#include "surface/system/desktop/ImageBitmap.h"
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

TEST(Pictures, JpegsComeOutAsTheLibraryDecodesThemByDefault) {
  const QImage colours = Sample(67, 41), grey = colours.convertToFormat(QImage::Format_Grayscale8);
  for (const QImage& image : {colours, grey}) {
    for (const bool progressive : {false, true}) {
      const Bytes jpeg = Encoded(image, "jpeg", 75, {}, progressive);
      const QImage by_qt = QImage::fromData(jpeg.data(), static_cast<int>(jpeg.size()), "jpeg");
      EXPECT_EQ(Difference(Decoded(jpeg), by_qt), 0) << image.format() << progressive;
    }
  }
  QImage inks(8, 8, QImage::Format_RGB32);
  inks.fill(qRgb(200, 100, 50));
  EXPECT_LE(Difference(LoadPicture(TEST_DATA "/pictures/cmyk.jpg"), inks), 2);
}

/// What pixels are made of in a tiff file; samples of `bits` hold 0 to 1, as a fraction or a whole number.
struct TiffKind {
  int photometric, samples, opacity, bits;
  bool fraction, tiles, planes;
};

uint64_t Coded(double sample, const TiffKind& kind) {
  if (!kind.fraction) return static_cast<uint64_t>(std::llround(sample * (std::exp2(kind.bits) - 1)));
  if (kind.bits == 16) return std::bit_cast<uint16_t>(qfloat16(static_cast<float>(sample)));
  return kind.bits == 32 ? std::bit_cast<uint32_t>(static_cast<float>(sample))
                         : std::bit_cast<uint64_t>(sample);
}

/// A picture of 37 x 20, written in one strip or in tiles and read again.
std::optional<Bitmap> ThroughTiff(const TiffKind& kind) {
  const Folder folder;
  const int width = 37, height = 20, columns = kind.tiles ? 16 : width, rows = kind.tiles ? 16 : height;
  TIFF* file = TIFFOpen(folder.Path("t.tif").c_str(), "wb");
  const int in_run = kind.planes ? 1 : kind.samples;
  const auto set = [file](uint32_t tag, int value) { TIFFSetField(file, tag, value); };
  set(TIFFTAG_IMAGEWIDTH, width), set(TIFFTAG_IMAGELENGTH, height), set(TIFFTAG_BITSPERSAMPLE, kind.bits);
  set(TIFFTAG_PHOTOMETRIC, kind.photometric), set(TIFFTAG_SAMPLESPERPIXEL, kind.samples);
  set(TIFFTAG_SAMPLEFORMAT, kind.fraction ? SAMPLEFORMAT_IEEEFP : SAMPLEFORMAT_UINT);
  set(TIFFTAG_PLANARCONFIG, kind.planes ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
  set(kind.tiles ? TIFFTAG_TILELENGTH : TIFFTAG_ROWSPERSTRIP, rows);
  if (kind.tiles) set(TIFFTAG_TILEWIDTH, columns);
  const auto opacity = static_cast<uint16_t>(kind.opacity);
  if (opacity != 0) TIFFSetField(file, TIFFTAG_EXTRASAMPLES, 1, &opacity);
  uint32_t block = 0;
  for (int plane = 0; plane < kind.samples; plane += in_run) {
    const int across = (width + columns - 1) / columns, down = (height + rows - 1) / rows;
    for (int at = 0; at < across * down; ++at) {
      const int left = at % across * columns, top = at / across * rows;
      Bytes run;
      for (int i = 0; i < rows * columns * in_run; ++i) {
        const int x = left + i / in_run % columns, y = top + i / in_run / columns, z = plane + i % in_run;
        AppendNumber(run, Coded((x * 11 + y * 7 + z * 29) % 64 / 63.0, kind), kind.bits / 8);
      }
      const auto write = kind.tiles ? TIFFWriteEncodedTile : TIFFWriteEncodedStrip;
      write(file, block++, run.data(), static_cast<tmsize_t>(run.size()));
    }
  }
  TIFFClose(file);
  return LoadPicture(folder.Path("t.tif"));
}

TEST(Pictures, TiffsOfDeepSamplesInEveryLayoutReadAsThoseOf8Bits) {
  const int kinds[][3] = {{PHOTOMETRIC_MINISBLACK, 1, 0},
                          {PHOTOMETRIC_MINISWHITE, 1, 0},
                          {PHOTOMETRIC_MINISBLACK, 2, EXTRASAMPLE_UNASSALPHA},
                          {PHOTOMETRIC_RGB, 3, 0},
                          {PHOTOMETRIC_RGB, 4, EXTRASAMPLE_UNASSALPHA},
                          {PHOTOMETRIC_RGB, 4, EXTRASAMPLE_ASSOCALPHA},
                          {PHOTOMETRIC_SEPARATED, 4, 0}};
  const std::pair<int, bool> formats[] = {{8, false}, {16, false}, {32, false},
                                          {16, true}, {32, true},  {64, true}};
  for (const auto& [photometric, samples, opacity] : kinds) {
    const auto plain = ThroughTiff({photometric, samples, opacity, 8, false, false, false});
    ASSERT_TRUE(plain);
    for (int i = 0; i < 6 * 4; ++i) {
      const auto [bits, fraction] = formats[i / 4];
      const auto read =
          ThroughTiff({photometric, samples, opacity, bits, fraction, (i & 1) != 0, (i & 2) != 0});
      EXPECT_LE(Difference(read, ImageOf(*plain)), 2) << photometric << samples << opacity << ' ' << i;
    }
  }
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

/// The file with a camera's note on how it was held.
Bytes Turned(Bytes jpeg, uint32_t orientation, bool big) {
  Bytes note{0xFF, 0xE1, 0, 34, 'E', 'x', 'i', 'f', 0, 0};
  AppendText(note, big ? "MM" : "II");
  for (const auto& [value, size] : {std::pair{42, 2}, {8, 4}, {1, 2}, {0x0112, 2}, {3, 2}, {1, 4}}) {
    AppendNumber(note, static_cast<uint64_t>(value), size, big);
  }
  AppendNumber(note, orientation, 2, big);
  note.resize(36);
  jpeg.insert(jpeg.begin() + 2, note.begin(), note.end());
  return jpeg;
}

TEST(Pictures, TheOrientationIsCarriedOut) {
  const QImage sample = Sample(67, 41);
  const Bytes jpeg = Encoded(sample, "jpeg", 75);
  const QImage lossy = QImage::fromData(jpeg.data(), static_cast<int>(jpeg.size()), "jpeg");
  using T = QImageIOHandler;
  for (uint32_t orientation = 2; orientation < 9; ++orientation) {
    const T::Transformations turn(
        std::array{1, 3, 2, 6, 4, 5, 7}[orientation - 2]);  // mirror, flip, rotate: 1, 2, 4
    const auto turned = [turn](const QImage& image) {
      const QImage mirrored = image.mirrored(turn & T::TransformationMirror, turn & T::TransformationFlip);
      return turn & T::TransformationRotate90 ? mirrored.transformed(QTransform().rotate(90)) : mirrored;
    };
    EXPECT_EQ(Difference(Decoded(Encoded(sample, "tiff", -1, turn)), turned(sample)), 0) << orientation;
    for (const bool big : {false, true}) {
      EXPECT_EQ(Difference(Decoded(Turned(jpeg, orientation, big)), turned(lossy)), 0) << orientation << big;
    }
  }
}

TEST(Pictures, AnimationsGiveTheirFirstFrameOnAWhiteScreen) {
  const Pixel w = kWhitePixel;
  EXPECT_EQ(PixelsOf(Decoded(Gif())), (std::vector<Pixel>{w, w, w,    w,      w, w, kRed, kGreen, kBlue, w,
                                                          w, w, kRed, kGreen, w, w, w,    w,      w,     w}));
  QImage canvas(9, 8, QImage::Format_RGB32);
  canvas.fill(Qt::white);
  QPainter(&canvas).drawImage(2, 5, Sample(4, 3));
  EXPECT_EQ(Difference(Decoded(Mng(9, 8, Encoded(Sample(4, 3), "png"), 2, 5)), canvas), 0);
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

TEST(Pictures, OneThatWasReadAheadIsHandedOutOnce) {
  const Folder folder;
  const Bitmap red(3, 2, kRed), blue(2, 2, kBlue);
  ASSERT_TRUE(SavePicture(red, folder.Path("red")).Done() && SavePicture(blue, folder.Path("blue")).Done());
  ReadAhead(folder.Path("red"));
  EXPECT_TRUE(LoadPicture(folder.Path("blue")) == blue);
  EXPECT_TRUE(LoadPicture(folder.Path("red")) == red);
  ASSERT_TRUE(SavePicture(blue, folder.Path("red")).Done());
  EXPECT_TRUE(LoadPicture(folder.Path("red")) == blue);
}

TEST(Pictures, SavedOnesReadBackTheSame) {
  const Folder folder;
  for (const int width : {1, 2, 3, 4, 5, 37}) {
    const QImage sample = Sample(std::max(2, width), 3).copy(0, 0, width, 3);
    const std::string path = folder.Path("saved.png");  // the name doesn't matter
    const auto picture = Decoded(Encoded(sample, "png"));
    ASSERT_TRUE(picture && SavePicture(*picture, path).Done());
    EXPECT_EQ(Difference(LoadPicture(path), sample), 0) << width;
    const QImage by_qt(QString::fromStdString(path), "bmp");
    EXPECT_EQ(by_qt.convertToFormat(QImage::Format_RGB32), sample) << width;
    EXPECT_EQ(by_qt.dotsPerMeterX(), 2835);
    EXPECT_EQ(QFile(QString::fromStdString(path)).size(), 54 + (width * 3 + 3) / 4 * 4 * 3);
  }
  EXPECT_FALSE(SavePicture(Bitmap(), folder.Path("none.bmp")).Done());
  EXPECT_FALSE(QFile::exists(QString::fromStdString(folder.Path("none.bmp"))));
  int pieces = 0;
  EXPECT_FALSE(EncodeBmp(Bitmap(2000, 2000, 0), [&](const void*, size_t) { return ++pieces < 3; }));
  EXPECT_EQ(pieces, 3);  // none after the one that was refused
}

}  // namespace
}  // namespace zelvane::test
