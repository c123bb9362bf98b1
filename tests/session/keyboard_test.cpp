#include <QAbstractItemView>
#include <QComboBox>
#include <QTest>

#include "colour/ColorPanel.h"
#include "colour/SwatchPanel.h"
#include "colour/frmColor.h"
#include "colour/frmNewSwatch.h"
#include "document/window/MakeDocument.h"
#include "document/window/frmNew.h"
#include "imageops/ProgressDisplay.h"
#include "imageops/frmPalette.h"
#include "imageops/frmSize.h"
#include "session/Session.h"
#include "shell/MainForm.h"
#include "shell/MenuEvents.h"
#include "surface/forms/windows/EventLoop.h"
#include "tools/OptionBars.h"
#include "tools/SelectTool.h"
#include "tools/ToolButtons.h"

using namespace zelvane;

namespace {

class Keyboard : public Session {
 protected:
  Keyboard() {
    Start();
    MainForm->OnQueryUnload = [this](bool& Cancel, UnloadModes) { ++asked_, Cancel = true; };
  }

  /// Presses the key where the keyboard is; the number of times that the main window is asked to go for it.
  int Key(Qt::Key key, Qt::KeyboardModifiers shift = Qt::NoModifier) {
    asked_ = 0;
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus ? focus : QApplication::activeWindow(), key, shift);
    DoEvents();
    return asked_;
  }

  /// Esc closes the main window, F2 minimises it.
  void ExpectMainKeys(Control& control) {
    SCOPED_TRACE(control.Name());
    control.Widget()->setFocus();
    const QWidget* focus = QApplication::focusWidget();
    ASSERT_TRUE(focus == control.Widget() || control.Widget()->isAncestorOf(focus));
    EXPECT_EQ(Key(Qt::Key_Escape), 1);
    EXPECT_EQ(Key(Qt::Key_Escape, Qt::ShiftModifier), 2) << "as its own, and as the main window of it";
    EXPECT_EQ(Key(Qt::Key_Escape, Qt::ControlModifier | Qt::ShiftModifier) + Key(Qt::Key_F3), 0);
    EXPECT_EQ(MainForm->WindowState(), kNormal);
    Key(Qt::Key_F2);
    EXPECT_EQ(MainForm->WindowState(), kMinimised);
    MainForm->Activate();
    DoEvents();
  }

  /// From each of its controls Esc puts the dialog away, with Shift then the main window as well.
  template <class Open, class IsUp>
  void ExpectDialogKeys(Open open, IsUp is_up) {
    for (const Qt::KeyboardModifier shift : {Qt::NoModifier, Qt::ShiftModifier}) {
      size_t parts = 1;
      for (size_t i = 0; i < parts; ++i) {
        open();
        DoEvents();
        ASSERT_TRUE(is_up());
        QList<QWidget*> stops;
        for (QWidget* part : QApplication::activeWindow()->findChildren<QWidget*>())
          if (part->isVisible() && (part->focusPolicy() & Qt::TabFocus)) stops << part;
        parts = static_cast<size_t>(stops.size());
        stops[static_cast<qsizetype>(i)]->setFocus();
        EXPECT_EQ(Key(Qt::Key_F2) + Key(Qt::Key_Escape, Qt::ControlModifier), 0);
        ASSERT_TRUE(is_up());
        EXPECT_EQ(Key(Qt::Key_Escape, shift), shift == Qt::ShiftModifier);
        EXPECT_FALSE(is_up());
        EXPECT_TRUE(MainForm->Enabled());
      }
    }
  }

  int asked_ = 0;
};

}  // namespace

TEST_F(Keyboard, PartsOfTheMainWindowHaveItsKeys) {
  Progress->ProcessBg.SetVisible(true);
  for (Control* part : std::initializer_list<Control*>{
           &*MainForm, &MainForm->TopBar, &MainForm->LeftBar, &MainForm->RightBar, &ToolButtons->ColorsBg,
           &ColorPanel->SwatchesBg, &ColorPanel->Gradient, &SwatchPanel->Picture3, &SwatchPanel->Background,
           &SwatchPanel->SwatchScroll, &Progress->Process})
    ExpectMainKeys(*part);
  for (int16_t i = 0; i < ToolButtons->Cmd.Count(); ++i) {
    SelectTool(i);
    ExpectMainKeys(ToolButtons->Cmd[i]);
    ExpectMainKeys(frmControls->DrawToolbar[i]);
  }
  for (int i = 0; i < kChannelCount; ++i)
    for (Control* part : std::initializer_list<Control*>{
             &ColorPanel->ColorBar[i], &ColorPanel->ColorScroll[i], &ColorPanel->lblColor[i]})
      ExpectMainKeys(*part);
}

TEST_F(Keyboard, APictureHasItsOwn) {
  frmPaint& first = MakeDocument(40, 30, kWhite, {"first", ""});
  MakeDocument(40, 30, kWhite, {"second", ""});
  EXPECT_EQ(Key(Qt::Key_F2), 0);
  EXPECT_EQ(MainForm->WindowState(), kNormal);
  EXPECT_EQ(ActiveDocument(), &first) << "the one beneath has the keyboard now";
  first.PaintArea.SetFocus();
  first.Dirty = true;
  // In the midst of a stroke it isn't closed, nor by a key that is held since before.
  Press(5, 5);
  EXPECT_EQ(Key(Qt::Key_Escape), 0);
  Release(5, 5);
  QKeyEvent held(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier, QString(), true);
  QApplication::sendEvent(first.PaintArea.Widget(), &held);
  EXPECT_EQ(MainForm->Children().size(), 2u);
  EXPECT_EQ(Answering({"Cancel"}, [&] { EXPECT_EQ(Key(Qt::Key_Escape, Qt::ShiftModifier), 1); }).size(), 1u);
  // This platform has no window manager that would give it the keyboard back.
  MainForm->Activate();
  DoEvents();
  first.PaintArea.SetFocus();
  EXPECT_EQ(Answering({"No"}, [&] { EXPECT_EQ(Key(Qt::Key_Escape), 0); }).size(), 1u);
  EXPECT_EQ(MainForm->Children().size(), 1u);
}

TEST_F(Keyboard, DialogsHaveNoneButEsc) {
  ExpectDialogKeys(NewImage_Click, [] { return frmNew->Visible(); });
  MakeDocument(40, 30, kWhite, {"picture", ""});
  ExpectDialogKeys(ImageSize_Click, [] { return frmSize->Visible(); });
  ExpectDialogKeys([] { ColorPanel->OnEditColor(0); }, [] { return frmColor->Visible(); });
  ExpectDialogKeys([] { ClickOn(SwatchPanel->Background); }, [] { return frmNewSwatch.IsLoaded(); });
  ExpectDialogKeys(ImagePalette_Click, [] { return frmPalette.IsLoaded(); });
}

TEST_F(Keyboard, WhatDropsDownKeepsEsc) {
  SelectTool(kMagnifyingTool);
  auto* zoom = static_cast<QComboBox*>(frmControls->comboZoom.Widget());
  zoom->setFocus();
  zoom->showPopup();
  QTest::keyClick(zoom->view(), Qt::Key_Escape);
  EXPECT_FALSE(zoom->view()->isVisible() || asked_ > 0);
  SelectTool(kPenTool);
  ClickOn(frmControls->CmdDropDown[kPenWidth]);
  EXPECT_EQ(Key(Qt::Key_Escape), 0);
  EXPECT_LT(frmControls->OpenSelector, 0);
}
