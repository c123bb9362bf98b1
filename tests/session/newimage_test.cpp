#include <QApplication>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTest>

#include "colour/ColorPanel.h"
#include "document/window/frmNew.h"
#include "session/Session.h"
#include "shell/MainForm.h"
#include "shell/MenuEvents.h"
#include "shell/state/Settings.h"
#include "surface/forms/windows/Application.h"

using namespace zelvane;

namespace {

struct NewImages : Session {
  static void Fill(const std::string& name, double width, double height) {
    frmNew->txtName.SetText(name);
    frmNew->txtWidth.SetValue(width);
    frmNew->txtHeight.SetValue(height);
  }
  static void Press(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
    QTest::keyClick(frmNew->txtName.Widget(), key, held);
    DoEvents();
  }
  static bool IsAsking() { return frmNew->Visible() && !MainForm->Enabled(); }
};

TEST_F(NewImages, AreMadeAsTyped) {
  Start();
  ColorPanel->SelColor[0].SetBackColor(RGB(1, 2, 3));
  ColorPanel->SelColor[1].SetBackColor(RGB(4, 5, 6));
  const Color backgrounds[] = {kWhite, RGB(1, 2, 3), RGB(4, 5, 6)};
  for (int i = 0; i < 3; ++i) {
    NewImage_Click();
    ASSERT_TRUE(IsAsking());
    Fill("fish & chips", 7 + i, 5);
    frmNew->Option1[i].SetValue(true);
    Press(Qt::Key_Return);
    EXPECT_TRUE(MainForm->Enabled() && !frmNew->Visible());
    EXPECT_TRUE(MainForm->LeftBar.HasFocus());
    const frmPaint& document = Document();
    const QMdiSubWindow* drawn_active = MainForm->Widget()->findChild<QMdiArea*>()->activeSubWindow();
    EXPECT_TRUE(drawn_active && drawn_active->isAncestorOf(document.PaintArea.Widget()));
    EXPECT_EQ(document.Caption() + document.Buffer.Tag(), "fish & chips - 100%");
    EXPECT_EQ(Picture(document.Buffer).size(), QSize(7 + i, 5));
    EXPECT_EQ(document.Buffer.Point(6, 4), backgrounds[i]);
    EXPECT_FALSE(document.Dirty);
  }
}

TEST_F(NewImages, WhatCannotBeMadeIsToldAndWhatWasTypedStays) {
  Start();
  for (const auto& [width, height] : {std::pair{0, 10}, {10, 0}, {32768, 1}, {1, 999999}}) {
    NewImage_Click();
    Fill("a", width, height);
    EXPECT_EQ(Answering({"OK"}, [] { Press(Qt::Key_Return); }).size(), 1u);
    EXPECT_TRUE(IsAsking() && ActiveDocument() == nullptr);
    EXPECT_EQ(QSizeF(frmNew->txtWidth.Value(), frmNew->txtHeight.Value()), QSizeF(width, height));
    Press(Qt::Key_Escape);
    EXPECT_TRUE(MainForm->Enabled() && !frmNew->Visible());
  }
  NewImage_Click();
  EXPECT_EQ(frmNew->txtHeight.Value(), 999999) << "hidden, not gone";
  Fill("line", 32767, 1);
  Press(Qt::Key_Return);
  EXPECT_EQ(Document().Buffer.ScaleWidth(), 32767);
}

TEST_F(NewImages, LeaveByEveryRoad) {
  Start(MakePicture("a.png", QImage(9, 9, QImage::Format_RGB32)));
  Document().PaintArea.SetFocus();
  for (const std::function<void()>& leave :
       {std::function<void()>([] { ClickOn(frmNew->Command1[0]); }), {[] { frmNew->Widget()->close(); }}}) {
    NewImage_Click();
    leave();
    EXPECT_TRUE(MainForm->Enabled() && !frmNew->Visible());
    EXPECT_TRUE(Document().PaintArea.HasFocus()) << "the keyboard is where it was";
  }
  NewImage_Click();
  Press(Qt::Key_Escape, Qt::ShiftModifier);
  EXPECT_TRUE(State.Exiting && Forms().empty());
}

TEST_F(NewImages, KeepTheirDefaultsOnDemand) {
  Start();
  NewImage_Click();
  EXPECT_EQ(frmNew->txtName.Text(), "Untitled");
  Fill("mine", 640, 480);
  frmNew->Option1[2].SetValue(true);
  ClickOn(frmNew->Command2);
  EXPECT_TRUE(IsAsking());
  Fill("other", 1, 2);
  frmNew->Option1[1].SetValue(true);
  Start();
  NewImage_Click();
  EXPECT_EQ(frmNew->txtName.Text(), "mine");
  EXPECT_EQ(QSizeF(frmNew->txtWidth.Value(), frmNew->txtHeight.Value()), QSizeF(640, 480));
  EXPECT_TRUE(frmNew->Option1[2].Value());

  WriteSetting("NewImageWidth", "wide"), WriteSetting("ImageDefaultBackground", "7");
  Start();
  EXPECT_EQ(frmNew->txtWidth.Value(), 400) << "what can't be read leaves the design value";
  EXPECT_TRUE(frmNew->Option1[0].Value());
}

}  // namespace
