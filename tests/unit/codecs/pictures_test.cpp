#include <gtest/gtest.h>
#include <tiffio.h>

#include <QColorSpace>
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

TEST(Pictures, FilesWithoutLossComeOutToTheBit) {
  const QImage sample = Sample(), mono = sample.convertToFormat(QImage::Format_Mono);
  for (const QImage& image : {sample, mono, sample.convertToFormat(QImage::Format_Indexed8),
                              sample.convertToFormat(QImage::Format_Grayscale8)}) {
    for (const char* format : {"png", "bmp", "tiff", "ico"})
      EXPECT_EQ(Difference(Encoded(image, format), image), 0) << format << image.format();
  }
  EXPECT_EQ(Difference(Mng(37, 23, Encoded(sample, "png")), sample), 0);
  EXPECT_EQ(Difference(Encoded(mono, "xbm"), mono), 0);
  const char* const interlaced = TEST_DATA "/pictures/interlaced.png";
  EXPECT_EQ(Difference(LoadPicture(interlaced), QImage(interlaced)), 0);
}

TEST(Pictures, JpegsComeOutAsTheLibraryDecodesThemByDefault) {
  const QImage colours = Sample(67, 41), grey = colours.convertToFormat(QImage::Format_Grayscale8);
  for (const QImage& image : {colours, grey}) {
    for (const bool progressive : {false, true}) {
      const Bytes jpeg = Encoded(image, "jpeg", 75, {}, progressive);
      const QImage by_qt = QImage::fromData(jpeg.data(), static_cast<int>(jpeg.size()), "jpeg");
      EXPECT_EQ(Difference(jpeg, by_qt), 0) << image.format() << progressive;
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
      std::vector<uint64_t> samples;
      for (int i = 0; i < rows * columns * in_run; ++i) {
        const int x = left + i / in_run % columns, y = top + i / in_run / columns, z = plane + i % in_run;
        samples.push_back(Coded((x * 11 + y * 7 + z * 29) % 64 / 63.0, kind));
      }
      Bytes run = Numbers(samples, kind.bits / 8);
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
  QImage clear(3, 1, QImage::Format_ARGB32);  // red, half see-through blue, and nothing at all
  clear.setPixelColor(0, 0, QColor(255, 0, 0));
  clear.setPixelColor(1, 0, QColor(0, 0, 255, 128));
  clear.setPixelColor(2, 0, QColor(10, 20, 30, 0));
  const Bytes png = Encoded(clear, "png"),
              deep = Encoded(clear.convertToFormat(QImage::Format_RGBA64), "png");
  for (const Bytes& file : {png, deep, Encoded(clear, "tiff"), Encoded(clear, "ico"), Mng(3, 1, png)})
    EXPECT_EQ(PixelsOf(file), (std::vector{kRed, 0xFF7F7FFFu, kWhitePixel}));
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
  int x = 0;
  for (const quint16 value : std::array<quint16, 3>{257 * 200, 257 * 200 + 128, 257 * 200 + 129})
    reinterpret_cast<QRgba64*>(deep.bits())[x++] = qRgba64(value, 0, 65535, 65535);
  for (const char* format : {"png", "tiff"})
    EXPECT_EQ(PixelsOf(Encoded(deep, format)), (std::vector{0xFFC800FFu, 0xFFC800FFu, 0xFFC900FFu}))
        << format;
}

/// A camera's note on how it was held.
Bytes Note(uint32_t orientation, bool big) {
  return Text(big ? "MM" : "II") + Numbers({42}, 2, big) + Numbers({8}, 4, big) +
         Numbers({1, 0x0112, 3}, 2, big) + Numbers({1}, 4, big) + Numbers({orientation, 0}, 2, big) +
         Numbers({0}, 4);
}

Bytes Turned(const Bytes& jpeg, uint32_t orientation, bool big) {
  const Bytes note = Bytes{0xFF, 0xE1, 0, 34} + Text("Exif") + Bytes{0, 0} + Note(orientation, big);
  return Part(jpeg, 0, 2) + note + Part(jpeg, 2, jpeg.size() - 2);
}

/// The note as text in lines of digits, as programs hid it before there was a chunk for it.
Bytes NoteAsText(uint32_t orientation) {
  const Bytes note = Text("Exif") + Bytes{0, 0} + Note(orientation, true);
  QByteArray digits =
      QByteArray(reinterpret_cast<const char*>(note.data()), static_cast<int>(note.size())).toHex();
  return Text("\nexif\n      " + std::to_string(note.size()) + "\n" + digits.insert(20, '\n').toStdString() +
              "\n");
}

TEST(Pictures, TheOrientationIsCarriedOut) {
  const QImage sample = Sample(67, 41);
  const Bytes png = Encoded(sample, "png"), jpeg = Encoded(sample, "jpeg", 75);
  const QImage lossy = QImage::fromData(jpeg.data(), static_cast<int>(jpeg.size()), "jpeg");
  using T = QImageIOHandler;
  for (uint32_t orientation = 2; orientation < 9; ++orientation) {
    const T::Transformations turn(
        std::array{1, 3, 2, 6, 4, 5, 7}[orientation - 2]);  // mirror, flip, rotate: 1, 2, 4
    const auto turned = [turn](const QImage& image) {
      const QImage mirrored = image.mirrored(turn & T::TransformationMirror, turn & T::TransformationFlip);
      return turn & T::TransformationRotate90 ? mirrored.transformed(QTransform().rotate(90)) : mirrored;
    };
    EXPECT_EQ(Difference(Encoded(sample, "tiff", -1, turn), turned(sample)), 0) << orientation;
    const Bytes key = Text("Raw profile type exif") + Bytes{0}, text = NoteAsText(orientation);
    for (const Bytes& chunk : {PngChunk("eXIf", Note(orientation, false)), PngChunk("tEXt", key + text),
                               PngChunk("zTXt", key + Bytes{0} + Packed(text))})
      EXPECT_EQ(Difference(WithChunk(png, chunk), turned(sample)), 0) << orientation;
    for (const bool big : {false, true}) {
      EXPECT_EQ(Difference(Turned(jpeg, orientation, big), turned(lossy)), 0) << orientation << big;
    }
  }
}

TEST(Pictures, ColourProfilesAreCarriedOutToTheScreensColours) {
  const QImage plain = Sample();
  const QImage deep = plain.convertToFormat(QImage::Format_RGBX64);
  for (const char* format : {"png", "tiff", "jpeg"}) {
    for (QImage image : {plain, deep}) {
      for (const auto space : {QColorSpace::SRgb, QColorSpace::AdobeRgb, QColorSpace::DisplayP3}) {
        image.setColorSpace(space);
        const Bytes file = Encoded(image, format, 100);
        QImage shown = QImage::fromData(file.data(), static_cast<int>(file.size()), format);
        shown.convertToColorSpace(QColorSpace::SRgb);
        EXPECT_LE(Difference(file, shown), space == QColorSpace::SRgb ? 0 : 2)
            << format << space << image.depth();
      }
    }
  }
  const Bytes broken = Text("name") + Bytes{0, 0} + Packed(Numbers({200, 0, 0, 0}, 4, true) + Bytes(184, 7));
  EXPECT_EQ(Difference(WithChunk(Encoded(plain, "png"), PngChunk("iCCP", broken)), plain), 0);
}

TEST(Pictures, AnimationsGiveTheirFirstFrameOnAWhiteScreen) {
  const Pixel w = kWhitePixel, r = kRed, g = kGreen, b = kBlue;
  EXPECT_EQ(PixelsOf(Gif()), (std::vector{w, w, w, w, w, w, r, g, b, w, w, w, r, g, w, w, w, w, w, w}));
  QImage canvas(9, 8, QImage::Format_RGB32);
  canvas.fill(Qt::white);
  QPainter(&canvas).drawImage(2, 5, Sample(4, 3));
  EXPECT_EQ(Difference(Mng(9, 8, Encoded(Sample(4, 3), "png"), 2, 5), canvas), 0);
}

TEST(Pictures, TellWhichKindOfFileWouldHoldAllThatWasRead) {
  const QImage sample = Sample();
  QImage icon(3, 2, QImage::Format_ARGB32), glass = icon;
  icon.fill(0), glass.fill(qRgba(9, 9, 9, 100));
  icon.setPixel(1, 1, qRgb(1, 2, 3));
  Bytes gif = Gif();
  gif[6] = 3, gif[8] = 2, gif[28] = gif[34] = gif[36] = 0;  // fills its screen, nothing see-through
  const Bytes jpeg = Encoded(sample, "jpeg");
  Bytes clear_gif = gif, bmp = BmpHeader(1, 1, 32, 6), pages = Encoded(sample, "tiff");
  clear_gif[28] = 1, bmp[10] += 16;
  bmp = bmp + Numbers({0xFF0000, 0xFF00, 0xFF, 0xFF000000, 0x7F000000}, 4);
  const size_t page = pages[4] | pages[5] << 8, next = page + 2 + 12 * size_t{pages[page]};
  const Bytes second = Part(pages, page, next - page) + Bytes(4);
  pages[next] = pages.size() & 0xFF, pages[next + 1] = static_cast<unsigned char>(pages.size() >> 8);
  const std::tuple<const char*, Bytes, WrittenKind> cases[] = {
      {"bmp", Encoded(sample, "bmp"), WrittenKind::Bitmap},
      {"jpeg", jpeg, WrittenKind::Jpeg},
      {"jpegs",
       Part(jpeg, 0, 2) + Bytes{0xFF, 0xE2, 0, 6} + Text("MPF") + Bytes{0} + Part(jpeg, 2, jpeg.size() - 2),
       WrittenKind::None},
      {"tiff", Encoded(sample, "tiff"), WrittenKind::Tiff},
      {"icon", Encoded(icon, "ico"), WrittenKind::Icon},
      {"gif", gif, WrittenKind::Gif},
      {"png", Encoded(sample, "png"), WrittenKind::None},
      {"see-through bmp", bmp, WrittenKind::None},
      {"see-through tiff", Encoded(glass, "tiff"), WrittenKind::None},
      {"see-through icon", Encoded(glass, "ico"), WrittenKind::None},
      {"icon without a mask", Encoded(sample.copy(0, 0, 9, 9), "ico"), WrittenKind::None},
      {"large icon", Encoded(icon.scaled(40, 40), "ico"), WrittenKind::None},
      {"see-through gif", clear_gif, WrittenKind::None},
      {"gif on a larger screen", Gif(), WrittenKind::None},
      {"animated gif", Part(gif, 0, 50) + Part(gif, 33, gif.size() - 33), WrittenKind::None},
      {"deep tiff", Encoded(sample.convertToFormat(QImage::Format_RGBX64), "tiff"), WrittenKind::None},
      {"pages", pages + second, WrittenKind::None}};
  for (const auto& [name, bytes, kind] : cases) {
    const auto picture = DecodePicture({bytes.data(), bytes.size()}, LimitByMemory());
    EXPECT_TRUE(picture && picture->whole_as == kind) << name;
  }
  EXPECT_EQ(LoadPicture(TEST_DATA "/pictures/cmyk.jpg")->file.whole_as, WrittenKind::None);
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
