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
  struct Case {
    const char *format, *number, *shown;
  };
  const Case cases[] = {{kMoney, "1234.5", "1,234.50"},
                        {kMoney, "5", "5.00"},
                        {kMoney, "-5", "(5.00)"},
                        {kMoney, "(5", "(5.00)"},
                        {kMoney, "-0", "0.00"},
                        {kMoney, "", "0.00"},
                        {kMoney, "-", "0.00"},
                        {kMoney, ".", "0.00"},
                        {kMoney, ".5", "0.50"},
                        {kMoney, "007", "7.00"},
                        {kMoney, "1234567", "234,567.00"},
                        {"##0 pixel(s)", "10", "10 pixel(s)"},
                        {"##0 pixel(s)", "0", "0 pixel(s)"},
                        {"##0", "1234", "234"},
                        {"##0", "12.", "12"},
                        {"##0", "-7", "-7"},
                        {"000", "5", "005"},
                        {"#,##0", "12", "12"},
                        {"-#,##0", "1234", "-1,234"},
                        {"#.##", "0.5", ".5"},
                        {"0.0 kg", "1.2", "1.2 kg"},
                        {"0.0 kg", "1.234", "1.234g"},
                        {"###", "0", ""},
                        {"##0;x -##0", "-4", "-4"},
                        {"", "12", ""}};
  for (const auto& [format, number, shown] : cases)
    EXPECT_EQ(Shown(format, number), shown) << "'" << number << "' through '" << format << "'";
}

TEST(NumberMask, KnowsWhenASignIsWanted) {
  EXPECT_EQ(MaskOf("##0", false, false), "-##0");
  EXPECT_EQ(MaskOf("##0", false, true), "##0");
  EXPECT_EQ(MaskOf("##0 (m)", false, false), "##0 (m)");
  EXPECT_EQ(MaskOf("#;#x", false, false), "-#x");
  EXPECT_EQ(MaskOf("#;(#);y", false, false), "(#);y");
  EXPECT_EQ(Shown("##0", "-12", true), "12");
}

TEST(NumberMask, ReducesTextToANumber) {
  const auto reduced = [](const char* text) { return ReduceToNumber(text, false).text; };
  EXPECT_EQ(reduced("  1,234.50 "), "1234.50");
  EXPECT_EQ(reduced("(5.00)"), "-5.00");
  EXPECT_EQ(reduced("1-2(3"), "123");
  EXPECT_EQ(reduced("1.2.3"), "1.23");
  EXPECT_EQ(reduced("x-1"), "1");
  EXPECT_EQ(reduced("12 pixel(s)"), "12");
  EXPECT_EQ(reduced("   "), "");
  EXPECT_FALSE(ReduceToNumber("-12", false).is_positive);
  EXPECT_TRUE(ReduceToNumber("-12", true).is_positive);
  EXPECT_TRUE(ReduceToNumber("-0", false).is_positive);
}

TEST(NumberMask, TellsTheLongestInput) {
  EXPECT_EQ(LongestInput("##0 pixel(s)"), 12);
  EXPECT_EQ(LongestInput("##0"), 3);
  EXPECT_EQ(LongestInput(""), 0);
  EXPECT_EQ(LongestInput(kMoney), 10);
  EXPECT_EQ(LongestInput("####;##"), 4);
  EXPECT_EQ(LongestInput("##;-##"), 3);
  EXPECT_EQ(LongestInput("##;(##)"), 3);
  EXPECT_EQ(LongestInput(std::string(40000, '#')), 32767);
}

TEST(NumberMask, ReadsAndWritesNumbers) {
  EXPECT_EQ(NumberOf("1,234.50"), 1);
  EXPECT_EQ(NumberOf("-5.5"), -5.5);
  EXPECT_EQ(NumberOf(" 12 pixel(s)"), 12);
  EXPECT_EQ(NumberOf(".5"), 0.5);
  for (const char* none : {"", " ", "-", ".", "(5.00)", "inf", "nan", "-inf"})
    EXPECT_EQ(NumberOf(none), 0) << none;
  EXPECT_EQ(NumberOf("1e3"), 1);
  EXPECT_EQ(NumberOf("-" + std::string(400, '9')), -std::numeric_limits<double>::max());
  EXPECT_EQ(NumberOf("0." + std::string(400, '0') + "1"), 0);

  EXPECT_EQ(NumberText(0.1 + 0.2), "0.3");
  EXPECT_EQ(NumberText(999999.99), "999999.99");
  EXPECT_EQ(NumberText(-12), "-12");
  EXPECT_EQ(NumberText(1e20), "100000000000000000000");
  EXPECT_EQ(NumberText(0.00001), "0.00001");
}

TEST(NumberMask, ReadsColours) {
  EXPECT_EQ(ColorNumberOf("&H00FFFFFF&"), 0xFFFFFF);
  EXPECT_EQ(ColorNumberOf("&H0000FF"), 0xFF);
  EXPECT_EQ(static_cast<uint32_t>(ColorNumberOf("&H80000005&")), 0x80000005u);
  EXPECT_EQ(ColorNumberOf("255"), 255);
  EXPECT_EQ(ColorNumberOf("white"), 0);
}

}  // namespace
}  // namespace zelvane
