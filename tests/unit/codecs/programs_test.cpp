#include <gtest/gtest.h>

#include <cstdlib>

#include "codecs/PictureSamples.h"
#include "surface/codecs/IconLibrary.h"
#include "surface/system/files/Files.h"

namespace zelvane::test {
namespace {

constexpr Pixel kGround = 0xFF102030u, kGrey = 0xFF405060u;

/// What makes a triangle drawn from a picture of that side.
struct Triangle {
  Pixel colour;
  int side;
};

/// Pixels that aren't as they should be. Those on the slope of one that was made smaller are a mixture.
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

/// The 64-bit program; its tree begins with a header of 16 bytes and the entries of both types.
struct ProgramIcons : testing::Test {
  static constexpr size_t kTree = 0xA00, kGroupsEntry = kTree + 16 + 8;
  size_t Follow(size_t entry) const {
    return kTree + (ByteView(program.data(), program.size()).Little32(entry + 4) & 0x7FFFFFFF);
  }
  void Write(uint64_t value, int size, size_t at) {
    const Bytes written = Numbers({value}, size);
    std::copy(written.begin(), written.end(), program.begin() + static_cast<ptrdiff_t>(at));
  }
  IconLibrary Library() {
    return IconLibrary([this](uint64_t at, size_t count) {
      const Bytes part =
          at < program.size() ? Part(program, at, std::min(count, program.size() - at)) : Bytes{};
      read += part.size();
      return part;
    });
  }
  /// What the program holds of icons in one of 16 bits, each piece at a multiple of 2^shift.
  static Bytes Segmented(int shift) {
    const ProgramResources resources(RangesOf(TEST_DATA "/programs/icons.dll"));
    constexpr size_t kData = 0x1000;
    Bytes data, start = Padded(Text("MZ"), 60) + Numbers({64}, 4);
    start = Padded(start + Text("NE"), 64 + 36) + Numbers({40, 0xFFFF, static_cast<uint64_t>(shift)}, 2);
    for (const uint32_t type : {ProgramResources::kIconGroup, ProgramResources::kIcon}) {
      const auto entries = resources.OfType(type);
      start = start + Numbers({0x8000 | type, entries.size(), 0, 0}, 2);
      for (const auto& entry : entries) {
        const size_t place = kData + data.size();
        const Bytes piece = resources.DataOf(entry, SIZE_MAX);
        data = Padded(data + piece, (data.size() + piece.size() + (1u << shift) - 1) >> shift << shift);
        const uint64_t units = (kData + data.size() - place) >> shift, is_text = entry.name >> 31;
        start = start + Numbers({place >> shift, units, 0, is_text ? 3 : 0x8000 | entry.name, 0, 0}, 2);
      }
    }
    return Padded(start, kData) + data;
  }
  static Bytes Padded(Bytes bytes, size_t size) { return bytes.resize(size), bytes; }
  Bytes program = RangesOf(TEST_DATA "/programs/icons.dll")(0, SIZE_MAX);
  size_t read = 0;
  const size_t groups = Follow(kGroupsEntry), first_data = Follow(Follow(groups + 16) + 16);
  const Triangle second{kBlue, 32};
};

TEST_F(ProgramIcons, IconsAreDrawnFromThePictureThatSuits) {
  const Pixel half = 0xFF881018u;  // red at 128 of 255 on the ground
  const Triangle expected[] = {{kGreen, 32}, second,     {kGreen, 48}, {kGrey, 8}, {kGrey, 8},
                               {kGrey, 8},   {kGrey, 8}, {kGrey, 8},   {half, 8},  {kGrey, 8}};
  for (const char* name : {TEST_DATA "/programs/icons.dll", TEST_DATA "/programs/icons.exe"}) {
    const IconLibrary icons(RangesOf(name));
    ASSERT_EQ(icons.Count(), std::ssize(expected)) << name;
    for (int i = 0; i < icons.Count(); ++i) EXPECT_EQ(Faults(icons.Draw(i, kGround), expected[i]), 0) << i;
    EXPECT_FALSE(icons.Draw(-1, kGround) || icons.Draw(icons.Count(), kGround));
  }
  Library().Draw(0, kGround);
  EXPECT_LT(read, 2048u) << "no more than is needed";
}

TEST_F(ProgramIcons, ThoseOf16BitsAreTheSame) {
  const IconLibrary original(RangesOf(TEST_DATA "/programs/icons.dll"));
  for (const int shift : {0, 4, 9}) {
    program = Segmented(shift);
    const IconLibrary icons = Library();
    ASSERT_EQ(icons.Count(), original.Count());
    for (int i = 0; i < icons.Count(); ++i) EXPECT_EQ(icons.Draw(i, kGround), original.Draw(i, kGround)) << i;
  }
  constexpr size_t kTable = 64 + 40, kFirst = kTable + 2 + 8;
  for (const auto& [what, value, at] : {std::tuple{"data beyond the file", 0xFFFF, kFirst},
                                        {"more of it than there is", 0xFFFF, kFirst + 2},
                                        {"a text where a number was", 1, kFirst + 10 * 12 + 8 + 6}}) {
    program = Segmented(9);
    Write(value, 2, at);
    EXPECT_EQ(Library().Count(), 10) << what;
    Library().Draw(0, kGround);
    EXPECT_EQ(Faults(Library().Draw(1, kGround), second), 0) << what;
  }
  Write(0xFFFF, 2, kTable + 4);
  EXPECT_LT(Library().Count(), 0x10000 / 12) << "entries without end";
  Write(64, 2, kTable);
  EXPECT_EQ(Library().Count(), 0) << "units of 2^64";
  const Bytes whole = Segmented(0);
  for (size_t at = 0; at < 0x200; ++at) {
    program = Part(whole, 0, at);
    ASSERT_LE(Library().Count(), 10) << "cut at " << at;
    Library().Draw(0, kGround);
  }
}

TEST_F(ProgramIcons, DamagedOnesHoldWhatCanBeFound) {
  const Bytes whole = program;
  for (const auto& [what, value, at] : {std::tuple{"another level", 0x80000000, groups + 20},
                                        {"data beyond the file", 0x7FFFFFF0, groups + 20},
                                        {"an address in no section", 0x7FFFFFF0, first_data},
                                        {"a size of 4 GB", 0xFFFFFFFF, first_data + 4}}) {
    program = whole;
    Write(value, 4, at);
    EXPECT_EQ(Library().Count(), 10) << what;
    EXPECT_FALSE(Library().Draw(0, kGround)) << what;
    EXPECT_EQ(Faults(Library().Draw(1, kGround), second), 0) << what;
  }
  program = whole;
  Write(0xFFFF, 2, groups + 14);
  EXPECT_LT(Library().Count(), std::ssize(program) / 8) << "entries without end";
  EXPECT_EQ(Faults(Library().Draw(1, kGround), second), 0);
  Write(0x80000000, 4, kGroupsEntry + 4);
  EXPECT_EQ(Library().Count(), 2) << "the groups are the types again";
  EXPECT_FALSE(Library().Draw(0, kGround) || Library().Draw(1, kGround));
  for (size_t at = 0; at < first_data; ++at) {
    program = Part(whole, 0, at);
    ASSERT_LE(Library().Count(), std::ssize(program) / 8) << "cut at " << at;
    Library().Draw(0, kGround);
  }
}

}  // namespace
}  // namespace zelvane::test
