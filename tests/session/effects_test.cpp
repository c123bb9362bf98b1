#include <sys/stat.h>

#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <map>

#include "imageops/Undo.h"
#include "imageops/effects/RunEffect.h"
#include "imageops/effects/WaitForProgram.h"
#include "imageops/effects/frmStop.h"
#include "selection/Selection.h"
#include "session/Session.h"
#include "shell/MainForm.h"
#include "shell/MenuEvents.h"
#include "surface/forms/windows/Application.h"
#include "surface/system/files/Files.h"

using namespace zelvane;

namespace {

class Effects : public Session {
 protected:
  Effects() { std::filesystem::create_directory(programs_); }
  ~Effects() override { std::filesystem::remove_all(programs_); }

  /// A program in the folder of effects; the shell commands find the exchange file as "$1".
  void MakeEffect(const std::string& name, const std::string& commands, mode_t mode = 0700) const {
    std::ofstream(programs_ + name) << commands;
    ASSERT_EQ(::chmod((programs_ + name).c_str(), mode), 0);
  }
  static std::string Shell(const std::string& commands) { return "#!/bin/sh\n" + commands + "\n"; }
  std::string Deliver(const QImage& result) const {
    return Shell("cp '" + MakePicture("result.bmp", result) + "' \"$1\"");
  }
  frmPaint& StartWith(const QImage& picture) {
    Start(MakePicture("picture.bmp", picture));
    return Document();
  }
  /// The program has ended as it should: nothing but the document tells of it.
  void ExpectOver(const std::string& what) const {
    EXPECT_TRUE(MainForm->Enabled()) << what;
    EXPECT_EQ(MainForm->Children().size(), 1u) << what;
    EXPECT_TRUE(QDir(QString::fromStdString(State.TempPath))
                    .isEmpty(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot))
        << what;
  }
  /// Tries `step` again and again from the event loop.
  static void Repeatedly(QTimer& timer, const std::function<void()>& step) {
    QObject::connect(&timer, &QTimer::timeout, step);
    timer.start(5);
  }
  static QImage Plain(int width, int height, QRgb color) {
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(color);
    return picture;
  }

  const QImage red_ = Plain(30, 20, 0xFFFF0000), blue_ = Plain(30, 20, 0xFF0000FF);

 private:
  std::string programs_ = JoinPath(ApplicationFolder(), "Effects/");
};

}  // namespace

TEST_F(Effects, TheMenuListsThePrograms) {
  Start();
  EXPECT_FALSE(MainForm->Menus.Effects.Visible());
  for (const char* name : {"sharpen.exe", "Zoom.EXE", "a & b.exe", "éclair.exe"}) MakeEffect(name, Shell(""));
  MakeEffect("readme.exe", "text", 0600);
  frmPaint& document = StartWith(red_);
  const auto& entries = MainForm->Menus.Effect;
  ASSERT_EQ(entries.size(), 4u);
  EXPECT_TRUE(MainForm->Menus.Effects.Visible());
  std::string captions;
  for (const auto& entry : entries) captions += entry->Caption() + ", ";
  EXPECT_EQ(captions, "A && b, Sharpen, Zoom, Éclair, ");
  for (const bool is_changed : {false, true}) {
    document.Dirty = is_changed;
    Effects_Click();
    EXPECT_EQ(entries[1]->Enabled(), is_changed);
  }
}

TEST_F(Effects, AResultBecomesThePictureAndCanBeUndone) {
  const std::string name = "50% \xFF\nx.exe";
  MakeEffect(name, Deliver(blue_) + "test $# = 1 && printf %s \"$1\" > '" + PathOf("path") + "'\n");
  frmPaint& document = StartWith(red_);
  Effect_Click(0);
  EXPECT_EQ(Picture(document.Buffer), blue_);
  EXPECT_TRUE(document.Dirty);
  Undo_Click();
  EXPECT_EQ(Picture(document.Buffer), red_);
  std::ifstream path(PathOf("path"));
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(path), {}), State.TempPath + "50% \xFF\nx.bmp");
  ExpectOver(name);
}

TEST_F(Effects, WhateverAProgramDoesTheDocumentIsWhole) {
  const std::string kept = MakePicture("kept.bmp", blue_);
  const std::map<std::string, std::string> untaken = {{"deletes", "rm \"$1\""},
                                                      {"makes a folder", "rm \"$1\"; mkdir -p \"$1/in/it\""},
                                                      {"links nowhere", "ln -sf /nowhere \"$1\""}};
  const std::map<std::string, std::string> taken = {{"does nothing", ""},
                                                    {"fails", "exit 3"},
                                                    {"crashes", "kill -SEGV $$"},
                                                    {"is killed", "kill -KILL $$"},
                                                    {"writes rubbish", "echo rubbish > \"$1\""},
                                                    {"cuts the file", "truncate -s 200 \"$1\""},
                                                    {"empties it", ": > \"$1\""},
                                                    {"makes a pipe", "rm \"$1\"; mkfifo \"$1\""}};
  for (const auto& [name, commands] : untaken) MakeEffect(name, Shell(commands));
  for (const auto& [name, commands] : taken) MakeEffect(name, Shell(commands));
  MakeEffect("no program",
             "\x7F"
             "ELF rubbish");
  MakeEffect("links", Shell("ln -sf '" + kept + "' \"$1\""));
  frmPaint& document = StartWith(red_);
  const auto run = [&](const std::string& name, const QImage& result, bool is_taken) {
    document.Dirty = false;
    RunEffect(name);
    EXPECT_EQ(Picture(document.Buffer), result) << name;
    EXPECT_EQ(document.Dirty, is_taken) << name;
    ExpectOver(name);
  };
  for (const auto& [name, commands] : untaken) run(name, red_, false);
  EXPECT_TRUE(document.Undo.Image().IsEmpty()) << "no snapshot was taken";
  for (const auto& [name, commands] : taken) run(name, red_, true);
  for (const char* name : {"no program", "missing"}) run(name, red_, true);
  run("links", blue_, true);
  EXPECT_TRUE(FileExists(kept));
}

