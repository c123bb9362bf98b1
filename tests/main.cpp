#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <filesystem>

#include "surface/forms/windows/Application.h"

/// Settings, data and temporary files of a test go to a folder of its own, whatever else runs.
int main(int argc, char** argv) {
  const QTemporaryDir own;
  qputenv("XDG_CONFIG_HOME", own.filePath("settings").toLocal8Bit());
  qputenv("XDG_DATA_HOME", own.filePath("data").toLocal8Bit());
  QFile::setPermissions(own.path(), QFile::Permissions(0x7055));  // a test gives up its rights
  qputenv("TMPDIR", own.path().toLocal8Bit());
  testing::InitGoogleTest(&argc, argv);
  const zelvane::Application toolkit(argc, argv);
  const int result = RUN_ALL_TESTS();
  // The toolkit leaves names that aren't UTF-8.
  std::filesystem::remove_all(own.path().toStdString());
  return result;
}
