#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "surface/forms/windows/Application.h"

/// Settings and data that a test writes go to a folder of its own.
int main(int argc, char** argv) {
  const QTemporaryDir own;
  qputenv("XDG_CONFIG_HOME", own.filePath("settings").toLocal8Bit());
  qputenv("XDG_DATA_HOME", own.filePath("data").toLocal8Bit());
  testing::InitGoogleTest(&argc, argv);
  const zelvane::Application toolkit(argc, argv);
  return RUN_ALL_TESTS();
}
