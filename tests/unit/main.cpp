#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

/// Settings that a test writes go to a folder of its own.
int main(int argc, char** argv) {
  const QTemporaryDir settings;
  qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
  testing::InitGoogleTest(&argc, argv);
  const QApplication toolkit(argc, argv);
  return RUN_ALL_TESTS();
}
