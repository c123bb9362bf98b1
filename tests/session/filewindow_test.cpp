#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QStandardPaths>
#include <QTest>

#include "document/window/OpenPicture.h"
#include "document/window/SavePicture.h"
#include "files/SaveDialog.h"
#include "session/Session.h"
#include "shell/MainForm.h"
#include "shell/MenuEvents.h"
#include "shell/state/Settings.h"
#include "surface/forms/windows/Application.h"

using namespace zelvane;

namespace {

/// The file window as a person has it: asked for by a command, used by keys and pointer.
class FileWindow : public Session {
 protected:
  FileWindow() {
    QDir().mkdir(QString::fromStdString(PathOf("pictures")));
    for (const char* name : {"file10.png", "File2.PNG", "a.jpg", ".hidden.png", "notes.txt"})
      QFile(QString::fromStdString(PathOf(std::string("pictures/") + name))).open(QIODevice::WriteOnly);
    WriteSetting("ZelvaneFolder", PathOf("pictures"));
  }
  void StartWith(int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(Qt::white);
    Start(MakePicture("picture.bmp", picture));
    State.ZelvaneFolder = PathOf("pictures");
  }
  /// Runs the command, does `steps` in the window that comes up, and cancels it where that left it open.
  void In(void (*command)(), const std::function<void()>& steps) {
    expects_dialogs_ = true;
    int shown = 0;
    QTimer::singleShot(0, [&] {
      ASSERT_TRUE(SaveDialog.IsLoaded() && SaveDialog->Visible());
      ++shown;
      DoEvents();
      EXPECT_TRUE(SaveDialog->IsActive());
      steps();
      if (SaveDialog.IsLoaded() && SaveDialog->Visible()) Key(Qt::Key_Escape);
    });
    command();
    EXPECT_EQ(shown, 1);
    EXPECT_FALSE(SaveDialog.IsLoaded()) << "released with its object";
    expects_dialogs_ = false;
  }
  static void Key(int key) { QTest::keyClick(SaveDialog->Widget()->focusWidget(), Qt::Key(key)); }
  /// In place of what the name box holds.
  static void Type(const std::string& name) {
    SaveDialog->InputFileName.SetFocus();
    SaveDialog->InputFileName.SelectAll();
    auto* entry = SaveDialog->InputFileName.Widget()->findChild<QLineEdit*>();
    QTest::keyClick(entry, Qt::Key_Delete);
    QTest::keyClicks(entry, QString::fromStdString(name));
    EXPECT_EQ(SaveDialog->InputFileName.Text(), name);
  }
  static std::vector<std::string> Listed() {
    std::vector<std::string> names;
    for (int i = 0; i < SaveDialog->File1.ListCount(); ++i) names.push_back(SaveDialog->File1.List(i));
    return names;
  }
  using Names = std::vector<std::string>;
};

}  // namespace

TEST_F(FileWindow, ListsWhatFitsTheTypeAsPeopleReadNames) {
  Start();
  In(FileOpen_Click, [&] {
    EXPECT_EQ(SaveDialog->Caption(), " Open...");
    EXPECT_EQ(Listed(), (Names{"a.jpg", "File2.PNG", "file10.png"}));
    EXPECT_EQ(SaveDialog->FileCount.Caption(), "3 ");
    EXPECT_FALSE(SaveDialog->saveButton.Enabled());
    EXPECT_FALSE(SaveDialog->CompressionScroll.Visible());
    SaveDialog->FileType.SetListIndex(3);
    EXPECT_EQ(Listed(), Names{"a.jpg"});
    EXPECT_EQ(SaveDialog->InputFileName.Text(), "") << "opening leaves the name alone";
    SaveDialog->FolderTree.SetPath(PathOf(""));
    EXPECT_EQ(SaveDialog->FileCount.Caption(), "0 ");
  });
  EXPECT_EQ(State.OpenFilterIndex, 3) << "also after a cancel";
}

TEST_F(FileWindow, OpensWhatIsChosenByKeysOrByADoubleClick) {
  StartWith(20, 10);
  QFile::copy(QString::fromStdString(PathOf("picture.bmp")),
              QString::fromStdString(PathOf("pictures/b.bmp")));
  In(FileOpen_Click, [] {
    SaveDialog->File1.SetFocus();
    QTest::keyClicks(SaveDialog->Widget()->focusWidget(), "b");
    EXPECT_EQ(SaveDialog->InputFileName.Text(), "b.bmp");
    Key(Qt::Key_Return);
  });
  EXPECT_EQ(Document().Buffer.Tag(), PathOf("pictures/b.bmp"));
  In(FileOpen_Click, [&] {
    Type(PathOf("picture.bmp"));
    Key(Qt::Key_Return);
  });
  EXPECT_EQ(Document().Buffer.Tag(), PathOf("picture.bmp"));
  EXPECT_EQ(State.ZelvaneFolder, PathOf(""));
}

