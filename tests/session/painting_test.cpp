#include <QApplication>
#include <QWidget>

#include "document/layers/ReadOuts.h"
#include "imageops/Undo.h"
#include "session/Session.h"
#include "shell/MainForm.h"
#include "tools/OptionBars.h"
#include "tools/SelectTool.h"

using namespace zelvane;

namespace {

constexpr Pixel kPaper = 0xFF80C0E0, kInk = 0xFF000000, kBackInk = 0xFFFFFFFF;

class Painting : public Session {
 protected:
  /// A plain picture of 60 by 40 in the active document, with the Pen chosen.
  void Open(int width = 60, int height = 40) {
    QImage paper(width, height, QImage::Format_RGB32);
    paper.fill(kPaper);
    Start(MakePicture("paper.png", paper));
    expected_ = paper;
    SelectTool(kPenTool);
  }
  void ZoomTo(int multiple) {
    frmControls->comboZoom.SetListIndex(multiple - 1);
    ASSERT_EQ(Document().Zoom, multiple * 100);
  }
  void Expect(const char* what) {
    const QImage got = Picture(Document().Buffer);
    ASSERT_EQ(got.size(), expected_.size());
    for (int y = 0; y < got.height(); ++y)
      for (int x = 0; x < got.width(); ++x)
        ASSERT_EQ(got.pixel(x, y), expected_.pixel(x, y))
            << what << ": first difference at " << x << ", " << y;
  }
  QImage expected_;
};

}  // namespace

TEST_F(Painting, StrokesLandOnThePixelThatThePointerShowsAtEveryZoom) {
  Open();
  for (int multiple = 1; multiple <= 8; ++multiple) {
    ZoomTo(multiple);
    // The first and the last unit that show column 10, and a row of the press point.
    const int row = 3 * multiple;
    Click(10 * multiple, row * multiple);
    Click(11 * multiple - 1, (row + 1) * multiple);
    Click(11 * multiple - 1, (row + 3) * multiple - 1);
    for (int y : {row, row + 1, row + 2}) expected_.setPixel(10, y, kInk);
    Expect("dots");
  }
}

TEST_F(Painting, PositionsRoundHalvesToEven) {
  Open();
  const auto dot_at = [this](Single x, int zoom) {
    ZoomTo(zoom);
    Document().Buffer.SetImage(Bitmap(60, 40, kPaper));
    Document().PaintArea.OnMouseDown(kLeftButton, 0, x, 5);
    Document().PaintArea.OnMouseUp(kLeftButton, 0, x, 5);
    for (int column = 0; column < 60; ++column)
      for (int row = 0; row < 40; ++row)
        if (Document().Buffer.GetPixel(column, row) == kBlack) return column;
    return -1;
  };
  EXPECT_EQ(dot_at(10.0F, 1), 10);
  EXPECT_EQ(dot_at(11.0F, 1), 10);
  EXPECT_EQ(dot_at(11.1F, 1), 11);
  EXPECT_EQ(dot_at(21.0F, 2), 10);
  EXPECT_EQ(dot_at(22.0F, 2), 10);
  EXPECT_EQ(dot_at(22.2F, 2), 11);
}

TEST_F(Painting, ABarKeepsItsRangeWhereThePictureNeedsMoreThanItHas) {
  Open(5000, 10);
  ZoomTo(6);
  const frmPaint& document = Document();
  const int16_t max = document.HScroll1.Max();
  EXPECT_EQ(max, 30002 - document.Back.Width());
  ZoomTo(8);
  EXPECT_EQ(document.PaintArea.Width(), 40002);
  EXPECT_EQ(document.HScroll1.Max(), max);
}

TEST_F(Painting, TheWheelScrollsAndZoomsWithCtrlButNotDuringAStroke) {
  Open(2000, 1500);
  frmPaint& document = Document();
  const auto wheel = [&](int16_t shift, Single notches) {
    document.PaintArea.OnMouseWheel(shift, 100, 100, 0, notches);
  };
  wheel(0, -2);
  EXPECT_GT(document.VScroll1.Value(), 0);
  wheel(0, 50);
  EXPECT_EQ(document.VScroll1.Value(), 0);
  wheel(kShift, -1);
  EXPECT_GT(document.HScroll1.Value(), 0);
  wheel(kCtrl, 1);
  EXPECT_EQ(document.Zoom, 200);
  Press(10, 10);
  wheel(kCtrl, 1);
  EXPECT_EQ(document.Zoom, 200);
  Release(10, 10);
}

TEST_F(Painting, FreehandJoinsEventsAndTheRightButtonPaintsInTheBackgroundColour) {
  Open();
  Press(5, 5);
  MoveTo(20, 5);
  MoveTo(20, 15);
  Release(20, 15);
  for (int x = 5; x <= 20; ++x) expected_.setPixel(x, 5, kInk);
  for (int y = 5; y <= 15; ++y) expected_.setPixel(20, y, kInk);
  Expect("left button");
  Drag(0, 10, 59, 10, Qt::RightButton);
  for (int x = 0; x < 60; ++x) expected_.setPixel(x, 10, kBackInk);
  Expect("right button");
  EXPECT_TRUE(Document().Dirty);
}

