#include <gtest/gtest.h>

#include <cstdlib>

#include "codecs/PictureSamples.h"
#include "surface/codecs/IconLibrary.h"
#include "surface/system/files/Files.h"

namespace zelvane::test {
namespace {

constexpr Pixel kGround = 0xFF102030u, kGrey = 0xFF405060u;

std::string Program(const char* name) {
  return TEST_DATA "/programs/" + std::string(name);
}

RangeReader In(const Bytes& bytes) {
  return [&bytes](uint64_t at, size_t count) {
    return at < bytes.size() ? Part(bytes, at, std::min(count, bytes.size() - at)) : Bytes{};
  };
}

/// What makes a triangle drawn from a picture of that side.
struct Triangle {
  Pixel colour;
  int side;
};

/// Pixels that are neither its colour nor ground where they should be. Those on the slope of one that was
/// made smaller are a mixture.
int Faults(const std::optional<Bitmap>& icon, const Triangle& expected) {
  if (!icon || icon->Width() != 32 || icon->Height() != 32) return -1;
  int faults = 0;
  for (int y = 0; y < 32; ++y)
    for (int x = 0; x < 32; ++x) {
      if (expected.side > 32 && std::abs(x - y) < 2) continue;
      const bool is_drawn = x * expected.side / 32 > y * expected.side / 32;
      faults += icon->Row(y)[x] != (is_drawn ? expected.colour : kGround);
    }
  return faults;
}

TEST(Programs, IconsAreDrawnFromThePictureThatSuits) {
  const Pixel half = 0xFF881018u;  // red at 128 of 255 on the ground
  const Triangle expected[] = {{kGreen, 32}, {kBlue, 32}, {kGreen, 48}, {kGrey, 8}, {kGrey, 8},
                               {kGrey, 8},   {kGrey, 8},  {kGrey, 8},   {half, 8},  {kGrey, 8}};
  for (const char* name : {"icons.dll", "icons.exe"}) {
    const IconLibrary icons(RangesOf(Program(name)));
    ASSERT_EQ(icons.Count(), std::ssize(expected)) << name;
    for (int i = 0; i < icons.Count(); ++i) EXPECT_EQ(Faults(icons.Draw(i, kGround), expected[i]), 0) << i;
    EXPECT_FALSE(icons.Draw(-1, kGround) || icons.Draw(icons.Count(), kGround));
  }
}

TEST(Programs, AnIconFileIsOneIconWhateverItsName) {
  const Bytes small = Encoded(Sample(16, 16), "ico"), dib = Part(small, 22, small.size() - 22),
              fitting = Encoded(Sample(32, 32), "png"), large = Encoded(Sample(48, 48), "png");
  const size_t places[] = {54, 54 + dib.size(), 54 + dib.size() + large.size()};
  const Bytes file = Numbers({0, 1, 3}, 2) + Bytes{16, 16, 0, 0, 1, 0, 32, 0} +
                     Numbers({dib.size(), places[0]}, 4) + Bytes{48, 48, 0, 0, 1, 0, 32, 0} +
                     Numbers({large.size(), places[1]}, 4) + Bytes{32, 32, 0, 0, 1, 0, 32, 0} +
                     Numbers({fitting.size(), places[2]}, 4) + dib + large + fitting;
  const Folder folder;
  const IconLibrary icons(RangesOf(folder.Put("icon.dll", {file.begin(), file.end()})));
  EXPECT_EQ(icons.Count(), 1);
  EXPECT_EQ(Difference(icons.Draw(0, kGround), Sample(32, 32)), 0);
}

TEST(Programs, OnlyWhatIsAskedForIsRead) {
  const RangeReader file = RangesOf(Program("icons.dll"));
  size_t read = 0;
  const IconLibrary icons([&](uint64_t at, size_t count) {
    const Bytes part = file(at, count);
    read += part.size();
    return part;
  });
  EXPECT_LT(read, 1024u) << "to list";
  icons.Draw(0, kGround);
  EXPECT_LT(read, 2048u) << "and to draw one";
}

/// The 64-bit program; its tree begins with a header of 16 bytes and the entries of both types.
struct DamagedPrograms : testing::Test {
  static constexpr size_t kTree = 0xA00, kGroupsEntry = kTree + 16 + 8;
  void Write(uint64_t value, int size, size_t at) {
    const Bytes written = Numbers({value}, size);
    std::copy(written.begin(), written.end(), program.begin() + static_cast<ptrdiff_t>(at));
  }
  /// Where the tree leads to by the entry's second number.
  size_t Follow(size_t entry) const {
    return kTree + (ByteView(program.data(), program.size()).Little32(entry + 4) & 0x7FFFFFFF);
  }
  Bytes program = RangesOf(Program("icons.dll"))(0, SIZE_MAX);
  const size_t groups = Follow(kGroupsEntry), first_data = Follow(Follow(groups + 16) + 16);
};

TEST_F(DamagedPrograms, HoldWhatCanBeFound) {
  const Triangle second{kBlue, 32};
  const struct {
    const char* what;
    uint64_t value;
    int size;
    size_t at;
  } cases[] = {{"another level", 0x80000000, 4, groups + 16 + 4},
               {"data beyond the file", 0x7FFFFFF0, 4, groups + 16 + 4},
               {"an address in no section", 0x7FFFFFF0, 4, first_data},
               {"a size of 4 GB", 0xFFFFFFFF, 4, first_data + 4}};
  const Bytes whole = program;
  for (const auto& [what, value, size, at] : cases) {
    program = whole;
    Write(value, size, at);
    const IconLibrary icons(In(program));
    EXPECT_EQ(icons.Count(), 10) << what;
    EXPECT_FALSE(icons.Draw(0, kGround)) << what;
    EXPECT_EQ(Faults(icons.Draw(1, kGround), second), 0) << what;
  }
  program = whole;
  Write(0xFFFF, 2, groups + 14);
  EXPECT_LT(IconLibrary(In(program)).Count(), std::ssize(program) / 8) << "entries without end";
  EXPECT_EQ(Faults(IconLibrary(In(program)).Draw(1, kGround), second), 0);
  Write(0x80000000, 4, kGroupsEntry + 4);
  const IconLibrary circle(In(program));
  EXPECT_EQ(circle.Count(), 2) << "the groups are the types again";
  EXPECT_FALSE(circle.Draw(0, kGround) || circle.Draw(1, kGround));
}

TEST_F(DamagedPrograms, AreReadToTheirEnd) {
  const Bytes whole = program;
  for (size_t at = 0; at < first_data + 64; ++at)
    for (const bool cut : {false, true}) {
      program = cut ? Part(whole, 0, at) : whole;
      if (!cut) program[at] = 0xFF;
      const IconLibrary icons(In(program));
      ASSERT_LE(icons.Count(), std::ssize(program) / 8) << at;
      for (const int index : {0, icons.Count() - 1}) icons.Draw(index, kGround);
    }
}

}  // namespace
}  // namespace zelvane::test
