#include <QApplication>
#include <QPainter>
#include <QScrollBar>
#include <QTest>
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
  /// The picture should have these pixels now.
  void Gets(const QRect& pixels, Pixel pixel = kInk) {
    QPainter(&expected_).fillRect(pixels, QColor::fromRgb(pixel));
  }
  QImage View() { return Document().PaintArea.Widget()->grab().toImage(); }
  /// A white selection of 10 by 10 at (20, 10).
  void Float() {
    Document().BufferSelected.Move(20, 10, 10, 10);
    Document().BufferSelected.SetBackColor(kWhite);
    Document().SelectArea.SetVisible(true);
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
    Gets({10, row, 1, 3});
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

TEST_F(Painting, TheWheelScrollsAndWithCtrlZoomsAtThePointerButNotDuringAStroke) {
  Open(2000, 1500);
  frmPaint& document = Document();
  const auto wheel = [&](int16_t shift, Single notches, Single x = 100, Single y = 100) {
    document.PaintArea.OnMouseWheel(shift, x, y, 0, notches);
  };
  wheel(0, -2);
  EXPECT_GT(document.VScroll1.Value(), 0);
  wheel(0, 50);
  EXPECT_EQ(document.VScroll1.Value(), 0);
  wheel(kShift, -1);
  EXPECT_GT(document.HScroll1.Value(), 0);
  document.HScroll1.SetValue(600), document.VScroll1.SetValue(400);
  const auto under_pointer = [&] {
    return QPoint(static_cast<int>(333 - document.PaintArea.Left()) / document.ZoomMultiple(),
                  static_cast<int>(222 - document.PaintArea.Top()) / document.ZoomMultiple());
  };
  const QPoint pixel = under_pointer();
  for (int step = 1; step < 15; ++step) {
    const Single x = 333.49F - document.PaintArea.Left(), y = 222.49F - document.PaintArea.Top();
    wheel(kCtrl, step < 8 ? 1 : -1, x, y);
    EXPECT_EQ(document.Zoom, 100 * (step < 8 ? step + 1 : 15 - step));
    EXPECT_EQ(under_pointer(), pixel) << step;
  }
  Press(10, 10);
  wheel(kCtrl, 1);
  EXPECT_EQ(document.Zoom, 100);
  Release(10, 10);
}

TEST_F(Painting, KeysAndTheMiddleButtonMoveTheViewAndNeverPaint) {
  Open(2000, 1500);
  frmPaint& document = Document();
  const auto place = [&] { return QPoint(document.HScroll1.Value(), document.VScroll1.Value()); };
  const QPoint last(document.HScroll1.Max(), document.VScroll1.Max());
  const auto key = [&](Qt::Key code) {
    QTest::keyClick(document.PaintArea.Widget(), code);
    return place();
  };
  EXPECT_EQ(key(Qt::Key_End), last);
  EXPECT_EQ(key(Qt::Key_Home), QPoint(0, 0));
  EXPECT_EQ(key(Qt::Key_PageDown).y(), document.Back.Height());
  EXPECT_EQ(key(Qt::Key_PageUp), QPoint(0, 0));
  const QPoint step = key(Qt::Key_Right);
  EXPECT_GT(key(Qt::Key_Down).y(), 0);
  EXPECT_EQ(key(Qt::Key_Left).x(), 0);
  EXPECT_EQ(key(Qt::Key_Up), step - step);
  Press(300, 200, Qt::MiddleButton);
  MoveTo(190, 130, Qt::MiddleButton);
  EXPECT_EQ(place(), QPoint(110, 70));
  MoveTo(310, 250, Qt::MiddleButton);
  EXPECT_EQ(place(), QPoint(100, 20)) << "the unit that was grabbed is under the pointer";
  Release(310, 250, Qt::MiddleButton);
  MoveTo(200, 100, Qt::NoButton);
  EXPECT_EQ(place(), QPoint(100, 20));
  EXPECT_EQ(State.PointerButton, kNoButton);
  Expect("nothing painted");
}

TEST_F(Painting, AStrokeBeyondTheEdgeScrollsWhileThereIsPictureLeft) {
  Open(1500, 1200);
  frmPaint& document = Document();
  const int row = 100, start = static_cast<int>(document.Back.Width()) - 20;
  Press(start, row);
  MoveTo(start + 120, row);
  EXPECT_TRUE(QTest::qWaitFor([&] { return document.HScroll1.Value() == document.HScroll1.Max(); }));
  Release(1499, row);
  EXPECT_EQ(document.VScroll1.Value(), 0);
  Gets({start, row, 1500 - start, 1});
  Expect("painted along");
}

TEST_F(Painting, TheOutlineOfABrushFollowsTheZoomAndItsSizeAtOnce) {
  Open();
  SelectTool(kEraserTool);
  MoveTo(40, 30, Qt::NoButton);
  const auto& outline = Document().BrushOutline;
  EXPECT_EQ(QRectF(outline.Left(), outline.Top(), outline.Width(), outline.Height()), QRectF(38, 28, 5, 5));
  ZoomTo(3);
  EXPECT_EQ(outline.Width(), 15);
  frmControls->pixelSelector[kEraserWidth].SetValue(9);
  EXPECT_EQ(outline.Width(), 27);
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(Document().PaintArea.Widget(), &leave);
  frmControls->pixelSelector[kEraserWidth].SetValue(20);
  EXPECT_FALSE(outline.Visible());
}

TEST_F(Painting, FreehandJoinsEventsAndTheRightButtonPaintsInTheBackgroundColour) {
  Open();
  Press(5, 5);
  MoveTo(20, 5);
  MoveTo(20, 15);
  Release(20, 15);
  Gets({5, 5, 16, 1}), Gets({20, 5, 1, 11});
  Expect("left button");
  Drag(0, 10, 59, 10, Qt::RightButton);
  Gets({0, 10, 60, 1}, kBackInk);
  Expect("right button");
  EXPECT_TRUE(Document().Dirty);
}

TEST_F(Painting, StrokesBeyondThePictureAreClipped) {
  Open();
  ZoomTo(3);
  Drag(-300, 30, 9000, 30);
  Gets({0, 10, 60, 1});
  Expect("across");
  Drag(-32000, -32000, -31000, -32000);
  Expect("far outside");
}

TEST_F(Painting, ABandCoversExactlyWhatTheReleasePaints) {
  Open();
  SelectOption3(1), SelectOption(0);
  for (int z = 1; z <= 8; ++z) {
    ZoomTo(z);
    const QImage plain = View();
    const auto changed = [&] {
      QImage image = View();
      for (int y = 0; y < plain.height(); ++y)
        for (int x = 0; x < plain.width(); ++x) image.setPixel(x, y, image.pixel(x, y) != plain.pixel(x, y));
      return image;
    };
    for (const auto& [tool, corners] : std::initializer_list<std::pair<int16_t, int16_t>>{
             {kPenTool, 0}, {kRectangleTool, 0}, {kRectangleTool, 1}, {kCircleTool, 0}}) {
      SelectTool(tool);
      frmControls->RoundCorners.SetValue(corners);
      // To every side, from and to every part of a pixel as it is shown.
      for (const QPoint to : {QPoint(55, 31), QPoint(21, 3), QPoint(5, 14), QPoint(30, 15), QPoint(0, 39)}) {
        Press(30 * z + to.x() % z, 15 * z + to.y() % z);
        MoveTo(to.x() * z + to.y() % z, to.y() * z);
        const QImage band = changed();
        Expect("while held");
        Release(to.x() * z + to.y() % z, to.y() * z);
        ASSERT_EQ(band, changed()) << "tool " << tool << " at " << z << " to " << to.x() << ", " << to.y();
        Undo_Click();
      }
    }
  }
}

TEST_F(Painting, AMarqueeRunsAlongTheInsideOfThePixelsThatItLifts) {
  Open();
  SelectTool(kSelectAreaTool);
  const PictureSurface& lifted = Document().BufferSelected;
  for (int z = 1; z <= 8; ++z) {
    ZoomTo(z);
    Click(0, 0);
    const QImage plain = View();
    for (int part = 0; part < z; ++part) {
      Drag(7 * z + part, 20 * z + part, 29 * z + part, 3 * z + part);
      const QImage shown = View();
      QRect covered;
      for (int y = 0; y < plain.height(); ++y)
        for (int x = 0; x < plain.width(); ++x)
          if (shown.pixel(x, y) != plain.pixel(x, y)) covered |= QRect(x - 1, y - 1, 1, 1);
      EXPECT_EQ(covered, QRect(7 * z, 3 * z, 22 * z, 17 * z)) << z << ", " << part;
      EXPECT_EQ(QRectF(lifted.Left(), lifted.Top(), lifted.Width(), lifted.Height()), QRectF(7, 3, 22, 17));
    }
  }
}

TEST_F(Painting, PaintsIntoTheFloatingSelectionAtItsPlace) {
  Open();
  Float();
  Drag(0, 15, 59, 15);
  Gets({20, 10, 10, 10}, kBackInk), Gets({20, 15, 10, 1});
  Expect("clipped to the selection");
  EXPECT_EQ(Document().Undo.ScaleWidth(), 10);
  Undo_Click();
  Gets({20, 15, 10, 1}, kBackInk);
  Expect("undone in the selection");
  Document().Buffer.SetPixelV(25, 12, kBlack);
  RefreshPaintArea(Document().Buffer);
  Expect("merged over what changed beneath");
  // Back at the press the pen makes a dot, and no line to there.
  Press(22, 12);
  for (const QPoint& way : {QPoint(27, 12), {27, 17}, {22, 12}}) MoveTo(way.x(), way.y());
  Release(22, 12);
  Gets({22, 12, 6, 1}), Gets({27, 12, 1, 6});
  Expect("freehand");
  SelectOption3(1);
  Drag(21, 13, 25, 17);
  for (int i = 0; i <= 4; ++i) Gets({21 + i, 13 + i, 1, 1});
  Expect("straight line");
}

TEST_F(Painting, AFloatingSelectionStaysAboveWhateverHappensToThePicture) {
  Open();
  Float();
  frmPaint& document = Document();
  const auto blacken = [](PictureSurface& layer, float left, float top, float right, float bottom) {
    layer.FilledBox(left, top, right, bottom, kBlack);
    layer.Refresh();
  };
  blacken(document.Buffer, 22, 0, 24, 39);
  blacken(document.BufferSelected, 8, 3, 8, 3);
  RefreshPaintArea(document.Buffer);
  Gets({22, 0, 3, 40}), Gets({20, 10, 10, 10}, kBackInk), Gets({28, 13, 1, 1});
  Expect("new");
  blacken(document.Buffer, 0, 12, 59, 12);
  blacken(document.BufferSelected, 1, 7, 1, 7);
  RefreshPaintArea(document.Buffer);
  Gets({0, 12, 20, 1}), Gets({30, 12, 30, 1}), Gets({21, 17, 1, 1});
  Expect("drawn on and beneath at once");
  document.BufferSelected.SetLeft(40);
  RefreshPaintArea(document.Buffer);
  Gets({40, 10, 10, 10}, kBackInk), Gets({48, 13, 1, 1}), Gets({41, 17, 1, 1});
  Expect("moved");
  document.SelectArea.SetVisible(false);
  blacken(document.Buffer, 0, 0, 59, 39);
  RefreshPaintArea(document.Buffer);
  document.SelectArea.SetVisible(true);
  RefreshPaintArea(document.Buffer);
  Gets({0, 0, 60, 40}), Gets({40, 10, 10, 10}, kBackInk), Gets({48, 13, 1, 1}), Gets({41, 17, 1, 1});
  Expect("shown again where it was");
}

TEST_F(Painting, UndoExchangesAndOnlyButtonsOneAndTwoTakeASnapshot) {
  Open();
  const QImage before = expected_;
  Drag(5, 5, 15, 5);
  Gets({5, 5, 11, 1});
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

TEST_F(Painting, TheClickedFractionBecomesTheFractionOfTheScrollRange) {
  Open(2000, 1500);
  SelectTool(kMagnifyingTool);
  Click(1000, 375);
  const frmPaint& document = Document();
  EXPECT_EQ(document.HScroll1.Max(), 4002 - document.Back.Width());
  EXPECT_EQ(static_cast<QScrollBar*>(document.HScroll1.Widget())->pageStep(), document.Back.Width());
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