TEST_F(Painting, StrokesBeyondThePictureAreClipped) {
  Open();
  ZoomTo(3);
  Drag(-300, 30, 9000, 30);
  for (int x = 0; x < 60; ++x) expected_.setPixel(x, 10, kInk);
  Expect("across");
  Drag(-32000, -32000, -31000, -32000);
  Expect("far outside");
}

TEST_F(Painting, StraightLinePaintsOnlyAtTheRelease) {
  Open();
  SelectOption3(1);
  Press(10, 10);
  MoveTo(10, 30);
  Expect("while held");
  EXPECT_TRUE(Document().FollowLine.Visible());
  EXPECT_EQ(Document().FollowLine.y2(), 30);
  Release(10, 30);
  EXPECT_FALSE(Document().FollowLine.Visible());
  for (int y = 10; y <= 30; ++y) expected_.setPixel(10, y, kInk);
  Expect("line");
  Click(40, 20);
  expected_.setPixel(40, 20, kInk);
  Expect("dot");
}

TEST_F(Painting, PaintsIntoTheFloatingSelectionAtItsPlace) {
  Open();
  frmPaint& document = Document();
  document.BufferSelected.Move(20, 10, 10, 10);
  document.BufferSelected.SetBackColor(kWhite);
  document.SelectArea.SetVisible(true);
  RefreshPaintArea(document.Buffer);
  for (int y = 10; y < 20; ++y)
    for (int x = 20; x < 30; ++x) expected_.setPixel(x, y, kBackInk);
  Expect("merged");
  Drag(0, 15, 59, 15);
  for (int x = 20; x < 30; ++x) expected_.setPixel(x, 15, kInk);
  Expect("clipped to the selection");
  EXPECT_EQ(document.Undo.ScaleWidth(), 10);
  Undo_Click();
  for (int x = 20; x < 30; ++x) expected_.setPixel(x, 15, kBackInk);
  Expect("undone in the selection");
}

TEST_F(Painting, AFloatingSelectionStaysAboveWhateverHappensToThePicture) {
  Open();
  frmPaint& document = Document();
  const auto picture_gets = [&](int left, int top, int right, int bottom, QRgb color) {
    for (int y = top; y < bottom; ++y)
      for (int x = left; x < right; ++x) expected_.setPixel(x, y, color);
  };
  const auto fill = [](PictureSurface& layer, int left, int top, int right, int bottom) {
    layer.FilledBox(static_cast<Single>(left), static_cast<Single>(top), static_cast<Single>(right - 1),
                    static_cast<Single>(bottom - 1), kBlack);
    layer.Refresh();
  };
  document.BufferSelected.Move(20, 10, 10, 10);
  document.BufferSelected.SetBackColor(kWhite);
  document.SelectArea.SetVisible(true);
  fill(document.Buffer, 22, 0, 25, 40);
  fill(document.BufferSelected, 8, 3, 9, 4);
  RefreshPaintArea(document.Buffer);
  picture_gets(22, 0, 25, 40, kInk), picture_gets(20, 10, 30, 20, kBackInk),
      picture_gets(28, 13, 29, 14, kInk);
  Expect("drawn on and beneath at once");
  document.BufferSelected.SetLeft(25);
  RefreshPaintArea(document.Buffer);
  picture_gets(25, 10, 35, 20, kBackInk), picture_gets(33, 13, 34, 14, kInk);
  Expect("moved");
  document.SelectArea.SetVisible(false);
  fill(document.Buffer, 0, 0, 60, 40);
  RefreshPaintArea(document.Buffer);
  document.SelectArea.SetVisible(true);
  RefreshPaintArea(document.Buffer);
  picture_gets(0, 0, 60, 40, kInk), picture_gets(25, 10, 35, 20, kBackInk),
      picture_gets(33, 13, 34, 14, kInk);
  Expect("shown again where it was");
}

TEST_F(Painting, UndoExchangesAndOnlyButtonsOneAndTwoTakeASnapshot) {
  Open();
  const QImage before = expected_;
  Drag(5, 5, 15, 5);
  for (int x = 5; x <= 15; ++x) expected_.setPixel(x, 5, kInk);
  const QImage after = expected_;
  Press(30, 30, Qt::MiddleButton);
  MoveTo(40, 30, Qt::MiddleButton);
  Expect("no stroke by the middle button");
  Undo_Click();
  expected_ = before;
  Expect("undone");
  Undo_Click();
  expected_ = after;
  Expect("taken back in");
}

