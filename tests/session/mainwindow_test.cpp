#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include "colour/ColorPanel.h"
#include "colour/SwatchPanel.h"
#include "document/layers/InfoPanel.h"
#include "document/layers/ReadOuts.h"
#include "document/window/OpenPicture.h"
#include "session/Session.h"
#include "shell/MainForm.h"
#include "shell/MenuEvents.h"
#include "shell/state/Settings.h"
#include "surface/forms/windows/Application.h"
#include "tools/OptionBars.h"
#include "tools/SelectTool.h"
#include "tools/Selector.h"
#include "tools/ToolButtons.h"

using namespace zelvane;

namespace {

class TheMainWindow : public Session {
 protected:
  std::string MakePaper() const {
    QImage paper(40, 30, QImage::Format_RGB32);
    paper.fill(Qt::white);
    return MakePicture("paper.png", paper);
  }
  static void Resize(Single width, Single height) {
    MainForm->SetWidth(width), MainForm->SetHeight(height);
    DoEvents();
  }
  static void Become(int16_t state) {
    MainForm->SetWindowState(state);
    DoEvents();
  }
  /// Ends the program, which can be started again then.
  static void Leave() {
    EXPECT_TRUE(MainForm->Unload());
    DoEvents();
    EXPECT_TRUE(Forms().empty());
  }
};

}  // namespace

TEST_F(TheMainWindow, AClickOnAToolButtonSelectsTheToolWithItsPointer) {
  Start(MakePaper());
  for (int tool : {kPenTool, kTextTool, kCursorTool, kEraserTool}) {
    ClickOn(ToolButtons->Cmd[tool]);
    for (int bar = 0; bar < kToolCount; ++bar)
      EXPECT_EQ(frmControls->DrawToolbar[bar].Visible(), bar == tool) << bar;
    EXPECT_EQ(Document().PaintArea.MousePointer(), tool == kCursorTool ? kPointerDefault : kPointerCustom);
  }
  EXPECT_EQ(Document().PaintArea.MouseIcon()->name, "eraser");
}

TEST_F(TheMainWindow, TheReadOutsStayRightButNeverCoverTheOptionBar) {
  Start();
  const auto& read_outs = ReadOuts->CoordsInfo;
  EXPECT_EQ(read_outs.Left() + read_outs.Width(), MainForm->TopBar.ScaleWidth());
  frmControls->DrawToolbar[kCursorTool].SetWidth(600);
  PlaceReadOuts();
  EXPECT_EQ(read_outs.Left(), 605);
}

TEST_F(TheMainWindow, EntriesAndShortcutsNeedADocument) {
  Start();
  for (Qt::Key key : {Qt::Key_W, Qt::Key_S, Qt::Key_D, Qt::Key_Z, Qt::Key_X, Qt::Key_V, Qt::Key_B, Qt::Key_A})
    QTest::keyClick(MainForm->Widget(), key, Qt::ControlModifier);
  MainMenu& menu = MainForm->Menus;
  for (const bool open : {false, true}) {
    if (open) OpenPicture(MakePaper());
    File_Click(), Edit_Click(), Image_Click();
    for (const Menu* entry : {&menu.Save, &menu.SaveAs, &menu.Close, &menu.Undo, &menu.FlipVertical})
      EXPECT_EQ(entry->Enabled(), open) << entry->Name();
  }
}

TEST_F(TheMainWindow, ASizeTooSmallIsSetRightAndTheLastNormalOneKept) {
  Start();
  const MainWindow& window = *MainForm;
  EXPECT_EQ(State.MainFrameWidth, (66 + 160) * 15);
  EXPECT_EQ(static_cast<Single>(State.MainFrameHeight), window.Height() - window.ScaleHeight() * 15);
  Resize(9000, 6000);
  EXPECT_EQ(QSizeF(window.Width(), window.Height()), QSizeF(9600, 6780));
  Resize(10200, 6780);
  for (int16_t state : {kMaximised, kNormal}) {
    Become(state);
    EXPECT_EQ(window.Width() > 10200, state == kMaximised);
    EXPECT_EQ(window.RestoredWidth, 10200);
  }
}

TEST_F(TheMainWindow, TheExitStoresThePlaceThatTheNextStartTakes) {
  Start();
  Resize(10500, 7500);
  MainForm->SetLeft(300);
  Leave();
  Start();
  EXPECT_EQ(QSizeF(MainForm->Width(), MainForm->Height()), QSizeF(10500, 7500));
  EXPECT_EQ(MainForm->Left(), 300);
  Resize(10800, 7500);
  MainForm->SetLeft(600);
  Become(kMinimised);
  Leave();
  EXPECT_EQ(ReadNumber("ZelvaneWidth", 0), 10800);
  EXPECT_EQ(ReadNumber("ZelvaneLeft", 0), 300) << "a minimised window has no place";
  Start();
  Become(kMaximised);
  Leave();
  EXPECT_EQ(ReadNumber("ZelvaneWidth", 0), 10800);
  Start();
  EXPECT_TRUE(MainForm->Widget()->isMaximized());
}

