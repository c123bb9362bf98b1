#include <QFile>
#include <QLineEdit>
#include <QTest>
#include <fstream>

#include "colour/ColorPanel.h"
#include "colour/SwatchPanel.h"
#include "colour/frmNewSwatch.h"
#include "session/Session.h"
#include "shell/Main.h"
#include "shell/MainForm.h"
#include "shell/state/DataFile.h"
#include "surface/forms/windows/Application.h"
#include "surface/system/files/Files.h"

using namespace zelvane;

namespace {

using Rows = DataStore::TextList;

class Swatches : public Session {
 protected:
  /// Before the start: the session's data file with those rows alone.
  static void Put(const Rows& rows, const char* table = "ColorSwatches", const char* field = "ColorNumber") {
    QFile::remove(QString::fromStdString(Path()));
    MakeFolderWith(FolderOf(Path()), "note", {});
    const auto store = DataStore::Create(Path(), kDataPassword);
    ASSERT_EQ(store->AddTexts(table, field, [&](const Rows&) { return rows; }), "");
  }
  static std::string Path() { return UserDataFolder() + "/Korvath/Korvath.KVD"; }
  static Rows Stored() {
    const auto store = DataStore::Open(Path(), kDataPassword);
    return store ? store->Texts("ColorSwatches", "ColorNumber") : Rows{"not open"};
  }
  /// As a person does, in the window that a click on free space brings.
  static void AddNamed(const char* name) {
    ClickOn(SwatchPanel->SwatchScroll);
    ASSERT_TRUE(frmNewSwatch->Visible() && !MainForm->Enabled());
    QTest::keyClicks(frmNewSwatch->txtSwatch.Widget(), name);
    QTest::keyClick(frmNewSwatch->txtSwatch.Widget(), Qt::Key_Return);
    DoEvents();
  }
  static std::vector<SwatchEntry>& Grid() { return SwatchPanel->Swatch; }
  static Rows Many(int count) {
    Rows rows;
    for (int i = 0; i < count; ++i) rows.push_back(std::to_string(i) + " n" + std::to_string(i));
    return rows;
  }
};

TEST_F(Swatches, StandInRowsOfTenAndScrollByRows) {
  struct Case {
    int count, top_of_last, max;
    Single display, free;
  };
  const Case cases[] = {{1, 0, 0, 13, 39},
                        {10, 0, 0, 25, 51},
                        {79, 84, 0, 97, 123},
                        {80, 84, 1, 109, 135},
                        {100000, 119988, 9993, 120013, 120039}};
  for (const Case& grid : cases) {
    Put(Many(grid.count));
    Start();
    ASSERT_EQ(Grid().size(), static_cast<size_t>(grid.count));
    EXPECT_EQ(Grid().back().Top, grid.top_of_last);
    EXPECT_EQ(Grid().back().Left, (grid.count - 1) % 10 * 12);
    EXPECT_EQ(SwatchPanel->Display.Height(), grid.display);
    EXPECT_EQ(SwatchPanel->SwatchScroll.Height(), grid.free);
    EXPECT_EQ(SwatchPanel->ScrollSwatch.Enabled(), grid.max > 0) << grid.count;
    EXPECT_EQ(SwatchPanel->ScrollSwatch.Max(), grid.max);
    SwatchPanel->ScrollSwatch.SetValue(static_cast<int16_t>(grid.max));
    EXPECT_EQ(SwatchPanel->Display.Top(), -12 * grid.max);
    const SwatchTile& first = SwatchPanel->Tiles[0];
    EXPECT_EQ(first.Index(), grid.max * 10);
    EXPECT_LE(SwatchPanel->Tiles.Count(), 70);
  }
}

TEST_F(Swatches, ArePickedByEitherButton) {
  Put({"255 Red", "nothing", "65280 <b>Green</b>"});
  Start();
  ASSERT_EQ(Grid().size(), 2u);
  QTest::mouseClick(SwatchPanel->Tiles[0].Widget(), Qt::LeftButton);
  QTest::mouseClick(SwatchPanel->Tiles[1].Widget(), Qt::RightButton);
  EXPECT_EQ(ColorPanel->SelColor[0].BackColor(), RGB(255, 0, 0));
  EXPECT_EQ(ColorPanel->SelColor[1].BackColor(), RGB(0, 255, 0));
  EXPECT_EQ(ColorPanel->SelectedColor, 1);
  EXPECT_EQ(ColorPanel->Gradient.Point(60, 5), RGB(0, 255, 0));
  EXPECT_EQ(SwatchPanel->Tiles[1].Point(6, 6), RGB(0, 255, 0));
  EXPECT_EQ(SwatchPanel->Tiles[1].Widget()->toolTip(), "<qt>&lt;b&gt;Green&lt;/b&gt;</qt>");
}

TEST_F(Swatches, AreAddedAndStayForTheNextStart) {
  // The file has another table, and not yet theirs.
  Put({"x"}, "Other", "Field");
  Start();
  EXPECT_TRUE(Grid().empty());
  ColorPanel->SelColor[0].SetBackColor(RGB(1, 2, 3));
  AddNamed("a b");
  EXPECT_TRUE(MainForm->Enabled() && !frmNewSwatch.IsLoaded());
  EXPECT_EQ(Grid().at(0).Left, 0);
  ColorPanel->SelColor[0].SetBackColor(kWhite);
  AddNamed(" second ");
  EXPECT_EQ(Stored(), (Rows{"197121 a b", "16777215  second "}));
  MainForm->Unload();
  EXPECT_EQ(Stored().size(), 2u);
  EXPECT_FALSE(FileExists(FolderOf(Path()) + "/KorvathTemp.KVD"));
  Start();
  ASSERT_EQ(Grid().size(), 2u);
  EXPECT_EQ(Grid()[1].ToolTipText, "second");
  EXPECT_EQ(Grid()[1].Left, 12);
  EXPECT_EQ(DataStore::Open(Path(), kDataPassword)->Texts("Other", "Field"), Rows{"x"});
}

TEST_F(Swatches, BehindAFullPanelAreReachedByTheWheel) {
  Put(Many(70));
  Start();
  const auto turn = [](Single notches) { SwatchPanel->Background.OnMouseWheel(0, 5, 5, 0, notches); };
  turn(1);
  EXPECT_EQ(SwatchPanel->Display.Top(), 0);
  turn(-3);
  EXPECT_EQ(SwatchPanel->Display.Top(), -12) << "so that the free space is seen";
  turn(1);
  AddNamed("new");
  EXPECT_EQ(SwatchPanel->Display.Top(), -12);
  EXPECT_EQ(SwatchPanel->Tiles[60].Index(), 70);
  EXPECT_TRUE(SwatchPanel->Tiles[60].Visible());
}

TEST_F(Swatches, NeedANameAndCanBeGivenUp) {
  Start();
  const Rows standing = Stored();
  EXPECT_GT(standing.size(), 20u) << "those of the template";
  EXPECT_EQ(Answering({"OK"}, [] { AddNamed(""); }),
            std::vector<std::string>{"You have to enter a name for the swatch."});
  EXPECT_TRUE(frmNewSwatch->Visible());
  QTest::keyClicks(frmNewSwatch->txtSwatch.Widget(), QString(50, 'x'));
  EXPECT_EQ(frmNewSwatch->txtSwatch.Text().size(), 40u);
  QTest::keyClick(frmNewSwatch->txtSwatch.Widget(), Qt::Key_Escape);
  EXPECT_TRUE(MainForm->Enabled() && !frmNewSwatch.IsLoaded());
  ClickOn(SwatchPanel->Background);
  ClickOn(frmNewSwatch->Command1[1]);
  EXPECT_TRUE(MainForm->Enabled() && !frmNewSwatch.IsLoaded());
  EXPECT_EQ(Stored(), standing);
  EXPECT_EQ(Grid().size(), standing.size());
}

TEST_F(Swatches, ThatCannotBeStoredStayForTheNextTime) {
  Put({"255 Red", "not a swatch"});
  Start();
  ASSERT_TRUE(RenameFile(Path(), Path() + ".away"));
  const auto told = Answering({"OK"}, [] { AddNamed("first"); });
  ASSERT_EQ(told.size(), 1u);
  EXPECT_NE(told[0].find("the file has gone"), std::string::npos) << told[0];
  EXPECT_EQ(Grid().size(), 2u);
  ASSERT_TRUE(RenameFile(Path() + ".away", Path()));
  // Meanwhile another program has stored one, and has written the file anew.
  const auto other = DataStore::Open(Path(), kDataPassword);
  EXPECT_EQ(other->AddTexts("ColorSwatches", "ColorNumber", [](const Rows&) { return Rows{"5 other"}; }), "");
  EXPECT_TRUE(CompactDataFile(Path(), Path() + "2", kDataPassword));
  AddNamed("second");
  EXPECT_EQ(Stored(), (Rows{"255 Red", "not a swatch", "5 other", "0 first", "0 second"}));
}

TEST_F(Swatches, ADataFileThatCannotBeUsedEndsTheStart) {
  const std::vector<std::string> message{"The Korvath data file is missing or corrupted!"};
  StartResult result = StartResult::Running;
  const auto start = [&] { result = Main(""); };
  Put({});
  const std::string noise(5000, 'x');
  std::ofstream(Path()) << noise;
  EXPECT_EQ(Answering({"OK"}, start), message);
  EXPECT_EQ(result, StartResult::Failed);
  EXPECT_FALSE(MainForm.IsLoaded());
  ASSERT_TRUE(DeleteFile(Path()));
  EXPECT_EQ(Answering({"OK"}, start), message);
  EXPECT_FALSE(FileExists(Path())) << "the folder has been there without it";

  Put(Many(3000));
  std::ofstream(FolderOf(Path()) + "/KorvathTemp.KVD") << "left by a crash";
  QFile::resize(QString::fromStdString(Path()), QFile(QString::fromStdString(Path())).size() / 2);
  const auto told = Answering({"OK"}, start);
  ASSERT_EQ(told.size(), 1u);
  EXPECT_NE(told[0].find("Korvath damaged "), std::string::npos) << told[0];
  EXPECT_GT(Grid().size(), 1000u);
}

}  // namespace
