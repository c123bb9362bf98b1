#include "files/FileNames.h"

#include <gtest/gtest.h>

#include "surface/system/files/Files.h"

namespace zelvane::test {
namespace {

std::string Written(const std::vector<FileFilter>& filters) {
  std::string text;
  for (const auto& [description, patterns] : filters) text += "<" + description + ":" + patterns + ">";
  return text;
}

TEST(FileNames, FiltersComeInPairsAndTheEndMayBeOdd) {
  constexpr const char* kCases[][2] = {{"", ""},
                                       {"A", ""},
                                       {"A|", "<A:>"},
                                       {"A|*.a;*.b", "<A:*.a;*.b>"},
                                       {"A|*.a|B", "<A:*.a>"},
                                       {"A||B|*.b|", "<A:><B:*.b>"},
                                       {"||", "<:>"}};
  for (const auto& [text, pairs] : kCases) EXPECT_EQ(Written(ParseFilters(text)), pairs) << text;
  const auto filters = ParseFilters("All|*.jpg;*.bmp;*.gif|Bitmap|*.bmp|GIF|*.gif|JPEG|*.jpg;*.jpe|J|*.jpg|");
  constexpr std::pair<const char*, int> kNames[] = {{"x.jpg", 4}, {"x.GIF", 2}, {"x.bm", 1},    {"x.png", 0},
                                                    {"x", 0},     {"x.", 0},    {"d.gif/x", 0}, {"", 0}};
  for (const auto& [name, index] : kNames) EXPECT_EQ(FittingFilter(filters, name), index) << name;
}

TEST(FileNames, ExtensionsFollowTheFirstPattern) {
  constexpr const char* kCases[][3] = {{"a", "*.jpg;*.jpe", "a.jpg"},
                                       {"a.b.c", "*.bmp", "a.bmp"},
                                       {"", "*.bmp", ".bmp"},
                                       {".x.y", "*.bmp", ".bmp"},
                                       {"a.b", "", "a"},
                                       {"\xFF\xE4.b", "*.gif", "\xFF\xE4.gif"},
                                       {"/d.d/a", "*.gif", "/d.d/a.gif"},
                                       {"../a.b", "*.gif", "../a.gif"},
                                       {"d.d/", "*.gif", "d.d/"},
                                       {"..", "*.gif", ".."},
                                       {"a/..", "*.gif", "a/.."}};
  for (const auto& [text, patterns, whole] : kCases) EXPECT_EQ(ApplyExtension(text, patterns), whole) << text;
  EXPECT_EQ(ConfirmedName("a", "*.gif", true), "a.gif");
  EXPECT_EQ(ConfirmedName("a", "*.gif", false), "a");
  EXPECT_EQ(ConfirmedName("a.b", "*.gif", true), "a.b");
  EXPECT_EQ(ConfirmedName("", "*.gif", true), "");
  EXPECT_EQ(ConfirmedName(".gif", "*.gif", false), "");
}

TEST(FileNames, WhatIsTypedMayBeAPath) {
  struct Case {
    std::string text, folder, name;
    bool confirmed = true;
  };
  const std::string home = HomeFolder();
  const Case cases[] = {{"a.png", "/home/me", "a.png"},
                        {"/abs/x.png", "/abs", "x.png"},
                        {"d/./e//x", "/home/me/d/e", "x"},
                        {"../x.png", "/home", "x.png"},
                        {"../../../x", "/", "x"},
                        {"..", "/home", ""},
                        {"d/..", "/home/me", ""},
                        {"d///", "/home/me/d", ""},
                        {"/", "/", ""},
                        {"~", home, ""},
                        {"~/x", home, "x"},
                        {"~x", "/home/me", "~x"},
                        {".png", "/home/me", ".png", false},
                        {"d/.png", "/home/me/d", ".png", false},
                        {"", "/home/me", "", false},
                        {{"a\0b", 3}, "/home/me", {"a\0b", 3}, false}};
  for (const Case& typed : cases) {
    const TypedPath got = ResolveTyped("/home/me", typed.text);
    EXPECT_EQ(got.folder, typed.folder) << typed.text;
    EXPECT_EQ(got.name, typed.name) << typed.text;
    EXPECT_EQ(CanConfirm(typed.text), typed.confirmed) << typed.text;
  }
  EXPECT_EQ(ResolveTyped("/", "x").folder, "/");
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
  EXPECT_EQ(FormatCount(0), "0 ");
  EXPECT_EQ(FormatCount(999), "999 ");
  EXPECT_EQ(FormatCount(1250), "1,250 ");
  EXPECT_EQ(FormatCount(1234567), "1,234,567 ");
}

}  // namespace
}  // namespace zelvane::test
