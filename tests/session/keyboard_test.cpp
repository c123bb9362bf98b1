#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QTest>

#include "colour/ColorPanel.h"
#include "colour/SwatchPanel.h"
#include "colour/frmColor.h"
#include "colour/frmNewSwatch.h"
#include "document/window/MakeDocument.h"
#include "document/window/frmNew.h"
#include "files/SaveDialog.h"
#include "files/icons/IconExtractor.h"
#include "imageops/ProgressDisplay.h"
#include "imageops/frmPalette.h"
#include "imageops/frmSize.h"
#include "session/Session.h"
#include "shell/MainForm.h"
#include "shell/MenuEvents.h"
#include "shell/frmAbout.h"
#include "surface/forms/windows/EventLoop.h"
#include "tools/OptionBars.h"
#include "tools/SelectTool.h"
#include "tools/Selector.h"
#include "tools/TextPickers.h"
#include "tools/ToolButtons.h"
#include "ui/MessageBox.h"
#include "ui/MsgBox.h"

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

  /// From each of a dialog's controls Esc puts it away, and F2 does nothing. Where it's `Routed`, Esc with
  /// Shift closes the main window as well, with Ctrl nothing; one with `Own` keys looks at neither.
  enum Keys { Routed, Own };
  void ExpectDialogKeys(Keys keys, const std::function<void()>& open, const std::function<bool()>& is_up) {
    for (const Qt::KeyboardModifier shift : {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier}) {
      qsizetype parts = 1;
      for (qsizetype i = 0; i < parts; ++i) {
        OnceUp(open, is_up, [&] {
          QList<QWidget*> stops;
          for (QWidget* part : QApplication::activeWindow()->findChildren<QWidget*>())
            if (part->isVisible() && (part->focusPolicy() & Qt::TabFocus)) stops << part;
          parts = stops.size();
          stops[i]->setFocus();
          SCOPED_TRACE(stops[i]->objectName().toStdString());
          EXPECT_EQ(Key(Qt::Key_F2), 0);
          EXPECT_TRUE(is_up());
          EXPECT_EQ(Key(Qt::Key_Escape, shift), keys == Routed && shift == Qt::ShiftModifier);
          EXPECT_EQ(is_up(), keys == Routed && shift == Qt::ControlModifier);
          if (is_up()) Key(Qt::Key_Escape);
        });
        EXPECT_FALSE(is_up());
        EXPECT_TRUE(MainForm->Enabled() && MainForm->WindowState() == kNormal);
      }
    }
  }

  /// Runs `step` as soon as the dialog is up, also where `open` returns only after it.
  void OnceUp(const std::function<void()>& open, const std::function<bool()>& is_up,
              const std::function<void()>& step) {
    QTimer waiting;
    QObject::connect(&waiting, &QTimer::timeout, [&] {
      const QWidget* active = QApplication::activeWindow();
      if (!is_up() || !active || active == MainForm->Widget()) return;
      waiting.stop();
      step();
      expects_dialogs_ = false;
    });
    waiting.start(1);
    expects_dialogs_ = true;
    open();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !waiting.isActive(); }));
    DoEvents();
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
  for (int i = 0; i < 2; ++i) ExpectMainKeys(ColorPanel->SelColor[i]);
  for (int i = 0; i < kChannelCount; ++i)
    for (Control* part : std::initializer_list<Control*>{
             &ColorPanel->ColorBar[i], &ColorPanel->ColorScroll[i], &ColorPanel->lblColor[i]})
      ExpectMainKeys(*part);
}

TEST_F(Keyboard, TabGoesRoundThePanelsAndThePicture) {
  frmPaint& beneath = MakeDocument(40, 30, kWhite, {"beneath", ""});
  frmPaint& picture = MakeDocument(40, 30, kWhite, {"picture", ""});
  SelectTool(kTextTool);
  const auto ring = [&](Qt::Key key) {
    QString names;
    for (int stops = 0; stops == 0 || (!picture.HoldsFocus() && stops < 50); ++stops) {
      Key(key);
      names += QApplication::focusWidget()->objectName() + ' ';
    }
    EXPECT_EQ(ActiveDocument(), &picture);
    return names.toStdString();
  };
  const std::string there = "SelColor(0) SelColor(1) txtNumber txtNumber txtNumber SwatchScroll txtNumber ";
  EXPECT_EQ(ring(Qt::Key_Tab), there + "CmdButton(0) CmdButton(1) PaintArea ");
  Click(5, 5);
  EXPECT_EQ(ring(Qt::Key_Tab), there + "CmdButton(0) CmdButton(1) TextInput ");
  const std::string back = "txtNumber SwatchScroll txtNumber txtNumber txtNumber SelColor(1) SelColor(0) ";
  EXPECT_EQ(ring(Qt::Key_Backtab), "CmdButton(1) CmdButton(0) " + back + "TextInput ");
  // What has the keyboard goes, and none of the panels' parts gets it.
  bool panels_asked = false;
  ColorPanel->SelColor[0].OnGotFocus = [&] { panels_asked = true; };
  SelectTool(kPenTool);
  Key(Qt::Key_F2), Key(Qt::Key_F2);
  picture.SetDirtyFalse();
  for (ImageDocument* document : {&picture, &beneath}) document->Unload();
  EXPECT_FALSE(panels_asked);
}

