#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "surface/forms/windows/Application.h"

/// Settings that a test writes go to a folder of its own.
int main(int argc, char** argv) {
  const QTemporaryDir settings;
  qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
  testing::InitGoogleTest(&argc, argv);
  const zelvane::Application toolkit(argc, argv);
  return RUN_ALL_TESTS();
}
