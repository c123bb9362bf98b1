#include <gtest/gtest.h>

#include <future>

#include "surface/system/files/PictureFile.h"
#include "system/MetafileSamples.h"

namespace zelvane::test {
namespace {

using art::Lines;

constexpr int64_t kRedInk = 0x0000FF, kGreenInk = 0x00FF00, kBlueInk = 0xFF0000, kWhiteInk = 0xFFFFFF;
constexpr int64_t kCopy = 0x00CC0020, kFraction1 = 0x3F800000;

/// 0xRRGGBB row by row as they stand; a height below 0 says that they stand from the top.
Bytes Dib(int64_t width, int64_t height, std::initializer_list<int64_t> pixels) {
  return Fields({40, width, height, 32 << 16 | 1, 0, 0, 0, 0, 0, 0}, 4) + Fields(pixels, 4);
}

/// The fields of a blit from a bitmap on another device, with what comes behind them.
Bytes BlitFields(std::initializer_list<int64_t> target_and_operation, const Bytes& more, const Bytes& dib) {
  const int64_t header = dib.empty() ? 0 : 40, at = 100 + static_cast<int64_t>(more.size());
  return Bytes(16) + Fields(target_and_operation, 4) + Bytes(8) +
         Fields({kFraction1, 0, 0, kFraction1, 0, 0, 0, 0, at, header, at + header,
                 static_cast<int64_t>(dib.size()) - header},
                4) +
         more + dib;
}

Bytes StretchFields(std::initializer_list<int64_t> source, std::initializer_list<int64_t> target,
                    int64_t operation, const Bytes& dib, int64_t use = 0, int64_t header = 40) {
  const std::vector<int64_t> to(target);
  return Bytes(16) + Fields({to[0], to[1]}, 4) + Fields(source, 4) +
         Fields({80, header, 80 + header, static_cast<int64_t>(dib.size()) - header, use, operation, to[2],
                 to[3]},
                4) +
         dib;
}

/// What the first rows show, up to the first few columns.
Lines Corner(const Bytes& file, size_t width, size_t height) {
  Lines lines = Shown(file);
  lines.resize(std::min(lines.size(), height));
  for (std::string& line : lines) line.resize(std::min(line.size(), width));
  return lines;
}

TEST(Metafiles, AreAsLargeAsTheyTell) {
  const auto size = [](const Bytes& bytes) {
    const auto picture = Played(bytes);
    return picture ? std::pair(picture->Width(), picture->Height()) : std::pair(0, 0);
  };
  const Wmf none;
  EXPECT_EQ(size(none.File(1440, 720, 1440)), std::pair(96, 48));
  EXPECT_EQ(size(none.File(100, 50, 640)), std::pair(15, 8));
  EXPECT_EQ(size(none.File(-10, 0, 96, 20, 20)), std::pair(30, 20));
  EXPECT_EQ(size(none.File(1, 100, 1440)), std::pair(1, 7));
  EXPECT_EQ(size(none.File(9, 0)), std::pair(0, 0));
  EXPECT_EQ(size(none.File(32767, 9, 1)), std::pair(0, 0));
  EXPECT_EQ(size(none.Old()), std::pair(0, 0));
  EXPECT_EQ(size(Wmf().Add(Wmf::kWindowExtent, {20, 30}).Old()), std::pair(30, 20));
  EXPECT_EQ(size(Wmf().Add(Wmf::kWindowExtent, {7200, -14400}).Old()), std::pair(960, 480));
  EXPECT_EQ(Shown(Wmf().Plain(kRedInk).Box(7, 9, 10, 11).Old()), (Lines{"rrr", "rrr"}));
  Bytes emf = Emf().File(48, 24);
  EXPECT_EQ(size(emf), std::pair(48, 24));
  std::fill(emf.begin() + 24, emf.begin() + 40, 0);  // no frame
  EXPECT_EQ(size(emf), std::pair(48, 24));
}

TEST(Metafiles, ThatAreDamagedAreRefused) {
  const Wmf wmf = Wmf().Plain(kRedInk).Box(0, 0, 5, 5);
  const Emf emf = Emf().Brush(1, kRedInk).Add(43, {0, 0, 5, 5});
  for (const Bytes& whole : {wmf.File(9, 9), wmf.Old(), emf.File(24, 24)}) {
    EXPECT_GT(Count(Shown(whole), 'r'), 0);
    // The last bytes of the end's record only say again how long it is.
    const size_t end = whole.size() - (whole == emf.File(24, 24) ? 12 : 0);
    for (size_t size = 0; size < end; ++size) EXPECT_FALSE(Played(Part(whole, 0, size))) << size;
  }
  // An old header has no mark of its own: each of its fields has to be right.
  for (const auto& [at, value] : {std::pair(0, 3), {2, 8}, {5, 2}, {12, 2}, {16, 1}}) {
    Bytes old = wmf.Old();
    old[static_cast<size_t>(at)] = static_cast<unsigned char>(value);
    EXPECT_FALSE(LooksLikeMetafile({old.data(), 64})) << at;
    EXPECT_FALSE(Played(old)) << at;
  }
  EXPECT_FALSE(Played(wmf.File(9, 9, 0)));
  Wmf endless = wmf;
  endless.records = endless.records + Bytes(6, 0) + Bytes{1, 0, 0, 0, 1, 1};
  EXPECT_TRUE(Played(endless.File(9, 9)));  // a record of no length that is the end's
  endless.records = wmf.records + Bytes{0, 0, 0, 0, 1, 1};
  EXPECT_FALSE(Played(endless.File(9, 9)));
}

TEST(Metafiles, RecordsThatArentKnownOrLieArePassedOver) {
  Wmf wmf;
  wmf.Add(0x7777, {1, 2, 3}).Add(0x0626, Bytes(50, 0xFF)).Add(Wmf::kPolygon, {32767, 0, 0});
  wmf.Add(Wmf::kRectangle, {4, 4}).Add(Wmf::kStretchDib, Bytes(30, 0xFF)).Add(Wmf::kTextOut, {9999, 0, 0});
  wmf.Add(Wmf::kRestore, {-5}).Select(99).Add(Wmf::kDelete, {7});
  EXPECT_EQ(Shown(wmf.Plain(kGreenInk).Box(1, 0, 3, 2).File(4, 2)), (Lines{".gg.", ".gg."}));

  Emf emf;
  emf.Add(70, Text("EMF+")).Add(999, {1}).Add(3, {0, 0, 0, 0, 1 << 30, 1, 1}).Add(8, {0, 0, 0, 0, -1, 4, 4});
  emf.Add(81, StretchFields({0, 0, 1, 1}, {0, 0, 9, 9}, kCopy, Dib(1, 1, {}))).Add(84, Bytes(70, 0xFF));
  emf.Add(35, {0x7FC00000, 0, 0, 0x7FC00000, 0, 0}).Add(118, {0, 0, 0, 0, 0, 9, 0}).Add(82, {1});
  emf.Brush(1, kGreenInk).Stock(8).Add(43, {1, 0, 3, 2});
  EXPECT_EQ(Corner(emf.File(24, 24), 4, 2), (Lines{".gg.", ".gg."}));
}

TEST(Metafiles, AnyThreadPlaysThemAndNoneForLong) {
  Wmf wmf;
  wmf.Add(Wmf::kFont, Fields({-20, 0, 0, 0, 400, 0, 0, 0, 0}, 2) + Text("Arial") + Bytes(1)).Select(0);
  const Bytes file = wmf.Add(Wmf::kTextOut, Numbers({4}, 2) + Text("Text") + Fields({2, 2}, 2)).File(60, 30);
  const Folder folder;
  const std::string path = folder.Put("text.wmf", {file.begin(), file.end()});
  const auto elsewhere = std::async(std::launch::async, LoadPicture, path).get();
  const auto here = LoadPicture(path);
  ASSERT_TRUE(elsewhere && here);
  EXPECT_EQ(*here, *elsewhere);
  EXPECT_GT(Count(Shown(file), '#'), 0);
  // Edges that go to and fro across a large sheet.
  Bytes edges = Numbers({30000}, 2);
  for (int64_t i = 0; i < 30000; ++i) edges = std::move(edges) + Fields({i % 2 * 3000, i % 100 * 30}, 2);
  EXPECT_FALSE(Played(Wmf().Plain(kRedInk).Add(Wmf::kPolygon, edges).File(3000, 3000)));
  Wmf deep;
  for (int i = 0; i < 5000; ++i) deep.Add(Wmf::kSave, {});
  EXPECT_FALSE(Played(deep.File(9, 9)));
  ReadingWatch watch;
  watch.Stop();
  EXPECT_FALSE(DecodeMetafile({file.data(), file.size()}, LimitByMemory(), watch));
}

TEST(Metafiles, ThinOutlinesAreCrispAndInsidesAreFilled) {
  const Wmf boxes = Wmf().Pen(0, 0).Brush(kRedInk).Select(0).Select(1).Box(1, 1, 7, 5);
  EXPECT_EQ(Shown(boxes.File(8, 6)),
            (Lines{"........", ".######.", ".#rrrr#.", ".#rrrr#.", ".######.", "........"}));
  Wmf lines;
  lines.Add(Wmf::kMoveTo, {1, 0}).Add(Wmf::kLineTo, {1, 4}).Add(Wmf::kLineTo, {3, 4});
  EXPECT_EQ(Shown(lines.File(6, 4)), (Lines{"......", "#####.", "....#.", "......"}));
  // A square within a square, both the same way round.
  for (const auto& [mode, within] : {std::pair(1, '.'), {2, 'r'}}) {
    Wmf squares = Wmf().Plain(kRedInk).Add(Wmf::kFillMode, {mode});
    squares.Add(0x0538, {2, 4, 4, 0, 0, 5, 0, 5, 5, 0, 5, 2, 2, 3, 2, 3, 3, 2, 3});
    const std::string middle = std::string("rr") + within + "rr.";
    EXPECT_EQ(Shown(squares.File(6, 5)), (Lines{"rrrrr.", "rrrrr.", middle, "rrrrr.", "rrrrr."}));
  }
  // Dashes of three widths with a gap of one, their round ends included.
  const Wmf dashes = Wmf().Pen(1, 4).Select(0).Add(Wmf::kMoveTo, {4, 0}).Add(Wmf::kLineTo, {4, 160});
  EXPECT_NEAR(static_cast<double>(Count({Shown(dashes.File(160, 8))[4]}, '.')), 160 / 4, 10);
  // A pattern of two colours keeps to the pixels whatever the units are.
  Wmf hatch = Wmf().Pen(5, 0).Brush(kBlueInk, 2, 1).Select(0).Select(1).Add(Wmf::kBackMode, {1});
  EXPECT_EQ(Shown(hatch.Box(0, 0, 240, 10).File(240, 10, 960)), (Lines{"....b.......b.......b..."}));
}

TEST(Metafiles, WhatGoesFarBeyondTheSheetShowsWithin) {
  constexpr int64_t kFar = 900000;
  Emf emf = Emf().Brush(1, kRedInk).Stock(8).Add(42, {-kFar, -kFar, kFar, kFar});  // an ellipse round it all
  emf.Brush(2, kBlueInk).Add(3, Bytes(16) + Fields({4, -kFar, 2, kFar, 2, kFar, kFar, -kFar, kFar}, 4));
  emf.Add(38, {3, 0x200, 2, 0, kGreenInk}).Select(3).Add(27, {-kFar, 2}).Add(54, {kFar, 2});
  EXPECT_EQ(Corner(emf.File(24, 24), 4, 5), (Lines{"rrrr", "gggg", "gggg", "bbbb", "bbbb"}));
}

TEST(Metafiles, ArcsGoAgainstTheClock) {
  // From the right to the top, drawn with the vertical axis both ways.
  for (const int64_t down : {1, -1}) {
    Wmf pie = Wmf().Plain(kRedInk).Add(Wmf::kWindowExtent, {40 * down, 40});
    pie.Add(0x081A, {0, 20, 20 * down, 40, 40 * down, 40, 0, 0});
    const Lines lines = Shown(pie.File(40, 40 * down));
    EXPECT_EQ(std::string({lines[8][28], lines[8][12], lines[30][12], lines[30][28]}), "r...") << down;
  }
  // With it, all but the quarter; the chord cuts off less than the pie.
  for (const auto& [kind, expected] : {std::pair(46u, ".rrrr"), {47u, "..rrr"}}) {
    Emf emf = Emf().Brush(1, kRedInk).Stock(8).Add(57, {2});
    const Lines lines = Shown(emf.Add(kind, {0, 0, 48, 48, 48, 24, 24, 0}).File(48, 48));
    EXPECT_EQ(std::string({lines[8][40], lines[12][34], lines[12][12], lines[34][12], lines[34][34]}),
              expected);
  }
}

TEST(Metafiles, UnitsAreMappedByEveryMode) {
  constexpr int64_t kModes[][3] = {{1, 48, 48},  {2, 127, -127}, {3, 1270, -1270},
                                   {4, 50, -50}, {5, 500, -500}, {6, 720, -720}};
  const auto ink = [](Emf emf, int64_t width, int64_t height) {
    return Ink(emf.Add(43, {0, 0, width, height}).File(96, 96));
  };
  const Emf begun = Emf().Brush(1, kRedInk).Stock(8);
  for (const auto& [mode, width, height] : kModes)
    EXPECT_EQ(ink(Emf(begun).Add(17, {mode}), width, height), (Rect{0, 0, 48, 48})) << mode;
  for (const auto& [mode, bottom] : {std::pair(7, 24), {8, 48}}) {
    const Emf emf = Emf(begun).Add(17, {mode}).Add(9, {100, 50}).Add(11, {48, 48});
    EXPECT_EQ(ink(emf, 100, 50), (Rect{0, 0, 48, bottom}));
    EXPECT_EQ(ink(Emf(emf).Add(32, {2, 1, 2, 1}), 200, 100), (Rect{0, 0, 48, bottom}));
  }
  EXPECT_EQ(ink(Emf(begun).Add(10, {-10, -20}), 5, 5), (Rect{10, 20, 15, 25}));
  EXPECT_EQ(ink(Emf(begun).Add(12, {30, 40}), 5, 5), (Rect{30, 40, 35, 45}));
  // A shift behind a doubling, in both orders, and a quarter turn.
  constexpr int64_t kTwo = 0x40000000, kTen = 0x41200000, kMinusOne = 0xBF800000;
  const Emf twice = Emf(begun).Add(35, {kTwo, 0, 0, kTwo, 0, 0});
  EXPECT_EQ(ink(Emf(twice).Add(36, {kFraction1, 0, 0, kFraction1, kTen, 0, 2}), 5, 5), (Rect{20, 0, 30, 10}));
  EXPECT_EQ(ink(Emf(twice).Add(36, {kFraction1, 0, 0, kFraction1, kTen, 0, 3}), 5, 5), (Rect{10, 0, 20, 10}));
  EXPECT_EQ(ink(Emf(begun).Add(35, {0, kFraction1, kMinusOne, 0, kTen, 0}), 5, 8), (Rect{2, 0, 10, 5}));
}

TEST(Metafiles, ClipsAreCutJoinedSavedAndRestored) {
  Wmf wmf = Wmf().Plain(kRedInk).Brush(kBlueInk).Add(Wmf::kSave, {});
  wmf.Add(Wmf::kIntersectClip, {4, 5, 0, 1}).Add(Wmf::kSave, {}).Add(Wmf::kExcludeClip, {3, 4, 1, 2});
  wmf.Box(0, 0, 8, 4).Add(Wmf::kRestore, {-1}).Select(2).Box(0, 3, 8, 4).Add(Wmf::kRestore, {1});
  EXPECT_EQ(Shown(wmf.Box(7, 0, 8, 4).File(8, 4)), (Lines{".rrrr..r", ".r..r..r", ".r..r..r", ".bbbb..r"}));
  const Wmf nothing =
      Wmf().Plain(kRedInk).Add(Wmf::kIntersectClip, {2, 2, 0, 0}).Add(Wmf::kIntersectClip, {4, 4, 2, 3});
  EXPECT_EQ(
      Shown(Wmf(nothing).Box(0, 0, 4, 4).Add(Wmf::kIntersectClip, {4, 4, 0, 0}).Box(0, 0, 4, 4).File(4, 1)),
      (Lines{"...."}));
  // A clip of two columns and a region of two rows, joined in every way.
  const std::pair<int64_t, Lines> ways[] = {{1, {"....", ".rr.", "...."}},
                                            {2, {".rr.", "rrrr", ".rr."}},
                                            {3, {".rr.", "r..r", ".rr."}},
                                            {4, {".rr.", "....", ".rr."}},
                                            {5, {"....", "rrrr", "...."}}};
  for (const auto& [way, expected] : ways) {
    Emf emf = Emf().Brush(1, kRedInk).Stock(8).Add(30, {1, 0, 3, 3});
    emf.Add(75, {48, way, 32, 1, 1, 16, 0, 1, 4, 2, 0, 1, 4, 2});
    EXPECT_EQ(Corner(emf.Add(43, {0, 0, 4, 3}).File(24, 24), 4, 3), expected) << way;
  }
  // By a path, within a clip that was made to last; what is selected later doesn't reach beyond it.
  Emf path = Emf().Brush(1, kRedInk).Stock(8).Add(30, {0, 0, 3, 3}).Add(28, {}).Add(59, {});
  path.Add(43, {1, 1, 9, 9}).Add(60, {}).Add(67, {5}).Add(43, {0, 0, 9, 9});
  EXPECT_EQ(Corner(path.File(24, 24), 5, 4), (Lines{".....", ".rr..", ".rr..", "....."}));
}

TEST(Metafiles, PathsAreFilledAndTheirFiguresClosed) {
  Emf emf = Emf().Brush(1, kRedInk).Stock(8).Add(19, {1}).Add(59, {});
  emf.Add(27, {0, 0}).Add(54, {5, 0}).Add(89, Bytes(16) + Fields({2}, 4) + Fields({5, 5, 0, 5}, 2));
  emf.Add(61, {}).Add(27, {1, 1}).Add(54, {1, 3}).Add(54, {3, 3}).Add(54, {3, 1}).Add(61, {}).Add(60, {});
  EXPECT_EQ(Corner(emf.Add(62, Bytes(16)).File(24, 24), 6, 6),
            (Lines{"rrrrr.", "r..rr.", "r..rr.", "rrrrr.", "rrrrr.", "......"}));
  // Nothing is left to be painted again, and an aborted one paints nothing.
  emf.Brush(2, kBlueInk).Add(62, Bytes(16)).Add(59, {}).Add(43, {0, 0, 9, 9}).Add(68, {}).Add(62, Bytes(16));
  EXPECT_EQ(Count(Shown(emf.File(24, 24)), 'b'), 0);
}

TEST(Metafiles, ObjectsTakeTheFirstFreeNumberAndKeepTheirs) {
  Wmf wmf = Wmf().Pen(5, 0).Brush(kRedInk).Brush(kGreenInk).Select(0).Add(Wmf::kDelete, {1});
  wmf.Add(Wmf::kBrush, {0, 1});  // too short, but takes number 1
  wmf.Brush(kBlueInk).Select(2).Box(0, 0, 1, 1).Select(3).Box(1, 0, 2, 1).Select(1).Box(2, 0, 3, 1);
  EXPECT_EQ(Shown(wmf.File(4, 1)), (Lines{"gbb."}));
  Emf emf =
      Emf().Stock(8).Stock(4).Add(43, {0, 0, 1, 1}).Brush(5, kRedInk).Add(40, {5}).Add(43, {1, 0, 2, 1});
  emf.Add(37, {5}).Add(43, {2, 0, 3, 1}).Stock(5).Add(43, {0, 0, 9, 1});
  EXPECT_EQ(Corner(emf.File(24, 24), 4, 1), (Lines{"#rr."}));
}

/// Pixel i of a row stands for the bits of i: what is there, the source, the pattern.
TEST(Metafiles, EveryRasterOperationIsExact) {
  const auto bits = [](int64_t bit) {
    std::vector<uint64_t> row;
    for (int64_t i = 0; i < 8; ++i) row.push_back(i & bit ? 0xFFFFFF : 0);
    return Numbers(row, 4);
  };
  Emf begun = Emf().Add(94, Fields({1, 0, 32, 40, 72, 32}, 4) + Dib(8, 1, {}) + bits(4)).Select(1);
  begun.Add(81, StretchFields({0, 0, 8, 1}, {0, 0, 8, 1}, kCopy, Dib(8, 1, {}) + bits(1)));
  for (int64_t code = 0; code < 256; ++code) {
    Emf emf = begun;
    emf.Add(81, StretchFields({0, 0, 8, 1}, {0, 0, 8, 1}, code << 16, Dib(8, 1, {}) + bits(2)));
    std::string expected;
    for (int i = 0; i < 8; ++i) expected += code >> i & 1 ? '.' : '#';
    EXPECT_EQ(Corner(emf.File(24, 24), 8, 1), Lines{expected}) << code;
  }
  // The 16 ways of a pen, by a thick line and by a shape's inside.
  for (int64_t mode = 1; mode <= 16; ++mode) {
    Wmf line = Wmf().Plain(0).Box(0, 0, 1, 2).Box(2, 0, 3, 2).Brush(kWhiteInk);
    line.Add(Wmf::kPen, {0x200, 2, 0, 0, 0})
        .Add(Wmf::kPen, {0x200, 2, 0, 0xFFFF, 0xFF})
        .Add(Wmf::kPenMode, {mode});
    Wmf inside = line;
    line.Select(3).Add(Wmf::kMoveTo, {1, 0}).Add(Wmf::kLineTo, {1, 2});
    line.Select(4).Add(Wmf::kMoveTo, {1, 2}).Add(Wmf::kLineTo, {1, 4});
    inside.Box(0, 0, 2, 2).Select(2).Box(2, 0, 4, 2);
    std::string expected;
    for (int i = 0; i < 4; ++i) expected += (mode - 1) >> i & 1 ? '.' : '#';
    EXPECT_EQ(Shown(line.File(4, 2)), (Lines{expected, expected})) << mode;
    EXPECT_EQ(Shown(inside.File(4, 2)), (Lines{expected, expected})) << mode;
  }
}

TEST(Metafiles, BitmapsLieAsTheyAreTold) {
  const Bytes up = Dib(2, 2, {0x0000FF, 0x000000, 0xFF0000, 0x00FF00});
  const Bytes down = Dib(2, -2, {0xFF0000, 0x00FF00, 0x0000FF, 0x000000});
  const auto shown = [](std::initializer_list<int64_t> source, std::initializer_list<int64_t> target,
                        const Bytes& dib) {
    return Corner(Emf().Add(81, StretchFields(source, target, kCopy, dib)).File(24, 24), 4, 4);
  };
  const Lines whole = {"rrgg", "rrgg", "bb##", "bb##"};
  EXPECT_EQ(shown({0, 0, 2, 2}, {0, 0, 4, 4}, up), whole);
  EXPECT_EQ(shown({0, 0, 2, 2}, {0, 0, 4, 4}, down), whole);
  EXPECT_EQ(shown({0, 0, 2, 2}, {4, 0, -4, 4}, up), (Lines{"ggrr", "ggrr", "##bb", "##bb"}));
  EXPECT_EQ(shown({0, 0, 2, 2}, {0, 4, 4, -4}, up), (Lines{"bb##", "bb##", "rrgg", "rrgg"}));
  // Rows count as they stand in the bitmap; what lies beyond it shows nothing.
  EXPECT_EQ(shown({0, 0, 2, 1}, {0, 0, 4, 1}, up)[0], "bb##");
  EXPECT_EQ(shown({0, 0, 2, 1}, {0, 0, 4, 1}, down)[0], "rrgg");
  EXPECT_EQ(shown({1, 1, 2, 1}, {0, 0, 4, 1}, up)[0], "gg..");

  Wmf wmf;
  wmf.Add(Wmf::kStretchDib, Fields({0x20, 0xCC, 0, 2, 2, 0, 0, 4, 4, 0, 0}, 2) + up);
  wmf.Add(0x0940, Fields({0x20, 0xCC, 1, 0, 1, 2, 0, 4}, 2) + up);
  wmf.Add(0x0D33, Fields({0, 1, 1, 1, 0, 1, 2, 3, 4}, 2) + Dib(2, 2, {0xFF0000, 0x00FF00}));
  wmf.Add(0x061D, Fields({0x09, 0x5A, 1, 2, 2, 4}, 2));
  EXPECT_EQ(Shown(wmf.File(6, 4)), (Lines{"rrggb#", "rrgg..", "bb####", "bb##rg"}));
}

TEST(Metafiles, BitmapsAreBlendedMaskedAndColouredByPalette) {
  const Bytes two = Dib(2, 1, {0xFF0000, 0x0000FF});
  const Bytes source = Fields({2, 1}, 4);
  const auto row = [](Emf emf) { return Corner(emf.File(24, 24), 2, 1)[0]; };
  EXPECT_EQ(row(Emf().Add(116, BlitFields({0, 0, 2, 1, kBlueInk}, source, two))), "r.");
  // Full, then none, of a premultiplied opacity.
  const Bytes clear = Dib(2, 1, {0xFFFF0000, 0});
  EXPECT_EQ(row(Emf().Add(114, BlitFields({0, 0, 2, 1, 0x01FF0000}, source, clear))), "r.");
  // A colour beyond its opacity.
  const Bytes beyond = Dib(1, 1, {0x00FF0000});
  EXPECT_EQ(row(Emf().Add(114, BlitFields({0, 0, 1, 1, 0x01FF0000}, Fields({1, 1}, 4), beyond))), "..");
  const auto half = Played(Emf().Add(114, BlitFields({0, 0, 2, 1, 0x00800000}, source, two)).File(24, 24));
  ASSERT_TRUE(half);
  EXPECT_NEAR(half->Row(0)[0] >> 8 & 0xFF, 127, 1);
  // Black stays what is there, white takes the source.
  const Bytes mask = Dib(2, 1, {0, 0xFFFFFF});
  const Bytes mask_fields = Fields({0, 0, 0, 176, 40, 216, 8}, 4);
  Bytes masked = BlitFields({0, 0, 2, 1, 0xAACC0020}, mask_fields, two) + mask;
  EXPECT_EQ(row(Emf().Add(78, masked)), ".b");
  // A grey bitmap by "or", then colours by "and" to the same place: opacity. Each alone is what it is told.
  const Bytes greys = Dib(2, 1, {0x808080, 0xFFFFFF});
  const auto joined = [&](int64_t operation, const Bytes& dib) {
    return StretchFields({0, 0, 2, 1}, {0, 0, 2, 1}, operation, dib, 0, dib.empty() ? 0 : 40);
  };
  const Emf black = Emf().Add(81, joined(0x42, {}));
  Emf blended = Emf(black).Add(81, joined(0xEE0086, greys)).Add(81, joined(0x8800C6, two));
  const auto grey = Played(blended.File(24, 24)),
             alone = Played(Emf(black).Add(81, joined(0xEE0086, greys)).File(24, 24));
  ASSERT_TRUE(grey && alone);
  EXPECT_EQ(std::pair(grey->Row(0)[0], grey->Row(0)[1]), std::pair(0xFF800000u, 0xFF0000FFu));
  EXPECT_EQ(std::pair(alone->Row(0)[0], alone->Row(0)[1]), std::pair(0xFF808080u, 0xFFFFFFFFu));
  // Numbers of the selected palette.
  const Bytes numbers =
      Fields({40, 2, 1, 8 << 16 | 1, 0, 0, 0, 0, 2, 0}, 4) + Fields({1, 0}, 2) + Fields({256}, 4);
  Emf palette = Emf().Add(49, Fields({1}, 4) + Fields({0x300, 2}, 2) + Fields({kRedInk, kGreenInk}, 4));
  palette.Add(48, {1}).Add(81, StretchFields({0, 0, 2, 1}, {0, 0, 2, 1}, kCopy, numbers, 1, 44));
  EXPECT_EQ(row(palette), "gr");
}

TEST(Metafiles, FadesRunFromColourToColour) {
  Bytes fade = Bytes(16) + Fields({2, 1, 0}, 4);
  fade = fade + Fields({0, 0}, 4) + Fields({0xFF00, 0, 0, 0}, 2) + Fields({24, 24}, 4) +
         Fields({0, 0, 0xFF00, 0}, 2);
  const auto across = Played(Emf().Add(118, fade + Fields({0, 1}, 4)).File(24, 24));
  ASSERT_TRUE(across);
  for (int x = 1; x < 24; ++x) EXPECT_LT(across->Row(12)[x] >> 16, across->Row(12)[x - 1] >> 16);
  EXPECT_EQ(across->Row(0)[7], across->Row(23)[7]);
}

/// A font of 20 pixels, then what is told, then a text at (100, 50).
Bytes Written(const Wmf& before, const std::string& text, int64_t escapement = 0, int64_t lines = 0) {
  Wmf wmf;
  wmf.Add(Wmf::kFont,
          Fields({-20, 0, escapement, 0, 400, lines, lines >> 16, 0, 0}, 2) + Text("Arial") + Bytes(1));
  wmf.Select(0).Add(Wmf::kBackMode, {1});
  wmf.records = wmf.records + before.records;
  return wmf
      .Add(Wmf::kTextOut,
           Numbers({text.size()}, 2) + Text(text) + Bytes(text.size() % 2) + Fields({50, 100}, 2))
      .File(200, 100);
}

TEST(MetafileTexts, StandWhereTheirAlignmentTells) {
  const auto ink = [](int64_t align) { return Ink(Written(Wmf().Add(Wmf::kTextAlign, {align}), "HHHH")); };
  const Rect left = ink(24), right = ink(24 | 2), centre = ink(24 | 6);
  EXPECT_GE(left.left, 100);
  EXPECT_LE(right.right, 100);
  EXPECT_NEAR(centre.left + centre.right, 200, 2);
  EXPECT_EQ(left.Width(), right.Width());
  EXPECT_NEAR(left.Height(), 20 * 0.7, 2);
  EXPECT_NEAR(left.bottom, 50, 1);
  EXPECT_GT(ink(0).top, 50);
  EXPECT_LT(ink(8).bottom, 50);
  // Upright where the vertical axis points up.
  const Wmf flipped = Wmf().Add(Wmf::kWindowOrigin, {100, 0}).Add(Wmf::kWindowExtent, {-100, 200});
  const Rect upright = Ink(Written(Wmf(flipped).Add(Wmf::kTextAlign, {24}), "LLLL"));
  EXPECT_NEAR(upright.bottom, 50, 1);
  EXPECT_EQ(Count(Shown(Written(Wmf(flipped).Add(Wmf::kTextAlign, {24}), "LLLL")), '#'),
            Count(Shown(Written(Wmf().Add(Wmf::kTextAlign, {24}), "LLLL")), '#'));
  const Rect turned = Ink(Written(Wmf().Add(Wmf::kTextAlign, {24}), "HHH", 900));
  EXPECT_NEAR(turned.Height(), Ink(Written(Wmf(), "HHH")).Width(), 1);
  EXPECT_NEAR(turned.right, 100, 1);
  EXPECT_LE(turned.bottom, 50);
  // One continues where the last one ended.
  Wmf first = Wmf().Add(Wmf::kTextAlign, {25}).Add(Wmf::kMoveTo, {50, 100});
  first.Add(Wmf::kTextOut, Numbers({2}, 2) + Text("HH") + Fields({0, 0}, 2));
  EXPECT_EQ(Ink(Written(first, "HH")), left);
}

TEST(MetafileTexts, AreSpacedLinedGroundedAndCoded) {
  const Wmf base = Wmf().Add(Wmf::kTextAlign, {24});
  const Rect plain = Ink(Written(base, "HH"));
  const auto spaced = [&](int64_t distance, int64_t options, const Bytes& box) {
    const Bytes text = Fields({50, 100, 2, options}, 2) + box + Text("HH") + Fields({distance, 9}, 2);
    return Ink(Written(Wmf(base).Add(Wmf::kExtTextOut, text), ""));
  };
  EXPECT_EQ(spaced(60, 0, {}).Width(), spaced(40, 0, {}).Width() + 20);
  EXPECT_LE(spaced(40, 4, Fields({100, 0, 120, 100}, 2)).right, 120);
  Wmf grounded = Wmf(base).Add(Wmf::kTextColor, {0x00FF, 0}).Add(0x0201, {0, 0xFF});
  const Lines box =
      Shown(Written(grounded.Add(Wmf::kExtTextOut, Fields({50, 100, 0, 2, 10, 10, 20, 15}, 2)), ""));
  EXPECT_EQ(Count(box, 'b'), 50);
  EXPECT_GT(Count(Shown(Written(grounded.Add(Wmf::kBackMode, {2}), "HH")), 'b'), 200);
  EXPECT_GT(Ink(Written(base, "HH", 0, 0x100)).bottom, plain.bottom);
  EXPECT_LT(Count(Shown(Written(base, "HH", 0, 0x10000)), '.'), Count(Shown(Written(base, "HH")), '.'));
  // The euro of the western code page as the other kind of metafile has it, in Unicode.
  Emf euro = Emf().Add(
      82, Fields({1, -20, 0, 0, 0, 400, 0, 0}, 4) + Numbers({'A', 'r', 'i', 'a', 'l'}, 2) + Bytes(54));
  euro.Select(1).Add(18, {1}).Add(22, {24});
  euro.Add(84, Bytes(16) + Fields({1, 0, 0, 10, 30, 1, 76, 0, 0, 0, 0, 0, 0}, 4) + Numbers({0x20AC, 0}, 2));
  const Lines wide = Shown(euro.File(48, 48)), narrow = Shown(Written(base, "\x80"));
  EXPECT_GT(Count(wide, '#'), 0);
  for (size_t y = 10; y < 34; ++y) EXPECT_EQ(wide[y].substr(8, 20), narrow[y + 20].substr(98, 20));
}

TEST(MetafileFiles, OfTwoProgramsShowTheDrawing) {
  constexpr std::tuple<int, int, Pixel> kPlaces[] = {
      {2, 2, 0xFFFFFFCC},    {8, 20, 0xFF0000FF},   {24, 20, 0xFFFF0000}, {68, 20, 0xFF00FF00},
      {100, 10, 0xFFFF00FF}, {100, 21, 0xFFFFFFCC}, {59, 43, 0xFFFF0000}, {69, 43, 0xFF00FF00},
      {59, 53, 0xFF0000FF},  {69, 53, 0xFFFFFF00},  {140, 92, 0xFFFFFFCC}};
  for (const std::string name : {"inkscape.wmf", "inkscape.emf", "office.wmf", "office.emf"}) {
    const auto picture = LoadPicture(TEST_DATA "/metafiles/" + name);
    ASSERT_TRUE(picture) << name;
    const int beyond = name == "inkscape.emf" ? 3 : 0;
    EXPECT_NEAR(picture->Width(), 144, beyond) << name;
    EXPECT_NEAR(picture->Height(), 96, beyond) << name;
    for (const auto& [x, y, color] : kPlaces)
      EXPECT_EQ(picture->Row(y)[x], color) << name << ' ' << x << ' ' << y;
    int64_t green = 0, blue = 0, black = 0;
    for (int y = 40; y < 94; ++y) {
      for (int x = 2; x < 126; ++x) {
        const Pixel pixel = picture->Row(y)[x];
        green += y > 58 && x < 58 && pixel == 0xFF008000;
        blue += y > 58 && x > 96 && (pixel & 0xFF) > 200 && (pixel >> 16 & 0xFF) < 100;
        black += x < 50 && pixel == 0xFF000000;
      }
    }
    EXPECT_GT(green, 60) << name;
    EXPECT_GT(blue, 20) << name;
    EXPECT_GT(black, 30) << name;
  }
}

}  // namespace
}  // namespace zelvane::test
