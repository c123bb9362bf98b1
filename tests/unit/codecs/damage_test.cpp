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

/// The file with the number put in at each place.
Bytes Claiming(Bytes bytes, uint64_t number, int count, std::initializer_list<size_t> places,
               bool big_endian = false) {
  Bytes claim;
  AppendNumber(claim, number, count, big_endian);
  for (const size_t at : places)
    std::copy(claim.begin(), claim.end(), bytes.begin() + static_cast<ptrdiff_t>(at));
  return bytes;
}

/// Where the value of a tag of the first page stands, in Intel's byte order.
size_t PlaceOf(uint32_t tag, const Bytes& tiff) {
  const ByteView view(tiff.data(), tiff.size());
  for (size_t at = view.Little32(4) + 2; at + 12 <= tiff.size(); at += 12) {
    if (view.Little16(at) == tag) return at + 8;
  }
  return 0;
}

TEST(DamagedPictures, HugeClaimsFailBeforeAnythingIsAllocated) {
  constexpr uint32_t kHuge = 30000;
  const SizeLimit limit{int64_t{kHuge} * kHuge - 1};
  const Bytes png = Encoded(Sample(), "png"), jpeg = Encoded(Sample(), "jpeg"),
              tiff = Encoded(Sample(), "tiff");
  const ByteView in_jpeg(jpeg.data(), jpeg.size());
  size_t frame = 2;
  while (in_jpeg.Big16(frame) != 0xFFC0) frame += 2 + in_jpeg.Big16(frame + 2);
  Bytes header;
  AppendNumber(header, kHuge, 4, true);
  AppendNumber(header, kHuge, 4, true);
  for (const unsigned char byte : {8, 2, 0, 0, 0}) header.push_back(byte);
  Bytes large(png.begin(), png.begin() + 8), xbm;
  AppendChunk(large, "IHDR", header);
  large.insert(large.end(), png.begin() + 33, png.end());
  AppendText(xbm, "#define a_width 30000\n#define a_height 30000\nchar a_bits[] = {0x00};");
  const std::map<std::string, Bytes> files{
      {"png", large},
      {"mng", Mng(kHuge, kHuge, png, 0, 0)},
      {"png in mng", Mng(37, 23, large, 0, 0)},
      {"jpeg", Claiming(jpeg, kHuge << 16 | kHuge, 4, {frame + 5}, true)},
      {"bmp", BmpHeader(kHuge, kHuge, 24, 0)},
      {"rle", BmpHeader(kHuge, kHuge, 8, 1)},
      {"gif", Claiming(Gif(), kHuge, 2, {6, 8})},
      {"tiff", Claiming(tiff, kHuge, 4, {PlaceOf(256, tiff), PlaceOf(257, tiff)})},
      {"ico", Claiming(Encoded(Sample(), "ico"), 2 * kHuge, 4, {22 + 4, 22 + 8})},
      {"xbm", xbm}};
  for (const auto& [kind, bytes] : files) {
    EXPECT_FALSE(DecodePicture({bytes.data(), bytes.size()}, limit)) << kind;
  }
}

TEST(DamagedPictures, WhatThePictureMayTakeIsLimited) {
  for (const char* format : {"png", "bmp", "jpeg", "tiff", "ico"}) {
    const Bytes file = Encoded(Sample(10, 10), format);
    EXPECT_TRUE(DecodePicture({file.data(), file.size()}, {100})) << format;
    EXPECT_FALSE(DecodePicture({file.data(), file.size()}, {99})) << format;
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
