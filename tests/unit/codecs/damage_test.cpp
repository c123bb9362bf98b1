#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
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
  files["mng"] = Mng(37, 23, files["png"]);
  files["rle"] = BmpHeader(2, 2, 8, 1, 1) + Bytes{0, 0, 0, 0, 2, 0, 0, 0, 2, 0, 0, 1};
  return files;
}

TEST(DamagedPictures, NoFileThatWasCutShortOpensAndReadersKeepQuiet) {
  testing::internal::CaptureStderr();
  for (const auto& [kind, bytes] : OneOfEachKind()) {
    EXPECT_TRUE(Decoded(bytes)) << kind;
    // The runs' last bytes only say that nothing follows; so does a mark at the end of an animation.
    const size_t end = bytes.size() - 8;
    for (size_t size = 0; size < end; size += bytes.size() / 50 + 1)
      EXPECT_FALSE(Decoded(Part(bytes, 0, size))) << kind << " of " << bytes.size() << " cut to " << size;
    Bytes spoilt = bytes;
    std::fill(spoilt.begin() + spoilt.size() / 2, spoilt.end() - 8, 0x55);
    Decoded(spoilt);
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
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
    EXPECT_FALSE(Decoded(Part(jpeg, 0, jpeg.size() / 2) + Bytes{0xFF, 0xD9}));
  }
  Bytes png = Encoded(Sample(), "png");
  png[png.size() / 2] ^= 0x10;
  EXPECT_FALSE(Decoded(png));
  Bytes gif = Gif();
  gif[gif.size() - 6] = 0xFF;  // a code beyond the table
  EXPECT_FALSE(Decoded(gif));
}

TEST(DamagedPictures, WhatLeavesPixelsUnsetIsDamageAndWhatComesBehindThemIsNot) {
  const Bytes colour(4, 0), runs = BmpHeader(2, 2, 8, 1, 1) + colour;
  EXPECT_TRUE(Decoded(runs + Bytes{2, 0, 0, 0, 3, 0, 0, 1}));   // a run beyond the edge
  EXPECT_TRUE(Decoded(runs + Bytes{0, 2, 1, 1, 1, 0, 0, 1}));   // a jump over three pixels
  EXPECT_FALSE(Decoded(runs + Bytes{3, 0, 0, 0, 1, 0, 0, 1}));  // a run into the next row, and one too short
  EXPECT_FALSE(Decoded(runs + Bytes{2, 0, 0, 0, 2, 1, 0, 1}));  // a colour that isn't there
  EXPECT_FALSE(Decoded(runs + Bytes{2, 0, 0, 1}));              // an end before the last row
  EXPECT_FALSE(Decoded(BmpHeader(2, 1, 8, 0, 1) + colour + Bytes{0, 1, 0, 0}));
  const Bytes gif = Gif();
  EXPECT_TRUE(Decoded(Part(gif, 0, gif.size() - 2)));
  EXPECT_TRUE(Decoded(Part(gif, 0, gif.size() - 1) + Bytes{0x2C, 0, 0}));
}

TEST(DamagedPictures, AnAnimationMayPromiseAnOpacityThatIsntThere) {
  const Bytes jpeg = Encoded(Sample(), "jpeg"), size = Numbers({37, 23}, 4, true),
              mng =
                  Bytes{0x8A, 'M', 'N', 'G', '\r', '\n', 0x1A, '\n'} + PngChunk("MHDR", size + Bytes(20, 0));
  const auto with = [&](unsigned char kind, const Bytes& opacity) {
    return mng + PngChunk("JHDR", size + Bytes{kind, 8, 8, 0, 8, 8, 0, 0}) + PngChunk("JDAT", jpeg) +
           opacity + PngChunk("IEND", {}) + PngChunk("MEND", {});
  };
  EXPECT_TRUE(Decoded(with(10, {})));
  EXPECT_TRUE(Decoded(with(14, PngChunk("JDAA", jpeg))));
  EXPECT_FALSE(Decoded(with(14, {})));
}

TEST(DamagedPictures, ReadersTellHowFarTheyAreAndStopWhenTold) {
  for (const auto& [kind, bytes] : OneOfEachKind()) {
    ReadingWatch watch, stopped;
    EXPECT_TRUE(DecodePicture({bytes.data(), bytes.size()}, LimitByMemory(), watch)) << kind;
    EXPECT_GT(watch.Progress(), 0) << kind;
    stopped.Stop();
    EXPECT_FALSE(DecodePicture({bytes.data(), bytes.size()}, LimitByMemory(), stopped)) << kind;
  }
}

TEST(DamagedPictures, LargerOnesThanAdmittedAreRefused) {
  auto files = OneOfEachKind();
  files["png in mng"] = Mng(1, 1, files["png"]);
  for (const auto& [kind, bytes] : files) {
    const auto picture = Decoded(files.at(kind == "png in mng" ? "png" : kind));
    const int64_t pixels = int64_t{picture->Width()} * picture->Height();
    EXPECT_FALSE(DecodePicture({bytes.data(), bytes.size()}, {pixels - 1})) << kind;
    EXPECT_TRUE(DecodePicture({bytes.data(), bytes.size()}, {2 * pixels})) << kind;
  }
}

TEST(DamagedPictures, WhatIsNoPictureFileFails) {
  const Folder folder;
  const Bytes png = Encoded(Sample(), "png");
  for (const std::string& path :
       {folder.Path("missing.png"), folder.Path(""), folder.Put("empty.png", ""),
        folder.Put("text.png", "No picture at all."),
        folder.Put("drawing.png", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>"),
        std::string("/dev/zero")})
    EXPECT_FALSE(LoadPicture(path)) << path;
  // Nobody writes into the pipe: a reader that waited would wait for ever.
  ASSERT_EQ(::mkfifo(folder.Path("pipe.png").c_str(), 0600), 0);
  EXPECT_FALSE(LoadPicture(folder.Path("pipe.png")));
  // The bytes decide, not the name.
  EXPECT_EQ(Difference(LoadPicture(folder.Put("wrong.tif", {png.begin(), png.end()})), Sample()), 0);
}

}  // namespace
}  // namespace zelvane::test
