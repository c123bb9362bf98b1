#include <QApplication>
#include <QDir>
#include <QTest>

#include "document/layers/ReadOuts.h"
#include "document/window/OpenPicture.h"
#include "session/Session.h"
#include "shell/Main.h"
#include "shell/MainForm.h"
#include "shell/MenuEvents.h"
#include "shell/state/Settings.h"
#include "surface/forms/windows/Application.h"
#include "surface/system/desktop/Screen.h"
#include "tools/OptionBars.h"
#include "tools/SelectTool.h"
#include "tools/ToolButtons.h"

using namespace zelvane;

namespace {

class TheMainWindow : public Session {
 protected:
  QImage Paper() {
    QImage paper(40, 30, QImage::Format_RGB32);
    paper.fill(Qt::white);
    return paper;
  }
};

}  // namespace

TEST(CommandLine, LosesAQuoteAtEitherEndAndBecomesAbsolute) {
  EXPECT_EQ(PathFromCommandLine("\"/a b.png\""), "/a b.png");
  EXPECT_EQ(PathFromCommandLine("\"/a.png"), "/a.png");
  EXPECT_EQ(PathFromCommandLine("/a.png\""), "/a.png");
  EXPECT_EQ(PathFromCommandLine("\""), "");
  EXPECT_EQ(PathFromCommandLine(""), "");
  EXPECT_TRUE(PathFromCommandLine("a.png").starts_with('/'));
}

TEST_F(TheMainWindow, StartsOnTheCursorToolWithBlackOnWhite) {
  Start();
  EXPECT_EQ(State.CurrentTool, kCursorTool);
  EXPECT_TRUE(State.ToolButtonDown[kCursorTool]);
  EXPECT_TRUE(frmControls->DrawToolbar[kCursorTool].Visible());
  EXPECT_EQ(MainForm->Caption(), " Zelvane");
  EXPECT_EQ(ActiveDocument(), nullptr);
  EXPECT_EQ(MainForm->Width(), 9600);
  EXPECT_FALSE(State.ShowSplash);
}

TEST_F(TheMainWindow, AClickOnAToolButtonSelectsTheToolWithItsPointer) {
  Start(MakePicture("p.png", Paper()));
  for (int tool : {kPenTool, kTextTool, kCursorTool, kEraserTool}) {
    ClickOn(ToolButtons->Cmd[tool]);
    EXPECT_EQ(State.CurrentTool, tool);
    for (int bar = 0; bar < kToolCount; ++bar)
      EXPECT_EQ(frmControls->DrawToolbar[bar].Visible(), bar == tool) << bar;
    EXPECT_EQ(Document().PaintArea.MousePointer(), tool == kCursorTool ? kPointerDefault : kPointerCustom);
  }
  EXPECT_EQ(Document().PaintArea.MouseIcon()->name, "eraser");
}

TEST_F(TheMainWindow, TheReadOutsStayRightButNeverCoverTheOptionBar) {
  Start();
  const auto& top_bar = MainForm->TopBar;
  const auto& read_outs = ReadOuts->CoordsInfo;
  EXPECT_EQ(read_outs.Left() + read_outs.Width(), top_bar.ScaleWidth());
  frmControls->DrawToolbar[kCursorTool].SetWidth(600);
  PlaceReadOuts();
  EXPECT_EQ(read_outs.Left(), 605);
}

TEST_F(TheMainWindow, EntriesFollowTheActiveDocument) {
  Start();
  MainMenu& menu = MainForm->Menus;
  const auto open_menus = [] { File_Click(), Edit_Click(), Image_Click(); };
  open_menus();
  for (const Menu* entry :
       {&menu.Save, &menu.SaveAs, &menu.Close, &menu.Undo, &menu.Paste, &menu.FlipVertical})
    EXPECT_FALSE(entry->Enabled()) << entry->Name();
  OpenPicture(MakePicture("p.png", Paper()));
  open_menus();
  for (const Menu* entry :
       {&menu.Save, &menu.SaveAs, &menu.Close, &menu.Undo, &menu.Copy, &menu.FlipVertical})
    EXPECT_TRUE(entry->Enabled()) << entry->Name();
  EXPECT_FALSE(menu.ClearSelection.Enabled());
  Document().SelectArea.SetVisible(true);
  Edit_Click();
  EXPECT_TRUE(menu.ClearSelection.Enabled());
  EXPECT_FALSE(menu.InvertImage.Visible());
  EXPECT_FALSE(menu.Effects.Visible());
}

