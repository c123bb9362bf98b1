#include <QAction>
#include <QFile>
#include <QTest>
#include <algorithm>

#include "files/SaveDialog.h"
#include "files/icons/IconExtractor.h"
#include "session/Session.h"
#include "shell/MainForm.h"
#include "shell/state/Settings.h"
#include "surface/forms/windows/Application.h"

using namespace zelvane;

namespace {

struct Icons : Session {
  Icons() {
    QFile::copy(TEST_DATA "/programs/icons.dll", QString::fromStdString(PathOf("icons.dll")));
    QImage one(32, 32, QImage::Format_RGB32);
    one.fill(Qt::green);
    QFile::rename(QString::fromStdString(MakePicture("one.ico", one)),
                  QString::fromStdString(PathOf("one.dll")));
    QFile(QString::fromStdString(PathOf("none.exe"))).open(QIODevice::WriteOnly);
    Start();
    ComeUp();
  }
  /// From the main window, which the command takes the keyboard from.
  static void ComeUp() {
    MainForm->Activate(), DoEvents();
    MainForm->Widget()->findChild<QAction*>("mnuIcon")->trigger(), DoEvents();
    EXPECT_TRUE(IconExtractor->IsActive() && IconExtractor->openButton.HasFocus());
  }
  /// By the window's own button, in the file window; cancels that for an empty name.
  void Choose(const std::string& name) {
    expects_dialogs_ = true;
    QTimer::singleShot(0, [&] {
      DoEvents();
      EXPECT_TRUE(SaveDialog->IsActive() && IconExtractor->Visible() &&
                  SaveDialog->FileType.ListIndex() == 1);
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
  static std::string Numbers() {
    return IconExtractor->lblNumIcons.Caption() + "/" + IconExtractor->lblCurrentIcon.Caption();
  }
};

TEST_F(Icons, AreShownOneByOneAndBecomeDocuments) {
  EXPECT_FALSE(IconExtractor->selectButton.Enabled() || IconExtractor->IconScroll.Enabled());
  Choose("icons.dll");
  EXPECT_EQ(Numbers(), "10/1");
  EXPECT_EQ(State.ZelvaneFolder, PathOf(""));
  EXPECT_TRUE(IconExtractor->IconScroll.HasFocus() && IconExtractor->selectButton.Enabled());
  Key(Qt::Key_Right);
  EXPECT_EQ(Numbers(), "10/2");
  EXPECT_EQ(Shown().size(), QSize(32, 32));
  EXPECT_EQ(Shown().pixelColor(30, 1), Qt::blue);
  EXPECT_EQ(Shown().pixel(1, 30), ToPixel(SystemColor::WindowBackground));
  ClickOn(IconExtractor->selectButton);
  WriteSetting("NewImageTitle", "mine");
  ClickOn(IconExtractor->selectButton);
  const auto is_document = [](const Form* form) { return dynamic_cast<const frmPaint*>(form) != nullptr; };
  EXPECT_EQ(std::count_if(Forms().begin(), Forms().end(), is_document), 2);
  EXPECT_EQ(Document().Caption(), "mine - 100%");
  EXPECT_EQ(Picture(Document().Buffer), Shown());
  EXPECT_TRUE(Document().Buffer.Tag().empty() && !Document().Dirty && IconExtractor->IsActive());
}

TEST_F(Icons, FollowTheFileThatIsChosen) {
  Choose("icons.dll");
  Key(Qt::Key_End);
  const QImage last = Shown();
  Choose("");
  EXPECT_TRUE(Numbers() == "10/10" && Shown() == last) << "cancelled";
  int changes = 0;
  const auto change = IconExtractor->IconScroll.OnChange;
  IconExtractor->IconScroll.OnChange = [&] { ++changes, change(); };
  Choose("one.dll");
  EXPECT_TRUE(Numbers() == "1/1" && changes == 1 && Shown().pixelColor(1, 30) == Qt::green);
  EXPECT_TRUE(IconExtractor->selectButton.HasFocus() && !IconExtractor->IconScroll.Enabled());
  Choose("none.exe");
  EXPECT_TRUE(Numbers() == "0/" && Shown().pixel(1, 30) == ToPixel(SystemColor::WindowBackground));
  EXPECT_FALSE(IconExtractor->selectButton.Enabled());
}

TEST_F(Icons, GoWithTheKeyboard) {
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
    EXPECT_TRUE(Numbers() == "/" && IconExtractor->IconFile.empty() &&
                !IconExtractor->selectButton.Enabled());
  }
}

}  // namespace