TEST_F(TheMainWindow, AStoredSizeIsCutAtTheExitAndAStoredPlaceAtTheStart) {
  for (const char* key : {"ZelvaneWidth", "ZelvaneHeight", "ZelvaneLeft", "ZelvaneTop"})
    WriteSetting(key, "60000");
  Start();
  const double width = MainForm->Desktop.WorkAreaWidth(), height = MainForm->Desktop.WorkAreaHeight();
  EXPECT_EQ(MainForm->Width(), 60000);
  EXPECT_EQ(QPointF(MainForm->Left(), MainForm->Top()), QPointF(0, 0)) << "it's larger than the screen";
  Leave();
  EXPECT_EQ(ReadNumber("ZelvaneWidth", 0), width);
  EXPECT_EQ(ReadNumber("ZelvaneHeight", 0), height);

  WriteSetting("ZelvaneWidth", "9750"), WriteSetting("ZelvaneHeight", "6900");
  WriteSetting("ZelvaneLeft", "9000"), WriteSetting("ZelvaneTop", "9000");
  Start();
  EXPECT_EQ(MainForm->Left(), width - 9750) << "half of it would be beyond the edge";
  EXPECT_LE(MainForm->Top(), height - 6900);
  EXPECT_GT(MainForm->Top(), 0);
  Leave();

  // What is no number leaves the design.
  WriteSetting("ZelvaneWidth", "12000px"), WriteSetting("ZelvaneHeight", "nan");
  WriteSetting("ZelvaneLeft", "inf");
  Start();
  EXPECT_EQ(QSizeF(MainForm->Width(), MainForm->Height()), QSizeF(9600, 6780));
  EXPECT_LT(MainForm->Left(), 1e6);
}

TEST_F(TheMainWindow, ALargeFontHasRoomInThePanels) {
  const QFont before = QApplication::font();
  QFont large = before;
  large.setPixelSize(24);
  QApplication::setFont(large);
  Start();
  QWidget& window = *MainForm->Widget();
  for (const QLabel* label : window.findChildren<QLabel*>()) {
    if (label->text().isEmpty()) continue;
    const QSize text = label->sizeHint();
    EXPECT_GE(label->height(), text.height()) << label->objectName().toStdString();
    EXPECT_GE(label->width(), text.width()) << label->text().toStdString();
  }
  for (const QLineEdit* box : window.findChildren<QLineEdit*>())
    EXPECT_GE(box->height(), box->fontMetrics().height()) << box->accessibleName().toStdString();
  const auto below = [](const Control& above) { return above.Top() + above.Height(); };
  EXPECT_LE(below(ColorPanel->lblHeading), ColorPanel->Gradient.Top());
  EXPECT_LE(below(ColorPanel->lblColor[0]), ColorPanel->lblColor[1].Top());
  EXPECT_LE(below(ColorPanel->lblColor[2]), below(ColorPanel->SwatchesBg));
  EXPECT_LE(below(SwatchPanel->lblHeading), SwatchPanel->Background.Top());
  EXPECT_LE(below(SwatchPanel->Picture3), InfoPanel->Split.Top());
  QApplication::setFont(before);
}

TEST_F(TheMainWindow, ATemporaryFolderOf64CharactersIsNotUsed) {
  const QByteArray before = qgetenv("TMPDIR");
  for (const size_t length : {62u, 63u}) {  // the separator behind it is a character too
    const std::string start = PathOf("x");
    if (start.size() > length) GTEST_SKIP() << "the session's own folder has a longer path";
    const std::string folder = start + std::string(length - start.size(), 'x');
    ASSERT_TRUE(QDir().mkpath(QString::fromStdString(folder)));
    qputenv("TMPDIR", QByteArray::fromStdString(folder));
    Start();
    EXPECT_TRUE(length == 62 ? State.TempPath.starts_with(folder + '/') : State.TempPath.empty());
  }
  before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
}

TEST_F(TheMainWindow, LeavingWithTheSliderOpenBringsNothingBack) {
  Start();
  SelectTool(kAirbrushTool);
  DoEvents();
  ClickOn(frmControls->CmdDropDown[kAirbrushSize]);
  ASSERT_TRUE(frmSelector->Window.Visible());
  Leave();
  EXPECT_FALSE(frmControls.IsLoaded());
}

TEST_F(TheMainWindow, WantOfMemoryIsTold) {
  Start(MakePaper());
  Document().OnKeyDown = [](auto...) { throw std::bad_alloc(); };
  const auto press = [] { QTest::keyClick(Document().PaintArea.Widget(), Qt::Key_A), DoEvents(); };
  EXPECT_EQ(Answering({"OK"}, press), std::vector<std::string>{"There is not enough memory for this."});
}
