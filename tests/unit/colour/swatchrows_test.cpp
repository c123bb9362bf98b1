#include "colour/SwatchRows.h"

#include <gtest/gtest.h>

namespace zelvane {
namespace {

TEST(SwatchRows, AreReadWhoeverWroteThem) {
  struct Case {
    const char* row;
    std::optional<NamedColor> read;
  };
  const Case cases[] = {{"16711680 Sky blue", NamedColor{Color{16711680}, "Sky blue"}},
                        {"255   two  blanks ", NamedColor{Color{255}, "two  blanks"}},
                        {"-2147483633 button face", NamedColor{SystemColor::ButtonFace, "button face"}},
                        {"99999999999 far", NamedColor{Color{2147483647}, "far"}},
                        {"-99999999999 far below", NamedColor{Color{-2147483647 - 1}, "far below"}},
                        {"7 ", NamedColor{Color{7}, ""}},
                        {"", std::nullopt},
                        {"255", std::nullopt},
                        {" 255 red", std::nullopt},
                        {"red 255", std::nullopt},
                        {"12a red", std::nullopt},
                        {"- red", std::nullopt}};
  for (const auto& [row, read] : cases) EXPECT_EQ(ReadSwatchRow(row), read) << row;
}

TEST(SwatchRows, AreMissingWhereTheFileDoesNotHoldThem) {
  const std::vector<std::string> standing = {"255  red ", "no row", "", "99999999999 far"};
  const std::vector<NamedColor> swatches = {
      {Color{255}, "red"}, {Color{255}, " red"}, {Color{2147483647}, "far"}, {Color{1}, "red"}};
  EXPECT_EQ(MissingRows(standing, swatches), (std::vector<std::string>{"255  red", "1 red"}));
  EXPECT_EQ(MissingRows({}, swatches).size(), swatches.size());
}

}  // namespace
}  // namespace zelvane
