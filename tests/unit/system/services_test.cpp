#include <gtest/gtest.h>
#include <signal.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QSettings>
#include <QThread>
#include <cstdlib>
#include <fstream>

#include "codecs/PictureSamples.h"
#include "surface/system/desktop/Clipboard.h"
#include "surface/system/desktop/Programs.h"
#include "surface/system/desktop/Screen.h"
#include "surface/system/files/Folders.h"
#include "surface/system/files/SettingsStore.h"

namespace zelvane::test {
namespace {

TEST(Settings, GoThroughToTheFileBothWays) {
  const std::string application = "ZelvaneSettingsTest";
  const std::string path = qEnvironmentVariable("XDG_CONFIG_HOME").toStdString() + '/' + application + ".ini";
  EXPECT_EQ(GetSetting(application, "Main", "Size", "none"), "none");
  for (const std::string value : {"12", "", "a, b; \"c\" = %d\\e", " Ünï ", "@Invalid()", "line\nbreak"}) {
    SaveSetting(application, "Main", "Size", value);
    EXPECT_EQ(GetSetting(application, "Main", "Size", "none"), value);
    const QSettings other(QString::fromStdString(path), QSettings::IniFormat);
    EXPECT_EQ(other.value("Main/Size").toString().toStdString(), value);
  }
  SaveSetting(application, "Main", "Size", "/bytes \xE4,\xFF\n");
  EXPECT_EQ(GetSetting(application, "Main", "Size", "none"), "/bytes \xE4,\xFF\n");
  // Another process writes the file.
  std::ofstream(path) << "[Main]\nSize=from outside\nList=1, 2\n";
  EXPECT_EQ(GetSetting(application, "Main", "Size", "none"), "from outside");
  EXPECT_EQ(GetSetting(application, "Main", "List", "none"), "1, 2");
  EXPECT_EQ(GetSetting(application, "Other", "Size", "none"), "none");
}

TEST(Places, AreThoseThatTheDesktopNamesAndHomeForTheRest) {
  const std::string home = std::getenv("HOME"), settings = std::getenv("XDG_CONFIG_HOME");
  std::ofstream(settings + "/user-dirs.dirs") << "XDG_DESKTOP_DIR=\"" << settings << "/\"\n"
                                              << "XDG_DOCUMENTS_DIR=\"" << settings << "/gone\"\n";
  EXPECT_EQ(DesktopFolder(), settings);
  EXPECT_EQ(DocumentsFolder(), home);
}

TEST(Clipboard, HoldsABitmapOrAText) {
  const auto picture = Decoded(Encoded(Sample(), "png"));
  ASSERT_TRUE(picture);
  Clipboard::SetBitmap(*picture);
  // Nothing is copied until either side writes.
  EXPECT_EQ(Clipboard::GetBitmap()->Row(0), picture->Row(0));
  Bitmap(*picture).WritableRow(0)[0] ^= 0xFFFFFF;
  EXPECT_EQ(Difference(Clipboard::GetBitmap(), Sample()), 0);
  const QByteArray png = QGuiApplication::clipboard()->mimeData()->data("image/png");
  EXPECT_EQ(Difference(Bytes(png.begin(), png.end()), Sample()), 0);
  Clipboard::SetText("Grüße");
  EXPECT_EQ(Clipboard::GetText(), "Grüße");
  EXPECT_FALSE(Clipboard::HasBitmap());
  EXPECT_FALSE(Clipboard::GetBitmap());
  Clipboard::Clear();
  EXPECT_EQ(Clipboard::GetText(), "");
}

TEST(Clipboard, TakesWhatOtherProgramsOfferOnWhite) {
  QImage clear(2, 1, QImage::Format_ARGB32);
  clear.setPixel(0, 0, qRgba(200, 100, 0, 0));
  clear.setPixel(1, 0, qRgba(0, 0, 0, 51));
  const auto offer = [](const std::vector<std::pair<const char*, Bytes>>& formats) {
    auto* data = new QMimeData;
    for (const auto& [format, content] : formats)
      data->setData(format, QByteArray(reinterpret_cast<const char*>(content.data()), std::ssize(content)));
    QGuiApplication::clipboard()->setMimeData(data);
    return Clipboard::GetBitmap();
  };
  for (const auto& got :
       {offer({{"image/png", Encoded(clear, "png")}}), offer({{"image/tiff", Encoded(clear, "tiff")}}),
        offer({{"image/png", Text("rubbish")}, {"image/bmp", Encoded(clear, "png")}})}) {
    ASSERT_TRUE(got);
    EXPECT_EQ(got->Row(0)[0], 0xFFFFFFFF);
    EXPECT_EQ(got->Row(0)[1], 0xFFCCCCCC);
  }
  EXPECT_FALSE(offer({{"image/png", {}}, {"image/bmp", Encoded(clear, "png")}}));
  EXPECT_FALSE(offer({{"text/html", Text("<img>")}}));
}

/// The code once the program has ended; it's given plenty of time.
int EndOf(Program& program) {
  for (int i = 0; i < 1000 && program.ExitCode() == kStillActive; ++i) QThread::msleep(10);
  return program.ExitCode();
}

TEST(Programs, RunAndTellTheirExitCode) {
  const Folder folder;
  EXPECT_EQ(StartProgram(folder.Path("missing"), {}), nullptr);
  EXPECT_EQ(StartProgram(folder.Path("."), {}), nullptr);
  const auto program = StartProgram("/bin/sh", {"-c", "test \"$1\" = 'a b' && exit 7", "sh", "a b"});
  ASSERT_TRUE(program);
  EXPECT_EQ(EndOf(*program), 7);

  const std::string go = folder.Path("go");
  const auto ended =
      StartProgram("/bin/sh", {"-c", "until test -e \"$0\"; do sleep 0.01; done; kill -TERM $$", go});
  ASSERT_TRUE(ended);
  EXPECT_EQ(ended->ExitCode(), kStillActive);
  std::ofstream(go) << "go";
  EXPECT_EQ(EndOf(*ended), 128 + SIGTERM);
}

TEST(Screen, BringsAnAreaOntoTheScreensByAsLittleAsNeeded) {
  // Two side by side, the right one lower.
  const std::vector<Screen::Area> screens = {{0, 0, 1000, 800}, {1000, 200, 1000, 800}};
  const auto at = [&](double left, double top) { return Screen::BroughtOnto(screens, {left, top, 400, 60}); };
  EXPECT_EQ(at(800, 500), (Screen::Area{800, 500, 400, 60})) << "on both";
  EXPECT_EQ(at(700, 100), (Screen::Area{600, 100, 400, 60})) << "half off, above the right screen";
  EXPECT_EQ(at(5000, 990), (Screen::Area{1600, 940, 400, 60}));
  EXPECT_EQ(at(-50, -50), (Screen::Area{0, 0, 400, 60}));
  EXPECT_EQ(Screen::BroughtOnto({{0, 0, 300, 800}}, {50, 10, 400, 60}), (Screen::Area{0, 10, 400, 60}));
  EXPECT_EQ(Screen::BroughtOnto({}, {-5, -5, 1, 1}), (Screen::Area{-5, -5, 1, 1}));
}

}  // namespace
}  // namespace zelvane::test
