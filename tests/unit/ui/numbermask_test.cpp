#include "ui/NumberMask.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace zelvane {
namespace {

constexpr char kMoney[] = "###,##0.00;(##,###.00)";

/// As a box shows a text that it was given.
std::string Shown(const std::string& format, const std::string& text, bool positive_only = false) {
  const PlainNumber plain = ReduceToNumber(text, positive_only);
  return ShowThroughMask(MaskOf(format, plain.is_positive, positive_only), plain.text);
}

TEST(NumberMask, ShowsNumbers) {
  constexpr const char* kCases[][3] = {{kMoney, "1234.5", "1,234.50"},
                                       {kMoney, "(5", "(5.00)"},
                                       {kMoney, "-1234.56", "(1,234.56)"},
                                       {kMoney, "-0", "0.00"},
                                       {kMoney, "", "0.00"},
                                       {kMoney, ".", "0.00"},
                                       {kMoney, ".5", "0.50"},
                                       {kMoney, "007", "7.00"},
                                       {kMoney, "1234567", "234,567.00"},
                                       {"##0 pixel(s)", "250 pixel(s)", "250 pixel(s)"},
                                       {"##0", "12.", "12"},
                                       {"##0", "-7", "-7"},
                                       {"000", "5", "005"},
                                       {"-#,##0", "1234", "-1,234"},
                                       {"#.##", "0.5", ".5"},
                                       {"0.0 kg", "1.2", "1.2 kg"},
                                       {"0.0 kg", "1.234", "1.234g"},
                                       {"#0.", "42.", "42"},
                                       {"###", "0", ""},
                                       {"##0;x -##0", "-4", "-4"},
                                       {"##0 (m)", "-3", "3 (m)"},
                                       {"", "12", ""}};
  for (const auto& [format, number, shown] : kCases)
    EXPECT_EQ(Shown(format, number), shown) << "'" << number << "' through '" << format << "'";
  EXPECT_EQ(Shown(kMoney, "-12", true), "12.00");
}

TEST(NumberMask, ReducesTextToANumber) {
  constexpr const char* kCases[][2] = {
      {"  1,234.50 ", "1234.50"}, {"(5.00)", "-5.00"}, {"1-2(3", "123"}, {"1.2.3", "1.23"}, {"   ", ""}};
  for (const auto& [text, reduced] : kCases) EXPECT_EQ(ReduceToNumber(text, false).text, reduced);
}

TEST(NumberMask, TellsTheLongestInput) {
  const std::pair<std::string, int> cases[] = {{"##0 pixel(s)", 12}, {"", 0},
                                               {kMoney, 10},         {"####;##", 4},
                                               {"##;-##", 3},        {std::string(40000, '#'), 32767}};
  for (const auto& [format, longest] : cases) EXPECT_EQ(LongestInput(format), longest) << format;
}

TEST(NumberMask, ReadsAndWritesNumbers) {
  const std::pair<std::string, double> spelt[] = {
      {"1,234.50", 1},
      {"-5.5", -5.5},
      {" 12 pixel(s)", 12},
      {".5", 0.5},
      {"1e3", 1},
      {"-" + std::string(400, '9'), -std::numeric_limits<double>::max()},
      {"0." + std::string(400, '0') + "1", 0}};
  for (const auto& [text, number] : spelt) EXPECT_EQ(NumberOf(text), number) << text;
  for (const char* none : {"", " ", "-", ".", "(5.00)", "inf", "nan", "-inf"})
    EXPECT_EQ(NumberOf(none), 0) << none;
  constexpr std::pair<double, const char*> kWritten[] = {
      {0.1 + 0.2, "0.3"}, {999999.99, "999999.99"}, {1e20, "100000000000000000000"}, {0.00001, "0.00001"}};
  for (const auto& [number, text] : kWritten) EXPECT_EQ(NumberText(number), text);
}

TEST(NumberMask, ReadsColours) {
  constexpr std::pair<const char*, uint32_t> kCases[] = {
      {"&H00FFFFFF&", 0xFFFFFF}, {"&H0000FF", 0xFF}, {"&H80000005&", 0x80000005}, {"255", 255}, {"white", 0}};
  for (const auto& [text, colour] : kCases)
    EXPECT_EQ(static_cast<uint32_t>(ColorNumberOf(text)), colour) << text;
}

}  // namespace
}  // namespace zelvane
