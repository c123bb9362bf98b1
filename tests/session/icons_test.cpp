#include <QAction>
#include <QFile>
#include <QTest>

#include "files/SaveDialog.h"
#include "files/icons/IconExtractor.h"
#include "session/Session.h"
#include "shell/MainForm.h"
#include "shell/state/Settings.h"
#include "surface/forms/windows/Application.h"

using namespace zelvane;

namespace {

constexpr QRgb kGreen = 0xFF00FF00, kBlue = 0xFF0000FF;

struct Icons : Session {
  Icons() {
    QFile::copy(TEST_DATA "/programs/icons.dll", QString::fromStdString(PathOf("icons.dll")));
    QImage one(32, 32, QImage::Format_RGB32);
    one.fill(kGreen);
    MakePicture("one.ico", one);
    QFile(QString::fromStdString(PathOf("none.exe"))).open(QIODevice::WriteOnly);
  }
  /// From the main window, which the command takes the keyboard from.
  static void ComeUp() {
    MainForm->Activate(), DoEvents();
    MainForm->Widget()->findChild<QAction*>("mnuIcon")->trigger(), DoEvents();
    EXPECT_TRUE(IconExtractor->IsActive());
    EXPECT_TRUE(IconExtractor->openButton.HasFocus());
  }
  /// By the window's own button, in the file window; cancels that for an empty name.
  void Choose(const std::string& name) {
    expects_dialogs_ = true;
    QTimer::singleShot(0, [&] {
      DoEvents();
      EXPECT_TRUE(SaveDialog->IsActive() && IconExtractor->Visible());
      EXPECT_EQ(SaveDialog->FileType.ListIndex(), 1);
      if (!name.empty()) SaveDialog->InputFileName.SetText(PathOf(name));
      SaveDialog->InputFileName.SetFocus();
      QTest::keyClick(SaveDialog->Widget()->focusWidget(), name.empty() ? Qt::Key_Escape : Qt::Key_Return);
    });
    ClickOn(IconExtractor->openButton);
    expects_dialogs_ = false;
    EXPECT_TRUE(IconExtractor->IsActive());
  }
  static void Key(Qt::Key key) { QTest::keyClick(IconExtractor->Widget()->focusWidget(), key), DoEvents(); }
  static QImage Shown() { return Picture(IconExtractor->IconPic); }
  static void ExpectNumbers(const std::string& count, const std::string& current) {
    EXPECT_EQ(IconExtractor->lblNumIcons.Caption(), count);
    EXPECT_EQ(IconExtractor->lblCurrentIcon.Caption(), current);
  }
};

TEST_F(Icons, AreShownOneByOneAndBecomeDocuments) {
  Start();
  ComeUp();
  EXPECT_FALSE(IconExtractor->selectButton.Enabled() || IconExtractor->IconScroll.Enabled());
  Choose("icons.dll");
  ExpectNumbers("10", "1");
  EXPECT_EQ(State.ZelvaneFolder, PathOf(""));
  EXPECT_TRUE(IconExtractor->IconScroll.HasFocus() && IconExtractor->selectButton.Enabled());
  Key(Qt::Key_Right);
  ExpectNumbers("10", "2");
  EXPECT_EQ(Shown().size(), QSize(32, 32));
  EXPECT_EQ(Shown().pixel(30, 1), kBlue);
  EXPECT_EQ(Shown().pixel(1, 30), ToPixel(SystemColor::WindowBackground));
  ClickOn(IconExtractor->selectButton);
  WriteSetting("NewImageTitle", "mine");
  ClickOn(IconExtractor->selectButton);
  const auto is_document = [](const Form* form) { return dynamic_cast<const frmPaint*>(form) != nullptr; };
  EXPECT_EQ(std::count_if(Forms().begin(), Forms().end(), is_document), 2);
  EXPECT_EQ(Document().Caption(), "mine - 100%");
  EXPECT_EQ(Picture(Document().Buffer), Shown());
  EXPECT_TRUE(Document().Buffer.Tag().empty() && !Document().Dirty && MainForm->Enabled());
  EXPECT_TRUE(IconExtractor->IsActive());
}

TEST_F(Icons, FollowTheFileThatIsChosen) {
  Start();
  ComeUp();
  Choose("icons.dll");
  Key(Qt::Key_End);
  ExpectNumbers("10", "10");
  const QImage last = Shown();
  Choose("");
  ExpectNumbers("10", "10");
  EXPECT_TRUE(Shown() == last && IconExtractor->IconFile == PathOf("icons.dll")) << "cancelled";
  int changes = 0;
  const auto change = IconExtractor->IconScroll.OnChange;
  IconExtractor->IconScroll.OnChange = [&] { ++changes, change(); };
  Choose("one.ico");
  ExpectNumbers("1", "1");
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(Shown().pixel(1, 30), kGreen);
  EXPECT_TRUE(IconExtractor->selectButton.HasFocus() && !IconExtractor->IconScroll.Enabled());
  Choose("none.exe");
  ExpectNumbers("0", "");
  EXPECT_EQ(Shown().pixel(1, 30), ToPixel(SystemColor::WindowBackground));
  EXPECT_FALSE(IconExtractor->selectButton.Enabled());
}

TEST_F(Icons, GoWithTheKeyboard) {
  Start();
  for (const auto& close : std::vector<std::function<void()>>{
           [] { Key(Qt::Key_Escape); },
           [] { ClickOn(IconExtractor->closeButton); },
           [] { IconExtractor->Widget()->close(); },
           [] { MainForm->Activate(), DoEvents(); },
       }) {
    ComeUp();
    Choose("icons.dll");
    Key(Qt::Key_Right);
    close();
    EXPECT_TRUE(IconExtractor.IsLoaded() && !IconExtractor->Visible() && MainForm->Visible());
    ExpectNumbers("", "");
    EXPECT_TRUE(IconExtractor->IconFile.empty() && !IconExtractor->selectButton.Enabled());
  }
}

}  // namespace
