#include <gtest/gtest.h>
#include <tiffio.h>

#include <QFloat16>
#include <array>
#include <bit>
#include <cmath>
#include <tuple>

#include "codecs/PictureSamples.h"
#include "surface/codecs/Flatten.h"
#include "surface/codecs/PictureEncoder.h"
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
struct DeepKind {
  int photometric, colours, opacity, bits;
  bool fraction, tiles, planes;
  int Samples() const { return colours + (opacity != 0); }
};

double SampleAt(int x, int y, int sample) {
  return (x * 11 + y * 7 + sample * 29) % 64 / 63.0;
}

uint64_t Coded(double sample, const DeepKind& kind) {
  if (!kind.fraction) return static_cast<uint64_t>(std::llround(sample * (std::exp2(kind.bits) - 1)));
  if (kind.bits == 16) return std::bit_cast<uint16_t>(qfloat16(static_cast<float>(sample)));
  return kind.bits == 32 ? std::bit_cast<uint32_t>(static_cast<float>(sample))
                         : std::bit_cast<uint64_t>(sample);
}

void WriteDeep(const std::string& path, const DeepKind& kind, int width, int height) {
  TIFF* file = TIFFOpen(path.c_str(), "wl");
  const int columns = kind.tiles ? 16 : width, rows = kind.tiles ? 16 : 1;
  for (const auto& [tag, value] :
       {std::pair{TIFFTAG_IMAGEWIDTH, width},
        {TIFFTAG_IMAGELENGTH, height},
        {TIFFTAG_PHOTOMETRIC, kind.photometric},
        {TIFFTAG_SAMPLESPERPIXEL, kind.Samples()},
        {TIFFTAG_BITSPERSAMPLE, kind.bits},
        {TIFFTAG_SAMPLEFORMAT, kind.fraction ? SAMPLEFORMAT_IEEEFP : SAMPLEFORMAT_UINT},
        {TIFFTAG_COMPRESSION, COMPRESSION_ADOBE_DEFLATE},
        {TIFFTAG_PLANARCONFIG, kind.planes ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG},
        {kind.tiles ? TIFFTAG_TILEWIDTH : TIFFTAG_IMAGEWIDTH, columns},
        {kind.tiles ? TIFFTAG_TILELENGTH : TIFFTAG_ROWSPERSTRIP, rows}}) {
    TIFFSetField(file, static_cast<uint32_t>(tag), value);
  }
  const uint16_t opacity = static_cast<uint16_t>(kind.opacity);
  if (opacity != 0) TIFFSetField(file, TIFFTAG_EXTRASAMPLES, 1, &opacity);
  const int in_run = kind.planes ? 1 : kind.Samples();
  for (int plane = 0; plane < kind.Samples() / in_run; ++plane) {
    for (int left = 0, top = 0; top < height;
         left + columns < width ? left += columns : (left = 0, top += rows)) {
      Bytes run;
      for (int i = 0; i < rows * columns * in_run; ++i) {
        const int x = left + i / in_run % columns, y = top + i / in_run / columns;
        AppendNumber(run, Coded(SampleAt(x, y, plane + i % in_run), kind), kind.bits / 8);
      }
      const auto u = static_cast<uint32_t>(left), v = static_cast<uint32_t>(top);
      const auto sample = static_cast<uint16_t>(plane);
      kind.tiles ? TIFFWriteTile(file, run.data(), u, v, 0, sample)
                 : TIFFWriteScanline(file, run.data(), v, sample);
    }
  }
  TIFFClose(file);
}

QRgb DeepPixel(int x, int y, const DeepKind& kind) {
  const auto channel = [&](int i) {
    double value = SampleAt(x, y, kind.colours == 1 ? 0 : i);
    if (kind.photometric == PHOTOMETRIC_MINISWHITE) value = 1 - value;
    if (kind.photometric == PHOTOMETRIC_SEPARATED) value = (1 - value) * (1 - SampleAt(x, y, 3));
    const double opacity = kind.opacity == 0 ? 1 : SampleAt(x, y, kind.colours);
    if (kind.opacity == EXTRASAMPLE_UNASSALPHA) value *= opacity;
    return static_cast<int>(std::lround(255 * std::min(1.0, value + 1 - opacity)));
  };
  return qRgb(channel(0), channel(1), channel(2));
}

TEST(Pictures, TiffsOfDeepSamplesInEveryLayout) {
  const Folder folder;
  std::vector<DeepKind> kinds;
  for (const auto& [bits, fraction] :
       {std::pair{16, false}, {32, false}, {16, true}, {32, true}, {64, true}}) {
    for (const auto& [photometric, colours, opacity] : {std::tuple{PHOTOMETRIC_MINISBLACK, 1, 0},
                                                        {PHOTOMETRIC_MINISWHITE, 1, 0},
                                                        {PHOTOMETRIC_MINISBLACK, 1, EXTRASAMPLE_UNASSALPHA},
                                                        {PHOTOMETRIC_RGB, 3, 0},
                                                        {PHOTOMETRIC_RGB, 3, EXTRASAMPLE_UNASSALPHA},
                                                        {PHOTOMETRIC_RGB, 3, EXTRASAMPLE_ASSOCALPHA},
                                                        {PHOTOMETRIC_SEPARATED, 4, 0}}) {
      for (int layout = 0; layout < 4; ++layout) {
        kinds.push_back(
            {photometric, colours, opacity, bits, fraction, (layout & 1) != 0, (layout & 2) != 0});
      }
    }
  }
  for (const DeepKind& kind : kinds) {
    WriteDeep(folder.Path("deep.tif"), kind, 37, 20);
    QImage expected(37, 20, QImage::Format_RGB32);
    for (int i = 0; i < 37 * 20; ++i) expected.setPixel(i % 37, i / 37, DeepPixel(i % 37, i / 37, kind));
    // Half-precision numbers are off by up to 1 in 2,048.
    EXPECT_LE(Difference(LoadPicture(folder.Path("deep.tif")), expected), 1)
        << kind.bits << kind.fraction << " of kind " << kind.photometric << ' ' << kind.colours << ' '
        << kind.opacity << ", tiles and planes " << kind.tiles << kind.planes;
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
  const std::array<T::Transformation, 7> turns{T::TransformationMirror,   T::TransformationRotate180,
                                               T::TransformationFlip,     T::TransformationFlipAndRotate90,
                                               T::TransformationRotate90, T::TransformationMirrorAndRotate90,
                                               T::TransformationRotate270};
  for (uint32_t orientation = 2; orientation < 9; ++orientation) {
    const T::Transformations turn = turns[orientation - 2];
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