TEST_F(FileWindow, KeepsTheEndingOfANameInStepWithTheType) {
  StartWith(20, 10);
  const struct {
    const char* typed;
    int type;
    const char* name;  // as the box shows it when it's left
  } kCases[] = {{"plain", 0, "plain.bmp"}, {"a.b.c", 0, "a.bmp"},     {"a.jpg", 2, "a.jpg"},
                {"a.jpeg", 0, "a.bmp"},    {"sub/a", 4, "sub/a.ico"}, {"", 1, ".gif"}};
  for (const auto& [typed, type, name] : kCases) {
    In(SaveAs_Click, [&, typed = typed, type = type, name = name] {
      Type(typed);
      SaveDialog->FileType.SetListIndex(type);
      SaveDialog->FileType.SetFocus();
      EXPECT_EQ(SaveDialog->InputFileName.Text(), name);
      EXPECT_EQ(SaveDialog->saveButton.Enabled(), name[0] != '.');
      EXPECT_EQ(SaveDialog->CompressionNumber.Enabled(), type == 2);
    });
  }
}

TEST_F(FileWindow, SavesUnderTheTypedNameWithTheTypesEnding) {
  StartWith(20, 10);
  In(SaveAs_Click, [] {
    EXPECT_EQ(SaveDialog->InputFileName.Text(), "picture.bmp") << "the document's own is proposed";
    Type("mine");
    Key(Qt::Key_Return);
  });
  EXPECT_EQ(Document().Buffer.Tag(), PathOf("mine.bmp"));
  EXPECT_TRUE(QFile::exists(QString::fromStdString(PathOf("mine.bmp"))));
  // A folder is gone into, and a name that is only an ending isn't taken.
  In(SaveAs_Click, [&] {
    for (const std::string& folder : {PathOf("pictures"), PathOf("pictures/")}) {
      Type(folder);
      Key(Qt::Key_Return);
      EXPECT_EQ(SaveDialog->FolderTree.Path(), PathOf("pictures"));
    }
    Type(".bmp");
    Key(Qt::Key_Return);
  });
  EXPECT_EQ(Document().Buffer.Tag(), PathOf("mine.bmp"));
}

TEST_F(FileWindow, ProposesTheTypeOfAName) {
  StartWith(20, 10);
  Document().Buffer.SetTag(PathOf("pictures/a.jpg"));
  In(SaveAs_Click, [&] {
    EXPECT_EQ(SaveDialog->FileType.ListIndex(), 2);
    EXPECT_EQ(SaveDialog->InputFileName.Text(), "a.jpg");
    SaveDialog->FileType.SetListIndex(0);
    EXPECT_EQ(SaveDialog->InputFileName.Text(), "a.bmp");
    EXPECT_FALSE(SaveDialog->CompressionScroll.Enabled());
  });
}

TEST_F(FileWindow, StoresTheCompressionWithinItsLimits) {
  StartWith(20, 10);
  const auto ask = [] { GetSaveName(Document(), "Save As...", kSaveFilter); };
  for (const auto& [typed, stored] : {std::pair{"10", "20"}, {"200", "130"}, {"64", "64"}}) {
    In(ask, [typed = typed] {
      SaveDialog->FileType.SetListIndex(2);
      SaveDialog->CompressionNumber.SetFocus();
      QTest::keyClicks(SaveDialog->Widget()->focusWidget(), typed);
      Type("a");
      Key(Qt::Key_Return);
    });
    EXPECT_EQ(ReadSetting("JPEGCompression", ""), stored) << typed;
  }
}

TEST_F(FileWindow, ShowsWhichOfTheTwoPlacesTheFolderIsIn) {
  QDir().mkpath(QString::fromStdString(PathOf("Papers/deep")));
  QFile places(QStandardPaths::writableLocation(QStandardPaths::ConfigLocation) + "/user-dirs.dirs");
  ASSERT_TRUE(places.open(QIODevice::WriteOnly));
  places.write(("XDG_DOCUMENTS_DIR=\"" + PathOf("Papers") + "\"\n").c_str());
  places.close();
  Start();
  In(FileOpen_Click, [&] {
    ClickOn(SaveDialog->Location[2]);
    EXPECT_EQ(SaveDialog->FolderTree.Path(), PathOf("Papers"));
    for (const auto& [folder, appearance] :
         {std::pair{PathOf("Papers"), kRaised}, {PathOf("Papers/deep"), kRaised}, {PathOf(""), kFlat}}) {
      SaveDialog->FolderTree.SetPath(folder);
      EXPECT_EQ(SaveDialog->Location[2].Appearance(), appearance) << folder;
    }
  });
}

TEST_F(FileWindow, AFolderThatGoesIsLeftForTheOneAbove) {
  Start();
  In(FileOpen_Click, [&] {
    QDir(QString::fromStdString(PathOf("pictures"))).removeRecursively();
    Key(Qt::Key_F5);
    EXPECT_EQ(SaveDialog->FolderTree.Path(), PathOf(""));
    EXPECT_EQ(SaveDialog->FileCount.Caption(), "0 ");
  });
  // So is a stored one that is gone.
  In(FileOpen_Click, [&] { EXPECT_EQ(PathOf("").find(SaveDialog->FolderTree.Path()), 0u); });
}
