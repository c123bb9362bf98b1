#include "surface/system/desktop/FontFile.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

namespace zelvane {
namespace {

TEST(FontFiles, TellsTheReachOfWholeFilesAndTheUsualOneForNonsense) {
  const QString path = QDir::temp().filePath("zelvane-reach.ttf");
  const auto read = [&](const QByteArray& bytes, int face = 0) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    file.close();
    return ReadLineReach(path.toStdString(), face);
  };
  const auto table = [](const char* name, char offset) {
    return QByteArray(name) + QByteArray(7, 0) + offset + QByteArray(4, 0);
  };
  // Two tables: 1000 units to the size (0x03E8), lines from -250 (0xFF06) to 900 (0x0384).
  const auto font = [&](const QByteArray& lines) {
    return QByteArray("OTTO\0\2\0\0\0\0\0\0", 12) + table("head", 44) + table("hhea", 64) +
           QByteArray(18, 0) + "\x03\xE8" + QByteArray(4, 0) + lines;
  };
  const QByteArray whole = font(QByteArray("\x03\x84\xFF\x06", 4));
  const auto told = read(whole);
  ASSERT_TRUE(told);
  EXPECT_DOUBLE_EQ(told->above, 0.9);
  EXPECT_DOUBLE_EQ(told->below, 0.25);
  for (const QByteArray& broken : {QByteArray(), whole.left(whole.size() - 1), whole.left(30)})
    EXPECT_FALSE(read(broken));
  EXPECT_FALSE(read(QByteArray("ttcf") + QByteArray(40, '\xFF'), 70000)) << "far beyond the end";
  for (const QByteArray& odd :
       {font(QByteArray(4, 0)), font(QByteArray("\x7F\xFF\x80\0", 4)), QByteArray("%!PS")}) {
    const auto usual = read(odd);
    ASSERT_TRUE(usual);
    EXPECT_EQ(usual->above, LineReach{}.above);
  }
  QFile::remove(path);
  EXPECT_FALSE(ReadLineReach(path.toStdString(), 0));
}

}  // namespace
}  // namespace zelvane
