#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <random>

#include "codecs/PictureSamples.h"
#include "components/ImgEdit.h"
#include "components/PicFormat32.h"
#include "document/window/BuildIcon.h"
#include "surface/codecs/PictureEncoder.h"
#include "surface/system/desktop/ImageBitmap.h"

namespace zelvane::test {
namespace {

using Writer = std::function<bool(const Bitmap&, const PieceSink&)>;

Bytes Written(const Writer& write, const Bitmap& picture) {
  Bytes file;
  EXPECT_TRUE(write(picture, [&](const void* bytes, size_t count) {
    const auto* at = static_cast<const unsigned char*>(bytes);
    return file.insert(file.end(), at, at + count), true;
  }));
  return file;
}

Writer Jpeg(double compression) {
  return [=](const Bitmap& picture, const PieceSink& sink) { return EncodeJpeg(picture, compression, sink); };
}

bool Icon(const Bitmap& picture, const PieceSink& sink) {
  const IconParts icon = BuildIcon(picture);
  return EncodeIco(icon.picImage, icon.picMask, sink);
}

QImage ByQt(const Bytes& file, const char* format) {
  return QImage::fromData(file.data(), static_cast<int>(file.size()), format);
}

/// Pixels by chance out of so many colours, the same ones in every run.
Bitmap Noise(int width, int height, uint32_t colours) {
  std::mt19937 random(width * 31 + colours);
  Bitmap bitmap(width, height, 0);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      bitmap.WritableRow(y)[x] = 0xFF000000u | (random() % colours * 0x9E3779B1u & 0xFFFFFF);
  return bitmap;
}

TEST(Writers, GiveUpWhereTheSinkRefuses) {
  const Bitmap picture = Noise(900, 900, 1 << 24);
  for (const auto& [kind, write] : std::map<std::string, Writer>{
           {"gif", EncodeGif}, {"jpeg", Jpeg(20)}, {"tiff", EncodeTiff}, {"icon", Icon}}) {
    int pieces = 0;
    EXPECT_FALSE(write(picture, [&](const void*, size_t) { return ++pieces < 2; })) << kind;
    EXPECT_EQ(pieces, 2) << kind;
    EXPECT_TRUE(kind == "icon" || !write(Bitmap(), [](const void*, size_t) { return true; })) << kind;
  }
}

TEST(Writers, TiffsReadBackToTheBit) {
  // Rows that fill a strip alone, and several strips.
  for (const auto& [width, height] : {std::pair{2, 1}, {3, 500}, {1000, 301}, {32767, 4}}) {
    const QImage sample = Sample(width, height + 1).copy(0, 0, width, height);
    const Bytes file = Written(EncodeTiff, *Decoded(Encoded(sample, "bmp")));
    EXPECT_EQ(ByQt(file, "tiff").convertToFormat(QImage::Format_RGB32), sample) << width;
    EXPECT_EQ(Difference(file, sample), 0) << width;
  }
}

TEST(Writers, MoreCompressionGivesASmallerJpeg) {
  const Bitmap picture = *Decoded(Encoded(Sample(160, 120), "png"));
  std::map<double, Bytes> files;
  files[20] = Written(Jpeg(20), picture);
  for (int compression = 21; compression <= 130; ++compression) {
    files[compression] = Written(Jpeg(compression), picture);
    EXPECT_LT(files[compression].size(), files[compression - 1].size()) << compression;
  }
  EXPECT_EQ(Written(Jpeg(-5), picture), files[20]);
  EXPECT_EQ(Written(Jpeg(1e9), picture), files[130]);
  EXPECT_LE(Difference(files[20], ImageOf(picture)), 4);
  EXPECT_EQ(Difference(files[65], ByQt(files[65], "jpeg")), 0);

  const Folder folder;
  for (const auto& [text, compression] : std::map<std::string, double>{
           {"20", 20}, {"47.0", 47}, {"131", 130}, {"", 65}, {"65%", 65}, {"good", 65}, {"nan", 65}}) {
    ASSERT_TRUE(PicFormat32::ConvertToJpeg(picture, folder.Path("p"), text).Done());
    EXPECT_EQ(FileStart(folder.Path("p"), 1 << 20), files[compression]) << text;
  }
}

TEST(Writers, AnIconIsClearWhereItHasTheColourOfItsFirstPixel) {
  QImage large(33, 40, QImage::Format_RGB32), small(2, 3, QImage::Format_RGB32);
  for (QImage* image : {&large, &small}) {
    image->fill(qRgb(1, 2, 3));
    image->setPixel(1, 2, qRgb(255, 0, 9));
  }
  large.setPixel(31, 31, qRgb(0, 0, 0));
  large.setPixel(32, 0, qRgb(9, 9, 9));  // beyond the icon
  for (const QImage& image : {large, small}) {
    const QImage icon = ByQt(Written(Icon, *Decoded(Encoded(image, "bmp"))), "ico");
    ASSERT_EQ(icon.size(), QSize(32, 32));
    for (int y = 0; y < 32; ++y)
      for (int x = 0; x < 32; ++x) {
        const bool shown = image.valid(x, y) && image.pixel(x, y) != image.pixel(0, 0);
        ASSERT_EQ(icon.pixel(x, y), shown ? image.pixel(x, y) : 0) << x << ' ' << y;
      }
  }
}

TEST(Writers, GifsOfUpTo256ColoursReadBackToTheBit) {
  for (const uint32_t colours : {1, 2, 3, 16, 17, 255, 256}) {
    const Bitmap picture = Noise(97, 61, colours);
    const Bytes file = Written(EncodeGif, picture);
    EXPECT_TRUE(Decoded(file) == picture) << colours;
    EXPECT_EQ(ByQt(file, "gif").convertToFormat(QImage::Format_RGB32), ImageOf(picture)) << colours;
    // No more room for colours than the next power of two.
    const uint32_t table = 2u << (file[10] & 7);
    EXPECT_TRUE(table >= colours && (table < 2 * colours || table == 2)) << colours;
  }
  std::mt19937 random(1);
  for (int i = 0; i < 300; ++i) {
    const Bitmap picture =
        Noise(1 + static_cast<int>(random() % 300), 1 + static_cast<int>(random() % 40), 1 + random() % 256);
    ASSERT_TRUE(Decoded(Written(EncodeGif, picture)) == picture) << i;
  }
}

/// The means of squares of 8 x 8 pixels, by channel.
std::vector<double> Means(const Bitmap& picture) {
  std::vector<double> means;
  for (int top = 0; top + 8 <= picture.Height(); top += 8)
    for (int left = 0; left + 8 <= picture.Width(); left += 8)
      for (const int shift : {0, 8, 16}) {
        double sum = 0;
        for (int i = 0; i < 64; ++i) sum += picture.Row(top + i / 8)[left + i % 8] >> shift & 0xFF;
        means.push_back(sum / 64);
      }
  return means;
}

TEST(Writers, GifsOfMoreColoursKeepTheMeansOfAreas) {
  for (const auto& [width, height] : {std::pair{400, 301}, {301, 17}, {2000, 8}}) {
    Bitmap picture(width, height, 0);
    for (int i = 0; i < width * height; ++i) {
      const uint32_t red = i % width * 255 / width, green = i / width * 255 / height;
      picture.WritableRow(0)[i] = 0xFF000040u | red << 16 | green << 8;
    }
    const auto before = Means(picture), after = Means(*Decoded(Written(EncodeGif, picture)));
    ASSERT_EQ(before.size(), after.size());
    double off = 0;
    for (size_t i = 0; i < before.size(); ++i) off += std::abs(before[i] - after[i]);
    EXPECT_LT(off / static_cast<double>(before.size()), 0.7) << width;
  }
  // One row, one column, and fewer rows than are worked on side by side.
  for (const auto& [width, height] : {std::pair{20000, 1}, {1, 20000}, {5000, 3}}) {
    const auto read = Decoded(Written(EncodeGif, Noise(width, height, 1 << 24)));
    EXPECT_TRUE(read && read->Width() == width && read->Height() == height);
  }
}

TEST(Writers, AGifOfAFewColoursTooManyHasNoSpeckles) {
  Bitmap picture(256, 64, 0);
  for (int y = 0; y < 64; ++y)
    for (uint32_t x = 0; x < 256; ++x) picture.WritableRow(y)[x] = 0xFF000000u | x * 0x010101u;
  for (uint32_t x = 0; x < 40; ++x) picture.WritableRow(30)[x] = kRed - (x << 16);
  const Bitmap read = *Decoded(Written(EncodeGif, picture));
  EXPECT_LE(Difference(read, ImageOf(picture)), 3);
  Bitmap flat(300, 300, 0xFF3C6496u);  // with smooth edges of thousands of colours round the area
  for (int y = 0; y < 20; ++y) std::copy_n(Noise(300, 1, 1 << 24).Row(0), 300, flat.WritableRow(y));
  const Bitmap flat_read = *Decoded(Written(EncodeGif, flat));
  for (int y = 20; y < 300; ++y)
    for (int x = 0; x < 300; ++x) ASSERT_EQ(flat_read.Row(y)[x], 0xFF3C6496u) << x << ' ' << y;
}

}  // namespace
}  // namespace zelvane::test