TEST_F(Painting, TheReadOutsTellThePixelUnderThePointer) {
  Open();
  Press(10, 20);
  MoveTo(25, 32);
  EXPECT_EQ(ReadOuts->lblCoords.Caption(), "25, 32");
  EXPECT_EQ(ReadOuts->lblArea.Caption(), "15 x 12");
  Release(25, 32);
  ZoomTo(4);
  MoveTo(43, 83, Qt::NoButton);
  EXPECT_EQ(ReadOuts->lblCoords.Caption(), "10, 20");
  MoveTo(-5, -9, Qt::NoButton);
  EXPECT_EQ(ReadOuts->lblCoords.Caption(), "-2, -3");
}

TEST_F(Painting, TheMagnifyingToolZoomsWithoutMarkingAChange) {
  Open();
  SelectTool(kMagnifyingTool);
  for (int step = 2; step <= 9; ++step) Click(5, 5);
  EXPECT_EQ(Document().Zoom, 800);
  EXPECT_EQ(frmControls->comboZoom.ListIndex(), 7);
  EXPECT_EQ(Document().PaintArea.Width(), 60 * 8 + 2);
  for (int step = 0; step < 8; ++step) Click(5, 5, Qt::RightButton);
  EXPECT_EQ(Document().Zoom, 100);
  EXPECT_FALSE(Document().Dirty);
  Expect("nothing painted");
}

TEST_F(Painting, TheZoomBoxZoomsWhateverToolIsChosenAndNeverPaints) {
  Open();
  ZoomTo(5);
  EXPECT_FALSE(Document().Dirty);
  EXPECT_EQ(Document().Caption(), PathOf("paper.png") + " - 500%");
  Expect("nothing painted");
}

TEST_F(Painting, TheClickedFractionBecomesTheFractionOfTheScrollRange) {
  Open(2000, 1500);
  SelectTool(kMagnifyingTool);
  Click(1000, 375);
  const frmPaint& document = Document();
  EXPECT_EQ(document.HScroll1.Max(), 4002 - document.Back.Width());
  EXPECT_NEAR(document.HScroll1.Value(), document.HScroll1.Max() / 2.0, 2);
  EXPECT_NEAR(document.VScroll1.Value(), document.VScroll1.Max() / 4.0, 2);
  EXPECT_EQ(document.PaintArea.Left(), -document.HScroll1.Value());
  Click(0, 0, Qt::RightButton);
  EXPECT_EQ(document.HScroll1.Value(), 0);
  EXPECT_EQ(document.PaintArea.Left(), 0);
}

TEST_F(Painting, ASmallPictureIsCentredAtEveryZoomThatFits) {
  Open(20, 20);
  frmPaint& document = Document();
  document.SetWidth(300 * 15);
  document.SetHeight(300 * 15);
  for (int multiple : {1, 4, 2}) {
    ZoomTo(multiple);
    EXPECT_EQ(document.HScroll1.Max(), 0);
    EXPECT_EQ(document.PaintArea.Left(),
              RoundHalfEven((document.Back.Width() - document.PaintArea.Width()) / 2));
    EXPECT_EQ(document.PaintArea.Top(),
              RoundHalfEven((document.Back.Height() - document.PaintArea.Height()) / 2));
  }
}

TEST_F(Painting, TheViewFillsTheWindowInEveryState) {
  Open(2000, 1500);
  frmPaint& document = Document();
  const auto expect_filled = [&](const char* state) {
    QApplication::processEvents();
    EXPECT_EQ(document.Back.Width() + document.VScroll1.Width(), document.ScaleWidth()) << state;
    EXPECT_EQ(document.Back.Height() + document.HScroll1.Height(), document.ScaleHeight()) << state;
    return document.ScaleWidth();
  };
  const Single normal = expect_filled("normal");
  document.SetWidth(3000);
  EXPECT_LT(expect_filled("narrow"), normal);
  document.SetWindowState(kMaximised);
  EXPECT_GE(expect_filled("maximised"), normal);
  document.SetWindowState(kMinimised);
  document.SetWindowState(kNormal);
  EXPECT_EQ(expect_filled("normal again"), 200);
}

TEST_F(Painting, TheScreenShowsThePixelOfTheUnitAfterScrollingAndPainting) {
  Open(300, 200);
  ZoomTo(3);
  frmPaint& document = Document();
  document.HScroll1.SetValue(101);
  document.VScroll1.SetValue(50);
  Drag(310, 160, 400, 200);
  QApplication::processEvents();
  const QImage shown = document.Back.Widget()->grab().toImage();
  const QImage picture = Picture(document.Buffer);
  const int left = static_cast<int>(document.PaintArea.Left()) + 1,
            top = static_cast<int>(document.PaintArea.Top()) + 1;
  for (int y = 0; y < shown.height(); ++y)
    for (int x = 0; x < shown.width(); ++x) {
      const QPoint unit(x - left, y - top);
      if (unit.x() < 0 || unit.y() < 0 || unit.x() >= 900 || unit.y() >= 600) continue;
      ASSERT_EQ(shown.pixel(x, y), picture.pixel(unit.x() / 3, unit.y() / 3)) << x << ", " << y;
    }
}
