#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <map>

#include "codecs/PictureSamples.h"
#include "surface/codecs/PictureDecoder.h"
#include "surface/system/files/PictureFile.h"

namespace zelvane::test {
namespace {

std::map<std::string, Bytes> OneOfEachKind() {
  const QImage sample = Sample();
  std::map<std::string, Bytes> files;
  for (const char* format : {"png", "jpeg", "bmp", "tiff", "ico"}) files[format] = Encoded(sample, format);
  files["xbm"] = Encoded(sample.convertToFormat(QImage::Format_Mono), "xbm");
  files["gif"] = Gif();
  files["mng"] = Mng(37, 23, files["png"], 0, 0);
  Bytes runs = BmpHeader(2, 2, 8, 1, 1);
  for (const unsigned char byte : {0, 0, 0, 0, 2, 0, 0, 0, 2, 0, 0, 1}) runs.push_back(byte);
  files["rle"] = runs;
  return files;
}

TEST(DamagedPictures, NoFileThatWasCutShortOpens) {
  for (const auto& [kind, bytes] : OneOfEachKind()) {
    ASSERT_TRUE(Decoded(bytes)) << kind;
    for (const Bytes& cut : Cuts(bytes)) {
      // The runs' last bytes only say that nothing follows; so does a mark at the end of an animation.
      EXPECT_FALSE(Decoded(cut)) << kind << " of " << bytes.size() << " cut to " << cut.size();
    }
  }
}

TEST(DamagedPictures, SpoiltDataIsNoticedButStrayBytesAreNot) {
  Bytes jpeg = Encoded(Sample(200, 200), "jpeg", 90);
  Bytes stray = jpeg;
  stray.insert(stray.begin() + 20, 5, 0x00);  // behind the first segment
  EXPECT_TRUE(Decoded(stray));
  // A code that no table has, and an end within the data.
  Bytes spoilt = jpeg;
  for (size_t i = 0; i < 40; ++i) spoilt[spoilt.size() / 2 + i] = i % 2 ? 0x00 : 0xFF;
  EXPECT_FALSE(Decoded(spoilt));
  Bytes ended(jpeg.begin(), jpeg.begin() + static_cast<ptrdiff_t>(jpeg.size() / 2));
  ended.push_back(0xFF);
  ended.push_back(0xD9);
  EXPECT_FALSE(Decoded(ended));

  Bytes png = Encoded(Sample(), "png");
  png[png.size() / 2] ^= 0x10;
  EXPECT_FALSE(Decoded(png));
  Bytes gif = Gif();
  gif[gif.size() - 6] = 0xFF;  // a code beyond the table
  EXPECT_FALSE(Decoded(gif));
}

TEST(DamagedPictures, HugeClaimsFailBeforeAnythingIsAllocated) {
  constexpr uint32_t kHuge = 100000;
  Bytes png = Encoded(Sample(), "png"), header;
  AppendNumber(header, kHuge, 4, true);
  AppendNumber(header, kHuge, 4, true);
  for (const unsigned char byte : {8, 2, 0, 0, 0}) header.push_back(byte);
  Bytes large = png;
  large.resize(8);
  AppendChunk(large, "IHDR", header);
  large.insert(large.end(), png.begin() + 33, png.end());
  EXPECT_FALSE(Decoded(large));
  EXPECT_FALSE(Decoded(Mng(kHuge, kHuge, png, 0, 0)));
  EXPECT_FALSE(Decoded(Mng(37, 23, large, 0, 0)));

  for (const uint32_t compression : {0u, 1u}) {
    Bytes bmp = BmpHeader(kHuge, kHuge, compression ? 8 : 24, compression);
    for (const unsigned char byte : {0, 1}) bmp.push_back(byte);
    EXPECT_FALSE(Decoded(bmp));
  }
  Bytes gif = Gif();
  gif[6] = gif[7] = gif[8] = gif[9] = 0xFF;
  EXPECT_FALSE(Decoded(gif));

  Bytes tiff = Encoded(Sample(), "tiff");
  const size_t entries = tiff[4] | static_cast<size_t>(tiff[5]) << 8;
  for (size_t at = entries + 2; at + 12 <= tiff.size(); at += 12) {
    const int tag = tiff[at] | tiff[at + 1] << 8;
    if (tag != 256 && tag != 257) continue;
    for (size_t i = 0; i < 4; ++i) tiff[at + 8 + i] = static_cast<unsigned char>(kHuge >> 8 * i);
    tiff[at + 2] = 4;  // a number of 32 bits
  }
  EXPECT_FALSE(Decoded(tiff));

  Bytes icon = Encoded(Sample(), "ico");
  for (const size_t at : {22 + 4, 22 + 8}) icon[at] = icon[at + 1] = icon[at + 2] = 0x7F;
  EXPECT_FALSE(Decoded(icon));
  Bytes xbm;
  AppendText(xbm, "#define a_width 100000\n#define a_height 100000\nchar a_bits[] = {0x00};");
  EXPECT_FALSE(Decoded(xbm));
}

TEST(DamagedPictures, WhatThePictureMayTakeIsLimited) {
  const Bytes png = Encoded(Sample(10, 10), "png"), gif = Gif(), bmp = Encoded(Sample(10, 10), "bmp");
  for (const Bytes* file : {&png, &bmp}) {
    EXPECT_TRUE(DecodePicture({file->data(), file->size()}, {100}));
    EXPECT_FALSE(DecodePicture({file->data(), file->size()}, {99}));
  }
  EXPECT_FALSE(DecodePicture({gif.data(), gif.size()}, {19}));
}

TEST(DamagedPictures, WhatIsNoPictureFileFails) {
  const Folder folder;
  const auto write = [&](const std::string& name, const std::string& text) {
    std::ofstream(folder.Path(name)) << text;
    return folder.Path(name);
  };
  EXPECT_FALSE(LoadPicture(folder.Path("missing.png")));
  EXPECT_FALSE(LoadPicture(folder.Path("")));
  EXPECT_FALSE(LoadPicture(write("empty.png", "")));
  EXPECT_FALSE(LoadPicture(write("text.png", "No picture at all.")));
  EXPECT_FALSE(
      LoadPicture(write("drawing.png", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>")));
  EXPECT_FALSE(LoadPicture("/dev/zero"));
  // Nobody writes into the pipe: a reader that waited would wait for ever.
  ASSERT_EQ(::mkfifo(folder.Path("pipe.png").c_str(), 0600), 0);
  EXPECT_FALSE(LoadPicture(folder.Path("pipe.png")));
  // The bytes decide, not the name.
  const Bytes png = Encoded(Sample(), "png");
  EXPECT_EQ(Difference(LoadPicture(write("wrong.tif", {png.begin(), png.end()})), Sample()), 0);
}

TEST(DamagedPictures, ReadersKeepQuiet) {
  Bytes png = Encoded(Sample(), "png");
  png[png.size() / 2] ^= 0x10;
  Bytes jpeg = Encoded(Sample(), "jpeg");
  std::fill(jpeg.end() - 200, jpeg.end() - 100, 0x55);
  testing::internal::CaptureStderr();
  Decoded(jpeg);
  Decoded(png);
  qWarning("heard");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "heard\n");
}

}  // namespace
}  // namespace zelvane::test