TEST_F(Effects, AResultOfAnotherSizeIsLaidOut) {
  const QImage large = Plain(90, 80, 0xFF00FF00);
  MakeEffect("grow.exe", Deliver(large));
  frmPaint& document = StartWith(red_);
  LiftSelection(document, {20, 10, 26, 16});
  RunEffect("grow.exe");
  QImage expected = red_;
  for (int y = 10; y < 20; ++y)
    for (int x = 20; x < 30; ++x) expected.setPixel(x, y, 0xFF00FF00);
  EXPECT_EQ(Picture(document.Buffer), expected);
  EXPECT_EQ(PlaceOf(document.SelectArea), QRect(20, 10, 90, 80));
  MoveSelection(document, 500, 0);
  EXPECT_NE(document.Buffer.Point(25, 15), RGB(0, 255, 0)) << "what lay beneath returns";
  DropSelection(document);
  RunEffect("grow.exe");
  EXPECT_EQ(Picture(document.Buffer), large);
  EXPECT_EQ(document.PaintArea.Width(), 92);
}

TEST_F(Effects, RotateMakesADocumentInPlaceOfTheOldOne) {
  const QImage turned = Plain(20, 30, 0xFF00FF00);
  MakeEffect("Rotate.EXE", Deliver(turned));
  MakeEffect("rotate.exe", Shell("echo rubbish > \"$1\""));
  frmPaint& old = StartWith(red_);
  old.Move(450, 300);
  ZoomTo(2);
  const std::string caption = old.Caption(), path = old.Buffer.Tag();
  RunEffect("rotate.exe");
  EXPECT_EQ(Picture(Document().Buffer), red_) << "rubbish loses no picture";
  RunEffect("Rotate.EXE");
  EXPECT_EQ(Picture(Document().Buffer), turned);
  EXPECT_EQ(Document().Caption() + Document().Buffer.Tag(), caption + path);
  EXPECT_EQ(Document().Zoom, 200);
  EXPECT_EQ(QPointF(Document().Left(), Document().Top()), QPointF(450, 300));
  EXPECT_TRUE(Document().OpenedFile && Document().Dirty && Document().Undo.Image().IsEmpty());
  ExpectOver("rotate");
}

TEST_F(Effects, NothingCanBeDoneWhileAProgramRuns) {
  const std::string go = PathOf("go"), runs = PathOf("runs");
  MakeEffect("wait.exe", Shell("echo >> '" + runs + "'; until test -e '" + go + "'; do sleep 0.01; done"));
  frmPaint& document = StartWith(red_);
  document.Dirty = true;
  QTimer attempts;
  Repeatedly(attempts, [&] {
    if (!FileExists(runs)) return;
    EXPECT_FALSE(MainForm->Enabled());
    EXPECT_FALSE(MainForm->Widget()->close());
    QCloseEvent close;
    QApplication::sendEvent(document.Widget()->parentWidget(), &close);
    for (const Qt::Key key : {Qt::Key_W, Qt::Key_Q, Qt::Key_N, Qt::Key_F4})
      QTest::keyClick(MainForm->Widget(), key, Qt::ControlModifier);
    Effect_Click(0);
    Drag(2, 2, 9, 9);
    std::ofstream(go + "ing") << "go";
    attempts.stop();
    RenameFile(go + "ing", go);
  });
  Effect_Click(0);
  EXPECT_FALSE(attempts.isActive());
  EXPECT_EQ(QFile(QString::fromStdString(runs)).size(), 1);
  EXPECT_EQ(Picture(document.Buffer), red_);
  ExpectOver("wait");
}

TEST_F(Effects, AProgramThatGoesOnAndOnCanBeStopped) {
  Start();
  MainForm->SetEnabled(false);
  const auto wait = [&](const std::string& commands, const std::function<void()>& offered) {
    QTimer watch;
    Repeatedly(watch, [&] {
      if (frmStop.IsLoaded() && frmStop->Visible()) offered();
    });
    const auto program = StartProgram("/bin/sh", {"-c", commands});
    return WaitForProgram(*program, "Sharpen", 1);
  };
  const std::string go = PathOf("go"), lives = PathOf("lives");
  EXPECT_EQ(wait("(sleep 1000; true) & wait; echo > '" + lives + "'",
                 [] {
                   EXPECT_TRUE(frmStop->Command1.Widget()->isEnabled());
                   ClickOn(frmStop->Command1);
                 }),
            std::nullopt);
  EXPECT_FALSE(FileExists(lives));
  int offers = 0;
  EXPECT_EQ(wait("until test -e '" + go + "'; do sleep 0.01; done; exit 7",
                 [&] {
                   if (++offers == 2) std::ofstream(go) << "go";
                   if (offers < 2) frmStop->Widget()->close();
                 }),
            7);
  EXPECT_FALSE(frmStop.IsLoaded()) << "it goes with the program";
  MainForm->SetEnabled(true);
}
