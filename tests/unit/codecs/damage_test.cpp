#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
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
  files["progressive"] = Encoded(sample, "jpeg", 90, {}, true);
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
  for (const bool progressive : {false, true}) {
    const Bytes jpeg = Encoded(Sample(200, 200), "jpeg", 90, {}, progressive);
    Bytes stray = jpeg;
    stray.insert(stray.begin() + 20, 5, 0x00);  // behind the first segment
    EXPECT_TRUE(Decoded(stray));
    // A code that no table has, and an end within the data; the stray bytes are told of first.
    Bytes spoilt = stray;
    for (size_t i = 0; i < 40; ++i) spoilt[spoilt.size() / 2 + i] = i % 2 ? 0x00 : 0xFF;
    EXPECT_FALSE(Decoded(spoilt));
    Bytes ended(jpeg.begin(), jpeg.begin() + static_cast<ptrdiff_t>(jpeg.size() / 2));
    ended.insert(ended.end(), {0xFF, 0xD9});
    EXPECT_FALSE(Decoded(ended));
  }
  Bytes png = Encoded(Sample(), "png");
  png[png.size() / 2] ^= 0x10;
  EXPECT_FALSE(Decoded(png));
  Bytes gif = Gif();
  gif[gif.size() - 6] = 0xFF;  // a code beyond the table
  EXPECT_FALSE(Decoded(gif));
}

TEST(DamagedPictures, LargerOnesThanAdmittedAreRefused) {
  auto files = OneOfEachKind();
  files["png in mng"] = Mng(1, 1, files["png"], 0, 0);
  for (const auto& [kind, bytes] : files) {
    const auto picture = Decoded(files.at(kind == "png in mng" ? "png" : kind));
    const int64_t pixels = int64_t{picture->Width()} * picture->Height();
    EXPECT_FALSE(DecodePicture({bytes.data(), bytes.size()}, {pixels - 1})) << kind;
    EXPECT_TRUE(DecodePicture({bytes.data(), bytes.size()}, {2 * pixels})) << kind;
  }
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
  testing::internal::CaptureStderr();
  for (const auto& [kind, bytes] : OneOfEachKind()) {
    for (const Bytes& cut : Cuts(bytes)) Decoded(cut);
    Bytes spoilt = bytes;
    std::fill(spoilt.begin() + spoilt.size() / 2, spoilt.end() - 8, 0x55);
    Decoded(spoilt);
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace zelvane::test