TEST_F(Keyboard, ColorsArePickedByKeys) {
  const auto colors = [] {
    return std::pair(ColorPanel->SelColor[0].BackColor(), ColorPanel->SelColor[1].BackColor());
  };
  ColorPanel->SelColor[0].SetFocus();
  Key(Qt::Key_Right), Key(Qt::Key_Space);
  EXPECT_EQ(ColorPanel->SelectedColor, 1);
  Key(Qt::Key_Left), Key(Qt::Key_Return);
  EXPECT_TRUE(frmColor->Visible());
  Key(Qt::Key_Escape);

  const auto& grid = SwatchPanel->Swatch;
  SwatchPanel->SwatchScroll.SetFocus();
  Key(Qt::Key_Right), Key(Qt::Key_Down), Key(Qt::Key_Up), Key(Qt::Key_Down), Key(Qt::Key_Space);
  Key(Qt::Key_End), Key(Qt::Key_Left), Key(Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(colors(), std::pair(grid[11].BackColor, grid.back().BackColor));
  Key(Qt::Key_Home), Key(Qt::Key_Left), Key(Qt::Key_Up), Key(Qt::Key_Return);
  EXPECT_EQ(colors().first, grid[0].BackColor);
  Key(Qt::Key_End), Key(Qt::Key_Down), Key(Qt::Key_Return);
  ASSERT_TRUE(frmNewSwatch.IsLoaded());
  Key(Qt::Key_Escape);
  EXPECT_TRUE(SwatchPanel->SwatchScroll.HasFocus() && SwatchPanel->FocusMark.Visible());
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

TEST_F(Keyboard, ATextBoxKeepsEsc) {
  MakeDocument(200, 100, kWhite, {"picture", ""});
  SelectTool(kTextTool);
  Click(20, 20);
  ASSERT_TRUE(Document().TextInput.HasFocus());
  EXPECT_EQ(Key(Qt::Key_Escape) + Key(Qt::Key_Escape, Qt::ShiftModifier), 0);
  EXPECT_TRUE(Document().TextInput.HasFocus());
  Key(Qt::Key_F2);
  EXPECT_EQ(Document().WindowState(), kMinimised);
  EXPECT_EQ(MainForm->WindowState(), kNormal);
}

TEST_F(Keyboard, DialogsHaveNoneButEsc) {
  ExpectDialogKeys(Routed, NewImage_Click, [] { return frmNew->Visible(); });
  MakeDocument(40, 30, kWhite, {"picture", ""});
  ExpectDialogKeys(Routed, ImageSize_Click, [] { return frmSize->Visible(); });
  ExpectDialogKeys(
      Routed, [] { ColorPanel->OnEditColor(0); }, [] { return frmColor->Visible(); });
  ExpectDialogKeys(
      Routed, [] { ClickOn(SwatchPanel->Background); }, [] { return frmNewSwatch.IsLoaded(); });
  ExpectDialogKeys(Routed, ImagePalette_Click, [] { return frmPalette.IsLoaded() && frmPalette->Visible(); });
}

TEST_F(Keyboard, WindowsWithTheirOwnLeaveTheMainOneAlone) {
  // A stray Esc would bring a question up for it.
  MakeDocument(40, 30, kWhite, {"picture", ""}).Dirty = true;
  const auto command = [](const char* name) {
    return [name] { MainForm->Activate(), MainForm->Widget()->findChild<QAction*>(name)->trigger(); };
  };
  ExpectDialogKeys(Own, command("AboutKorvath"), [] { return frmAbout.IsLoaded() && frmAbout->Visible(); });
  ExpectDialogKeys(Own, command("mnuIcon"), [] { return IconExtractor->Visible(); });
  ExpectDialogKeys(Own, command("FileOpen"), [] { return SaveDialog.IsLoaded() && SaveDialog->Visible(); });
  ExpectDialogKeys(
      Own, [] { MsgBox("?", 3, "Zelvane"); }, [] { return MessageBox.IsLoaded() && MessageBox->Visible(); });
}

TEST_F(Keyboard, WhatDropsDownKeepsEsc) {
  frmPaint& picture = MakeDocument(40, 30, kWhite, {"picture", ""});
  picture.Dirty = true;
  struct Place {
    Tool tool;
    const Control &button, &window;
    Control& keyboard;
    int shift_asks = 1;
    int16_t after_f2 = kNormal;
  };
  const PictureSurface& slider = frmControls->CmdDropDown[kPenWidth];
  for (const Place& place : std::initializer_list<Place>{
           {kTextTool, frmControls->CmdFont, frmFonts->Window, frmFonts->List},
           {kTextTool, frmControls->CmdFontStyle, frmFontStyle->Window, frmFontStyle->List},
           {kPenTool, slider, frmSelector->Window, frmSelector->ScrollBlock, 1, kMinimised},
           {kPenTool, slider, frmSelector->Window, frmControls->pixelSelector[kPenWidth], 0}}) {
    SCOPED_TRACE(place.keyboard.Name());
    for (const Qt::KeyboardModifier shift : {Qt::NoModifier, Qt::ShiftModifier}) {
      SelectTool(place.tool);
      ClickOn(place.button);
      place.keyboard.SetFocus();
      ASSERT_TRUE(place.window.Visible());
      Key(Qt::Key_F2);
      EXPECT_EQ(MainForm->WindowState(), place.after_f2);
      MainForm->Activate(), DoEvents();
      EXPECT_EQ(Key(Qt::Key_Escape, shift), shift == Qt::ShiftModifier ? place.shift_asks : 0);
      EXPECT_EQ(picture.WindowState(), kNormal);
      const bool is_back = !place.window.Visible() && picture.PaintArea.HasFocus();
      EXPECT_TRUE(is_back || shift == Qt::ShiftModifier);
    }
  }
  SelectTool(kMagnifyingTool);
  auto* zoom = static_cast<QComboBox*>(frmControls->comboZoom.Widget());
  zoom->setFocus();
  zoom->showPopup();
  asked_ = 0;
  QTest::keyClick(zoom->view(), Qt::Key_Escape);
  EXPECT_FALSE(zoom->view()->isVisible() || asked_ > 0);
}
