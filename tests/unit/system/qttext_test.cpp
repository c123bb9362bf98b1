#include "surface/system/text/QtText.h"

#include <gtest/gtest.h>

#include <random>

#include "surface/system/files/Files.h"

namespace zelvane::test {
namespace {

TEST(Text, AnyBytesComeBackFromTheToolkitsText) {
  // Characters of each length, parts of them, a coded surrogate and bytes that never occur.
  const std::string pieces[] = {"a",        "\n",           "ä",    "€",   "😀", "\xE2\x82",
                                "\xF0\x9F", "\xED\xB2\x80", "\xC0", "\xFF"};
  std::mt19937 random(1);
  for (int i = 0; i < 2000; ++i) {
    std::string bytes;
    for (int parts = static_cast<int>(random() % 6); parts >= 0; --parts) bytes += pieces[random() % 10];
    const QString text = ToQt(bytes);
    ASSERT_EQ(FromQt(text), bytes);
    const QString line = OneLine(text);
    ASSERT_TRUE(line.isValidUtf16() && !line.contains('\n')) << i;
  }
}

TEST(Text, NamesThatDifferInBytesStayDifferent) {
  EXPECT_EQ(ToLower("\xC4"
                    "A\xE4.\xFF"),
            "\xC4"
            "a\xE4.\xFF");
  EXPECT_NE(ExtensionOf("a.\xC4"), ExtensionOf("a.\xE4"));
}

}  // namespace
}  // namespace zelvane::test