TEST_F(TheMainWindow, ShortcutsActWithoutTheirMenuHavingBeenOpened) {
  Start(MakePicture("p.png", Paper()));
  SelectTool(kPenTool);
  const QImage before = Picture(Document().Buffer);
  Drag(2, 2, 20, 2);
  ASSERT_NE(Picture(Document().Buffer), before);
  QTest::keyClick(Document().PaintArea.Widget(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Picture(Document().Buffer), before);
  Document().SetDirtyFalse();
  QTest::keyClick(Document().PaintArea.Widget(), Qt::Key_W, Qt::ControlModifier);
  EXPECT_EQ(ActiveDocument(), nullptr);
  // Without a document the commands do nothing.
  for (Qt::Key key : {Qt::Key_W, Qt::Key_S, Qt::Key_D, Qt::Key_Z, Qt::Key_X, Qt::Key_V, Qt::Key_B, Qt::Key_A})
    QTest::keyClick(MainForm->Widget(), key, Qt::ControlModifier);
  EXPECT_EQ(ActiveDocument(), nullptr);
}

TEST_F(TheMainWindow, EveryMenuEntryCanBeChosenWithAndWithoutADocument) {
  Start();
  MainMenu& menu = MainForm->Menus;
  const auto choose_all = [&] {
    for (Menu* entry : {&menu.NewImage,       &menu.mnuIcon,      &menu.mnuFile1,  &menu.Manager,
                        &menu.Splash,         &menu.Undo,         &menu.Cut,       &menu.Copy,
                        &menu.Paste,          &menu.PasteSpecial, &menu.SelectAll, &menu.ClearSelection,
                        &menu.FlipHorizontal, &menu.FlipVertical, &menu.ImageSize, &menu.ImagePalette,
                        &menu.ArrHorizontal,  &menu.ArrVertival,  &menu.Cascade,   &menu.AboutKorvath})
      if (entry->OnClick) entry->OnClick();
  };
  choose_all();
  OpenPicture(MakePicture("p.png", Paper()));
  const QImage before = Picture(Document().Buffer);
  choose_all();
  EXPECT_EQ(Picture(Document().Buffer), before);
}

TEST_F(TheMainWindow, TheExitStoresThePlaceUnlessMaximised) {
  Start();
  MainForm->SetWidth(10500);
  MainForm->SetLeft(300);
  DoEvents();
  EXPECT_TRUE(MainForm->Unload());
  EXPECT_EQ(ReadSetting("ZelvaneMaximized", ""), "No");
  EXPECT_EQ(ReadNumber("ZelvaneWidth", 0), 10500);
  EXPECT_EQ(ReadNumber("ZelvaneLeft", 0), 300);
  DoEvents();
  Start();
  EXPECT_EQ(MainForm->Width(), 10500);
  MainForm->SetWindowState(kMaximised);
  DoEvents();
  EXPECT_TRUE(MainForm->Unload());
  EXPECT_EQ(ReadSetting("ZelvaneMaximized", ""), "Yes");
  EXPECT_EQ(ReadNumber("ZelvaneWidth", 0), 10500);
  DoEvents();
  Start();
  EXPECT_EQ(MainForm->WindowState(), kMaximised);
}

TEST_F(TheMainWindow, HoldsItsSmallestSizeAndStoresNoLargerOneThanTheWorkArea) {
  Start();
  MainForm->SetWidth(3000);
  MainForm->SetHeight(3000);
  EXPECT_EQ(MainForm->Width(), 9600);
  EXPECT_EQ(MainForm->Height(), 6780);
  MainForm->SetWidth(30000);
  MainForm->SetHeight(30000);
  DoEvents();
  EXPECT_TRUE(MainForm->Unload());
  EXPECT_EQ(ReadNumber("ZelvaneWidth", 0), Screen::WorkAreaWidth());
  EXPECT_EQ(ReadNumber("ZelvaneHeight", 0), Screen::WorkAreaHeight());
}

TEST_F(TheMainWindow, ASettingThatIsNoNumberLeavesTheDesign) {
  WriteSetting("ZelvaneWidth", "12000px");
  WriteSetting("ZelvaneHeight", "nan");
  WriteSetting("ZelvaneLeft", "inf");
  Start();
  EXPECT_EQ(MainForm->Width(), 9600);
  EXPECT_EQ(MainForm->Height(), 6780);
  EXPECT_LT(MainForm->Left(), 1e6);
}

TEST_F(TheMainWindow, ATemporaryFolderOf64CharactersIsNotUsed) {
  const QByteArray before = qgetenv("TMPDIR");
  for (const size_t length : {62u, 63u}) {
    const std::string start = PathOf("x");
    if (start.size() > length) GTEST_SKIP() << "the session's own folder has a longer path";
    const std::string folder = start + std::string(length - start.size(), 'x');
    ASSERT_TRUE(QDir().mkpath(QString::fromStdString(folder)));
    qputenv("TMPDIR", QByteArray::fromStdString(folder));
    Start();
    EXPECT_EQ(State.TempPath.starts_with(folder + '/'), length == 62);  // the separator is a character too
    EXPECT_EQ(State.TempPath.empty(), length == 63);
    EXPECT_TRUE(MainForm->Unload());
    DoEvents();
  }
  before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
}

TEST_F(TheMainWindow, TheSplashEntryTogglesItsSetting) {
  Start();
  MainForm->Menus.Splash.OnClick();
  EXPECT_EQ(ReadSetting("ShowSplashScreen", ""), "0");
  File_Click();
  EXPECT_FALSE(MainForm->Menus.Splash.Checked());
  MainForm->Menus.Splash.OnClick();
  EXPECT_EQ(ReadSetting("ShowSplashScreen", ""), "1");
}
