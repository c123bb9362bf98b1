#include <QFile>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "session/Session.h"
#include "shell/Logo.h"
#include "shell/MainForm.h"
#include "shell/frmAbout.h"
#include "shell/state/Settings.h"
#include "surface/forms/windows/EventLoop.h"
#include "ui/Gradients.h"

namespace zelvane {
namespace {

using About = Session;

TEST_F(About, ShowsAsOftenAsAskedAndOnlyAsLongAsItHasTheKeyboard) {
  Start("");
  for (const auto& [key, shift] :
       {std::pair(Qt::Key_Escape, Qt::ShiftModifier), {Qt::Key_Return, Qt::NoModifier}}) {
    MainForm->Menus.AboutKorvath.OnClick();
    ASSERT_TRUE(frmAbout.IsLoaded() && frmAbout->Visible());
    QTest::keyClick(frmAbout->Widget(), key, shift);
    DoEvents();
    EXPECT_FALSE(frmAbout.IsLoaded()) << key;
  }
  MainForm->Menus.AboutKorvath.OnClick();
  MainForm->Activate();
  DoEvents();
  EXPECT_FALSE(frmAbout.IsLoaded());
}

TEST_F(About, AsksTheDesktopForWhatItLeadsTo) {
  Start("");
  MainForm->Menus.AboutKorvath.OnClick();
  const QByteArray path = qgetenv("PATH");
  qputenv("PATH", PathOf("").c_str());
  const auto ask = [] { frmAbout->cmdSysInfo.OnClick(); };
  EXPECT_EQ(Answering({"OK"}, ask),
            std::vector<std::string>{"System Information Is Unavailable At This Time"});
  EXPECT_TRUE(frmAbout.IsLoaded()) << "stays behind its message";

  QFile program(QString::fromStdString(PathOf("hardinfo")));
  ASSERT_TRUE(program.open(QIODevice::WriteOnly));
  program.write("#!/bin/sh\n: >\"$0.started\"\n");
  program.close();
  program.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
  EXPECT_EQ(Answering({}, ask), std::vector<std::string>{});
  const QString started = program.fileName() + ".started";
  EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(started); }));
  qputenv("PATH", path);
}

TEST_F(About, FadesInEightyFiveBandsFromTheSideThatIsTold) {
  Canvas surface;
  surface.Resize(4, 85);
  PaintFade(surface, 255, 10, 0, kTopDown);
  for (int y = 0; y < 85; ++y)
    ASSERT_EQ(surface.GetPixel(2, y), RGB(252 - 3 * y, std::max(0, 7 - 3 * y), 0)) << y;
  const Bitmap downwards = surface.Image();
  PaintFade(surface, 255, 10, 0, 7);
  EXPECT_TRUE(std::equal(downwards.Row(0), downwards.Row(0) + 4 * 85, surface.Image().Row(0)));
  PaintFade(surface, 255, 10, 0, kBottomUp);
  EXPECT_EQ(surface.GetPixel(2, 84), RGB(249, 4, 0)) << "boxes reach into the band before";
  EXPECT_EQ(surface.GetPixel(2, 0), kBlack);
}

/// Pressed at once, so that the start needn't wait.
TEST_F(About, SplashTellsEachStepAndGoesBeforeTheMainWindowComes) {
  WriteSetting("ShowSplashScreen", "1");
  std::vector<std::string> told;
  bool is_alone = true;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&] {
    if (!Logo.IsLoaded()) return;
    if (told.empty() || told.back() != Logo->Message.Caption()) told.push_back(Logo->Message.Caption());
    is_alone &= !MainForm.IsLoaded() || !MainForm->Visible();
    if (told.size() == 3) QTest::mouseClick(Logo->Artwork.Widget(), Qt::LeftButton);
  });
  watch.start(10);
  Start("");
  EXPECT_EQ(told, (std::vector<std::string>{"", "Loading Colors...", "Loading Fonts..."}));
  EXPECT_TRUE(is_alone);
  EXPECT_FALSE(Logo.IsLoaded() || State.ShowSplash);
  EXPECT_TRUE(MainForm->Visible());
}

}  // namespace
}  // namespace zelvane
