#include "files/FileNames.h"

#include <gtest/gtest.h>

#include <utility>

#include "surface/system/files/Files.h"

namespace zelvane::test {
namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

TEST(FileNames, FiltersComeInPairsAndTheEndMayBeOdd) {
  for (const auto& [text, expected] :
       Pairs{{"A", ""}, {"A|", "A:;"}, {"A|a|B", "A:a;"}, {"A||B|b;c|", "A:;B:b;c;"}}) {
    std::string written;
    for (const auto& [description, patterns] : ParseFilters(text))
      written += description + ':' + patterns + ';';
    EXPECT_EQ(written, expected) << text;
  }
  const auto filters = ParseFilters("All|*.jpg;*.bmp;*.gif|Bitmap|*.bmp|GIF|*.gif|JPEG|*.jpg;*.jpe|J|*.jpg|");
  constexpr std::pair<const char*, int> kNames[] = {{"x.jpg", 4}, {"x.GIF", 2}, {"x.bm", 1},    {"x.png", 0},
                                                    {"x", 0},     {"x.", 0},    {"d.gif/x", 0}, {"", 0}};
  for (const auto& [name, index] : kNames) EXPECT_EQ(FittingFilter(filters, name), index) << name;
}

TEST(FileNames, ExtensionsFollowTheFirstPattern) {
  const Pairs cases{{"a", "a.jpg"},         {"a.b.c", "a.jpg"},     {"", ".jpg"},
                    {".x.y", ".jpg"},       {"\xE4.b", "\xE4.jpg"}, {"/d.d/a", "/d.d/a.jpg"},
                    {"../a.b", "../a.jpg"}, {"d.d/", "d.d/"},       {"..", ".."}};
  for (const auto& [text, whole] : cases) EXPECT_EQ(ApplyExtension(text, "*.jpg;*.jpe"), whole) << text;
  EXPECT_EQ(ConfirmedName("a", "*.gif", true), "a.gif");
  EXPECT_EQ(ConfirmedName("a", "*.gif", false), "a");
  EXPECT_EQ(ConfirmedName("a.b", "*.gif", true), "a.b");
  EXPECT_EQ(ConfirmedName("", "*.gif", true), "");
}

TEST(FileNames, WhatIsTypedMayBeAPath) {
  const std::string home = HomeFolder();
  const Pairs cases{{"a.png", "/d/me|a.png"}, {"/e/x", "/e|x"},      {"e/.//x", "/d/me/e|x"},
                    {"../x", "/d|x"},         {"../../../x", "/|x"}, {"..", "/d|"},
                    {"e/..", "/d/me|"},       {"e///", "/d/me/e|"},  {"/", "/|"},
                    {"~", home + "|"},        {"~/x", home + "|x"},  {"~x", "/d/me|~x"}};
  for (const auto& [text, expected] : cases) {
    const TypedPath typed = ResolveTyped("/d/me", text);
    EXPECT_EQ(typed.folder + '|' + typed.name, expected) << text;
    EXPECT_TRUE(CanConfirm(text)) << text;
  }
  EXPECT_EQ(ResolveTyped("/", "x").folder, "/");
  for (const std::string& text :
       {std::string(), std::string("a\0b", 3), std::string(".png"), std::string("d/.png")})
    EXPECT_FALSE(CanConfirm(text)) << text;
}

TEST(FileNames, PathsLoseFoldersFromTheLeftAndThenCharacters) {
  const auto width = [](const std::string& text) { return static_cast<double>(text.size()); };
  const auto shortened = [&](const std::string& text, int room) {
    return ShortenPath(text, room + 60, 1, width);
  };
  EXPECT_EQ(shortened("/aa/bb/cc/file ", 15), "/aa/bb/cc/file ");
  EXPECT_EQ(shortened("/one/bb/cc/file ", 15), "// .../cc/file ");
  EXPECT_EQ(shortened("/one/bb/cc/file ", 14), "// .../file ");
  EXPECT_EQ(shortened("/one/bb/cc/file ", 9), "// .../fi");
  EXPECT_EQ(shortened("/ää", 4), "/ä");
  EXPECT_EQ(shortened("/ää", -1), "");
  std::string deep;
  while (deep.size() < 4096) deep += "/f";
  int measured = 0;
  const auto counted = [&](const std::string& text) { return ++measured, width(text); };
  EXPECT_EQ(ShortenPath(deep, 70, 1, counted), "// .../f/f");
  EXPECT_LT(measured, 40);
}

TEST(FileNames, CountsAreGrouped) {
  EXPECT_EQ(FormatCount(999), "999 ");
  EXPECT_EQ(FormatCount(1234567), "1,234,567 ");
}

}  // namespace
}  // namespace zelvane::test
