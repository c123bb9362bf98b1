#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QImageReader>
#include <QMimeData>
#include <QTest>
#include <QTimer>
#include <map>

#include "colour/ColorPanel.h"
#include "document/layers/InfoPanel.h"
#include "document/window/MakeDocument.h"
#include "document/window/OpenPicture.h"
#include "document/window/ReadingDisplay.h"
#include "document/window/SavePicture.h"
#include "imageops/ProgressDisplay.h"
#include "session/Session.h"
#include "shell/MainForm.h"
#include "shell/MenuEvents.h"
#include "shell/state/RecentFiles.h"
#include "shell/state/Settings.h"
#include "surface/forms/windows/EventLoop.h"
#include "tools/SelectTool.h"
#include "ui/MsgBox.h"

using namespace zelvane;

namespace {

const std::string kFailure = "The selected picture file is missing or invalid";
const std::string kChanged = "The image has been changed.\r\n\r\nDo you wish to save the changes?";

class Files : public Session {
 protected:
  QImage Noise(int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x)
        picture.setPixel(x, y, 0xFF000000u | static_cast<uint32_t>(x * 7919 + y * 104729));
    return picture;
  }
  /// A document with a stroke on it.
  frmPaint& OpenChanged(const std::string& name) {
    frmPaint* document = OpenPicture(MakePicture(name, Noise(50, 30)));
    document->Dirty = true;
    return *document;
  }
};

}  // namespace

TEST_F(Files, ThePanelTellsWhatTheFileHolds) {
  Start(MakePicture("first.png", Noise(50, 30)));
  frmPaint* bitmap = OpenPicture(MakePicture("second.bmp", Noise(7, 9)));
  EXPECT_EQ(InfoPanel->iType.Caption() + InfoPanel->IHeight.Caption(), "BMP9");
  bitmap->Unload();
  EXPECT_EQ(InfoPanel->iType.Caption() + InfoPanel->IWidth.Caption(), "PNG50");
  QFile::remove(QString::fromStdString(PathOf("first.png")));
  Document().Form_Activate();
  EXPECT_FALSE(InfoPanel->InfoFrame.Visible());
}

TEST_F(Files, ThePictureOfTheCommandLineOpens) {
  const QImage picture = Noise(71, 43);
  const std::string path = MakePicture("a & b.png", picture);
  for (const std::string& tail : {path, '"' + path, path + '"', '"' + path + '"'}) {
    Start(tail);
    EXPECT_EQ(Picture(Document().Buffer), picture) << tail;
  }
  EXPECT_EQ(Document().Caption(), path + " - 100%");
  EXPECT_EQ(State.RecentFiles[0], path);
  EXPECT_EQ(MainForm->Menus.mnuFile1.Caption(), "a && b.png") << "shows the name as it is";
}

TEST_F(Files, AFileThatIsWholeAMomentLaterIsRead) {
  Start();
  const std::string path = PathOf("late.dib"), made = MakePicture("made.bmp", Noise(5, 5));
  QTimer::singleShot(0, [&] { QFile::rename(QString::fromStdString(made), QString::fromStdString(path)); });
  EXPECT_TRUE(LoadPictureFile(path));
}

TEST_F(Files, ALongReadingShowsItsProgressAndIsGivenUpByEscOrTheWindowsClose) {
  Start();
  QImage large(8000, 8000, QImage::Format_Mono);
  large.fill(1);
  const std::string path = MakePicture("large.png", large);
  QWidget& window = *MainForm->Widget();
  PatienceMs = 0;
  for (const bool by_key : {true, false}) {
    int readings = 0;
    OnLongReading = [&](PictureReading& reading) {
      ++readings;
      Defer([&] {
        EXPECT_TRUE(Progress->ProcessBg.Visible() && !MainForm->Enabled() && !reading.IsDone());
        QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
        QCloseEvent close;
        QSpontaneKeyEvent::setSpontaneous(&close);
        by_key ? QTest::keyClick(&window, Qt::Key_Escape) : (void)qApp->notify(&window, &close);
      });
      ShowReading(reading);
    };
    // Nobody is told of damage, nothing stays of it, and what was to follow doesn't.
    Attempt([&] { OpenPickedFiles({path, path}); });
    EXPECT_EQ(readings, 1);
    EXPECT_FALSE(ActiveDocument() || Progress->ProcessBg.Visible());
    EXPECT_TRUE(MainForm->Enabled() && State.RecentFiles[0].empty());
  }
  PatienceMs = 500;
}

TEST_F(Files, WhatCannotBeReadLeavesTheProgramAsItWas) {
  ASSERT_TRUE(QDir().mkdir(QString::fromStdString(PathOf("folder.gif"))));
  ASSERT_TRUE(QFile(QString::fromStdString(PathOf("empty.bmp"))).open(QIODevice::WriteOnly));
  Start();
  for (const char* name : {"missing.png", "folder.gif", "empty.bmp", "noending"}) {
    const auto told = Answering({"OK"}, [&] { EXPECT_EQ(OpenPicture(PathOf(name)), nullptr) << name; });
    EXPECT_EQ(told, std::vector<std::string>{kFailure}) << name;
    EXPECT_EQ(ActiveDocument(), nullptr) << name;
  }
  EXPECT_EQ(State.RecentCount, 0);
}

