#include "tools/TextPickers.h"

#include <QListView>
#include <QScrollBar>
#include <QTest>

#include "session/Session.h"
#include "tools/OptionBars.h"
#include "tools/SelectTool.h"
#include "tools/Selector.h"

using namespace zelvane;

namespace {

class TextPickers : public Session {
 protected:
  /// The Text tool on a white picture.
  void Open() {
    QImage white(300, 200, QImage::Format_RGB32);
    white.fill(Qt::white);
    Start(MakePicture("white.png", white));
    SelectTool(kTextTool);
  }
  static QListView& View(const PickerControls& picker) {
    return *qobject_cast<QListView*>(picker.List.Widget());
  }
  static QRect Row(const PickerControls& picker, int index) {
    return View(picker).visualRect(View(picker).model()->index(index, 0));
  }
  static void ClickOnRow(const PickerControls& picker, int index) {
    QTest::mouseClick(View(picker).viewport(), Qt::LeftButton, {}, Row(picker, index).center());
  }
  static void Keys(const PickerControls& picker, std::initializer_list<Qt::Key> keys) {
    for (const Qt::Key key : keys) QTest::keyClick(picker.List.Widget(), key);
  }
  static void OpenFonts() { ClickOn(frmControls->CmdFont); }
  static void OpenStyles() { ClickOn(frmControls->CmdFontStyle); }
};

}  // namespace

TEST_F(TextPickers, AChoiceIsTakenByTheBarThePictureAndItsOpenTextBox) {
  Open();
  ZoomTo(2);
  Click(40, 40);
  const TextFont before = Document().Buffer.Font();
  OpenFonts();
  const int last = frmFonts->List.Count() - 1;
  const std::string first = frmFonts->List[0].text, other = frmFonts->List[last].text;
  ASSERT_NE(first, other);
  EXPECT_EQ(frmControls->lblFont.Caption(), " " + first) << "the first is the default";
  EXPECT_EQ(frmFonts->List.Highlight(), 0);
  Keys(*frmFonts, {Qt::Key_End, Qt::Key_Return});
  EXPECT_EQ(frmControls->lblFont.Caption(), " " + other);
  EXPECT_FALSE(frmFonts->Window.Visible());
  EXPECT_TRUE(Document().TextInput.HasFocus());
  OpenStyles();
  ClickOnRow(*frmFontStyle, 3);
  EXPECT_EQ(frmControls->lblFontStyle.Caption(), " Bold Italic");
  EXPECT_TRUE(frmControls->lblFontStyle.FontBold());
  const TextFont wanted = {other, before.Size, true, true};
  EXPECT_TRUE(Document().Buffer.Font() == wanted);
  EXPECT_TRUE(Document().TextInput.Font() == wanted);

  const Single height = Document().TextInput.Height();
  ClickOn(frmControls->CmdDropDown[kTextSize]);
  QTest::mouseClick(frmSelector->ScrollBar.Widget(), Qt::LeftButton, {}, QPoint(60, 3));
  EXPECT_EQ(Document().Buffer.FontSize(), OptionOf(kTextSize).Value) << "with its fraction";
  EXPECT_EQ(Document().TextInput.FontSize(), 2 * OptionOf(kTextSize).Value);
  EXPECT_GT(Document().TextInput.Height(), height);
  SelectTool(kTextTool);
  EXPECT_EQ(frmControls->lblFont.Caption(), " " + other) << "stays when the bar comes up again";
  Document().SetDirtyFalse();
  Document().Unload();
  OpenFonts();
  ClickOnRow(*frmFonts, frmFonts->List.Highlight());
  EXPECT_EQ(frmControls->lblFont.Caption(), " " + other);
}

TEST_F(TextPickers, RowsLieAsHighAsTheirFacesAndTheBarGoesOverAllOfThem) {
  Open();
  OpenFonts();
  const QListView& view = View(*frmFonts);
  const int count = frmFonts->List.Count();
  int bottom = -1;
  for (int i = 0; i < count; ++i) {
    const QRect row = Row(*frmFonts, i);
    EXPECT_EQ(row.top(), bottom + 1);
    const QFontMetrics face(QFont(QString::fromStdString(frmFonts->List[i].face), 12));
    const int frame = row.height() - view.fontMetrics().height() - face.height();
    EXPECT_GE(frame, 3) << frmFonts->List[i].text;
    EXPECT_LE(frame, 12) << frmFonts->List[i].text;
    bottom = row.bottom();
  }
  EXPECT_EQ(bottom + 1, frmFonts->List.ContentHeight());
  const QScrollBar& bar = *view.verticalScrollBar();
  EXPECT_EQ(bar.maximum(), frmFonts->List.ContentHeight() - view.viewport()->height());
  EXPECT_EQ(bar.singleStep(), frmFonts->List.ContentHeight() / count);
  OpenStyles();
  EXPECT_FALSE(View(*frmFontStyle).verticalScrollBar()->isVisible());
  EXPECT_EQ(frmFontStyle->Window.Height(), static_cast<Single>(frmFontStyle->List.ContentHeight() + 2));
  EXPECT_EQ(frmFontStyle->Window.Left() + frmFontStyle->Window.Width(),
            frmControls->DrawToolbar[kTextTool].Left() + frmControls->CmdFontStyle.Left() + 17);
}

TEST_F(TextPickers, ThePointerAndTypingHighlightWithoutScrollingAway) {
  Open();
  OpenFonts();
  QListView& view = View(*frmFonts);
  QScrollBar& bar = *view.verticalScrollBar();
  bar.setValue(10);
  const QPoint cut(20, view.viewport()->height() - 1);
  QTest::mouseMove(view.viewport(), cut);
  EXPECT_EQ(frmFonts->List.Highlight(), view.indexAt(cut).row());
  EXPECT_EQ(bar.value(), 10);
  const char letter = frmFonts->List[frmFonts->List.Count() - 1].text[0];
  QTest::keyClick(&view, letter);
  EXPECT_EQ(frmFonts->List[frmFonts->List.Highlight()].text[0], letter);
  EXPECT_TRUE(view.viewport()->rect().contains(Row(*frmFonts, frmFonts->List.Highlight())));
}

TEST_F(TextPickers, EachClosesForAllButItself) {
  Open();
  const std::string font = frmControls->lblFont.Caption();
  const std::function<void()> ways[] = {[] { OpenFonts(); },
                                        [] { OpenStyles(); },
                                        [] {
                                          Keys(*frmFonts, {Qt::Key_Down, Qt::Key_Escape});
                                        },
                                        [] { ClickOn(frmControls->CmdDropDown[kTextSize]); },
                                        [] { frmControls->pixelSelector[kTextSize].SetFocus(); },
                                        [this] { Click(10, 10); },
                                        [] { SelectTool(kTextTool); }};
  for (const auto& close : ways) {
    OpenFonts();
    ASSERT_TRUE(frmFonts->Window.Visible() && frmControls->FontsOpen);
    EXPECT_TRUE(frmFonts->List.HasFocus());
    close();
    EXPECT_FALSE(frmFonts->Window.Visible() || frmControls->FontsOpen);
    EXPECT_EQ(frmControls->CmdFont.Point(0, 0), ToColor(ToPixel(SystemColor::ButtonHighlight))) << "raised";
    EXPECT_EQ(frmControls->lblFont.Caption(), font);
    UnClickButton();
  }
  OpenFonts();
  Keys(*frmFonts, {Qt::Key_Escape});
  EXPECT_TRUE(Document().TextInput.HasFocus());
}