/// A drop comes to the window although what is in it doesn't take drops.
TEST_F(Files, DroppedFilesOpenOneAfterTheOther) {
  Start(MakePicture("first.png", Noise(5, 5)));
  const std::string folder = PathOf(""), odd = folder + "100% \xFC.bmp";
  ASSERT_EQ(::rename(MakePicture("b.bmp", Noise(6, 5)).c_str(), odd.c_str()), 0);
  const std::string last = MakePicture("c.png", Noise(7, 5));
  const auto drop = [](const std::string& list, Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction) {
    QMimeData data;
    data.setData("text/uri-list", QByteArray::fromStdString(list));
    QDragEnterEvent enter(QPoint(5, 5), actions, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(ColorPanel->lblColor[0].Entry().Widget(), &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent event(QPoint(5, 5), actions, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(MainForm->Widget(), &event);
    EXPECT_EQ(event.dropAction(), Qt::CopyAction) << "the file stays where it is";
    return true;
  };
  const std::string list = "# a note\r\nfile://" + folder +
                           "100%25%20%fc.bmp\r\nhttp://example.org/a.png\r\n" + "file://localhost" + folder +
                           "\r\nfile:" + last + "\r\n";
  const auto told = Answering({"OK", "OK"}, [&] { EXPECT_TRUE(drop(list)); });
  EXPECT_EQ(told, (std::vector<std::string>{kFailure, kFailure})) << "the address and the folder";
  EXPECT_EQ(MainForm->Children().size(), 3u);
  EXPECT_EQ(State.RecentFiles[0] + State.RecentFiles[1], last + odd);
  EXPECT_TRUE(Document().Buffer.Tag() == last && Document().OpenedFile);

  EXPECT_FALSE(drop("http://example.org/a.png\r\nfile://elsewhere" + last));
  EXPECT_FALSE(drop("file:" + last, Qt::MoveAction));
  QTimer::singleShot(0, [&] { EXPECT_FALSE(drop("file:" + last)) << "while a question is up"; });
  Answering({"OK"}, [] { MsgBox("text", kOkOnly); });
  MainForm->SetEnabled(false);
  EXPECT_FALSE(drop("file:" + last));
}

TEST_F(Files, ADocumentNeedsNoFile) {
  Start();
  const frmPaint& blank = MakeDocument(30, 20, RGB(1, 2, 3), {"Untitled", ""});
  EXPECT_EQ(blank.Buffer.Point(29, 19), RGB(1, 2, 3));
  EXPECT_EQ(QSizeF(blank.PaintArea.Width(), blank.PaintArea.Height()), QSizeF(32, 22));
  const frmPaint& kept = MakeDocument(Bitmap(8, 9, 0), {"a", "/a"}, DocumentPlace{450, 600});
  EXPECT_EQ(ActiveDocument(), &kept);
  EXPECT_EQ(QPointF(kept.Left(), kept.Top()), QPointF(450, 600));
  EXPECT_THROW(MakeDocument(40000, 1, kWhite, {"too wide", ""}), SurfaceTooLarge);
  EXPECT_EQ(MainForm->Children().size(), 2u);
}

TEST(SaveTypes, FollowTheEnding) {
  const std::map<int16_t, std::vector<std::string>> endings = {{kSaveBitmap, {"bmp", "dib", "png", ""}},
                                                               {kSaveGif, {"gif"}},
                                                               {kSaveJpeg, {"jpg", "jpe", "JPEG"}},
                                                               {kSaveTiff, {"tif", "tiff", "jfx"}},
                                                               {kSaveIcon, {"ico"}}};
  for (const auto& [type, those] : endings)
    for (const std::string& ending : those)
      EXPECT_EQ((SetSaveType("/a.gif/b." + ending), State.SaveType), type) << ending;
}

TEST_F(Files, SavingWritesTheKindOfTheEndingAndTheDocumentKeepsItsPixels) {
  Start();
  frmPaint& document = OpenChanged("a.bmp");
  const QImage pixels = Picture(document.Buffer);
  WriteSetting("JPEGCompression", "130");
  for (const char* kind : {"gif", "jpeg", "tiff", "ico", "bmp"}) {
    const std::string path = PathOf(std::string("saved.") + kind);
    document.Dirty = true;
    SetSaveType(path);
    EXPECT_TRUE(SaveFile(document, path));
    EXPECT_EQ(QImageReader::imageFormat(QString::fromStdString(path)), kind);
    EXPECT_EQ(document.Buffer.Tag(), path);
    EXPECT_FALSE(document.Dirty);
    EXPECT_EQ(Picture(document.Buffer), pixels);
  }
  const auto size_of = [&](const char* name) { return QFile(QString::fromStdString(PathOf(name))).size(); };
  const qint64 small = size_of("saved.jpeg");
  WriteSetting("JPEGCompression", "65");
  SetSaveType("saved.jpeg");
  EXPECT_TRUE(SaveFile(document, PathOf("saved.jpeg")));
  EXPECT_GT(size_of("saved.jpeg"), small);
}

TEST_F(Files, AFailedSaveTellsTheFileAndKeepsTheDocumentChanged) {
  Start();
  const QString folder = QString::fromStdString(PathOf("gone"));
  ASSERT_TRUE(QDir().mkdir(folder));
  frmPaint& document = OpenChanged("gone/p.bmp");
  ASSERT_TRUE(QDir(folder).removeRecursively());
  const auto told = Answering({"OK"}, Save_Click);
  ASSERT_EQ(told.size(), 1u);
  EXPECT_NE(told[0].find(PathOf("gone/p.bmp")), std::string::npos) << told[0];
  // Closing with Yes fails alike, and the document stays.
  EXPECT_EQ(Answering({"Yes", "OK"}, [&] { EXPECT_FALSE(document.Unload()); }).size(), 2u);
}

TEST_F(Files, ASaveKeepsOnceWhatItsFileHeldBesides) {
  Start();
  const std::string path = MakePicture("p.png", Noise(9, 9));
  const auto names = [&] {
    return QDir(QString::fromStdString(PathOf("."))).entryList({"p.*"}, QDir::Files);
  };
  OpenPicture(path);
  for (int i = 0; i < 2; ++i) Save_Click();
  EXPECT_EQ(names(), (QStringList{"p.png", "p.png~"}));
  EXPECT_EQ(QImage(QString::fromStdString(path + '~'), "png"), Noise(9, 9));
  MakePicture("p.png", Noise(5, 5));
  Save_Click();
  EXPECT_EQ(QImage(QString::fromStdString(path + "~1~"), "png"), Noise(5, 5));
  for (const char* own : {"p.bmp", "p.jpg", "p.tif", "p.ico"}) {
    SetSaveType(own);
    SaveFile(Document(), PathOf(own));
    OpenPicture(PathOf(own));
    Save_Click();
    EXPECT_FALSE(names().contains(QString(own) + '~')) << own;
  }
}

TEST_F(Files, ClosingAChangedDocumentAsks) {
  Start();
  frmPaint& document = OpenChanged("a.bmp");
  OpenPicture(MakePicture("b.bmp", Noise(3, 3)));
  const std::vector<std::string> asked = {kChanged};
  EXPECT_EQ(Answering({"Cancel"}, [&] { EXPECT_FALSE(document.Unload()); }), asked);
  EXPECT_TRUE(State.CloseCancelled);
  EXPECT_EQ(ActiveDocument(), &document) << "the question's document comes to the front";
  document.Buffer.Cls();
  const QImage cleared = Picture(document.Buffer);
  EXPECT_EQ(Answering({"Yes"}, [&] { EXPECT_TRUE(document.Unload()); }), asked);
  const QImage saved(QString::fromStdString(PathOf("a.bmp")), "bmp");
  EXPECT_EQ(saved.depth(), 32);
  EXPECT_EQ(saved.convertToFormat(QImage::Format_RGB32), cleared);
}

TEST_F(Files, OnlyAnotherFileIsAskedAbout) {
  Start();
  const frmPaint& document = OpenChanged("a.bmp");
  MakePicture("b.bmp", Noise(3, 3));
  for (const char* own_or_new : {"a.bmp", "c.bmp"}) EXPECT_TRUE(MayReplace(document, PathOf(own_or_new)));
  for (const std::string answer : {"Yes", "No"}) {
    const auto replace = [&] { EXPECT_EQ(MayReplace(document, PathOf("b.bmp")), answer == "Yes"); };
    EXPECT_EQ(Answering({answer}, replace).size(), 1u);
  }
}

TEST_F(Files, TheExitStopsAtTheDocumentThatRefuses) {
  Start();
  OpenChanged("a.bmp");
  frmPaint& second = OpenChanged("b.bmp");
  MainForm->SetWindowState(kMinimised);
  EXPECT_EQ(Answering({"No", "Cancel"}, [] { EXPECT_FALSE(MainForm->Unload()); }).size(), 2u);
  EXPECT_EQ(MainForm->WindowState(), kNormal) << "nobody answers what isn't seen";
  EXPECT_FALSE(State.Exiting);
  ASSERT_EQ(MainForm->Children(), std::vector<Form*>{&second});
  EXPECT_EQ(Answering({"No"}, [] { EXPECT_TRUE(MainForm->Unload()); }).size(), 1u);
  EXPECT_TRUE(State.Exiting);
  EXPECT_TRUE(Forms().empty());
}

TEST_F(Files, TheRecentListShiftsAndIgnoresCase) {
  for (const char* name : {"/3", "/4", "/5", "/6", "/4", "/A", "/b", "/a"}) AddToRecentList(name);
  ResetState();
  LoadRecentList();
  EXPECT_EQ(State.RecentFiles, (std::array<std::string, 5>{"/a", "/b", "/4", "/6", "/5"}));
  EXPECT_EQ(ReadSetting("RecentFile" + std::to_string(State.RecentCount), ""), "/5");
}
