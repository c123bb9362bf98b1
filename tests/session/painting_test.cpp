#include <QApplication>
#include <QPainter>
#include <QScrollBar>
#include <QTest>
#include <QWidget>

#include "document/layers/ReadOuts.h"
#include "imageops/Undo.h"
#include "session/Session.h"
#include "tools/OptionBars.h"
#include "tools/SelectTool.h"

using namespace zelvane;

namespace {

constexpr Pixel kPaper = 0xFF80C0E0, kInk = 0xFF000000, kBackInk = 0xFFFFFFFF;

class Painting : public Session {
 protected:
  /// A plain picture in the active document, with the Pen chosen.
  void Open(int width = 60, int height = 40) {
    expected_ = QImage(width, height, QImage::Format_RGB32);
    expected_.fill(kPaper);
    Start(MakePicture("paper.png", expected_));
    SelectTool(kPenTool);
  }
  void Expect(const char* what) {
    const QRect other = Difference(Picture(Document().Buffer), expected_);
    EXPECT_TRUE(other.isEmpty()) << what << ": differs from " << other.x() << ", " << other.y();
  }
  /// The picture should have these pixels now.
  void Gets(const QRect& pixels, Pixel pixel = kInk) {
    QPainter(&expected_).fillRect(pixels, QColor::fromRgb(pixel));
  }
  static QImage View() { return Document().PaintArea.Widget()->grab().toImage(); }
  static QPoint Scrolled() { return {Document().HScroll1.Value(), Document().VScroll1.Value()}; }
  /// A white selection of 10 by 10 at (20, 10).
  void Float() {
    Document().BufferSelected.Move(20, 10, 10, 10);
    Document().BufferSelected.SetBackColor(kWhite);
    Document().SelectArea.SetVisible(true);
    Gets({20, 10, 10, 10}, kBackInk);
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
  Drag(-300, 320, 9000, 320);
  Gets({0, 40, 60, 1});
  Drag(-32000, -32000, -31000, -32000);
  Expect("clipped");
}

TEST_F(Painting, PositionsRoundHalvesToEven) {
  Open();
  const std::tuple<int, Single, int> cases[] = {{1, 10.0F, 10}, {1, 11.0F, 10}, {1, 11.1F, 11},
                                                {2, 21.0F, 10}, {2, 22.0F, 10}, {2, 22.2F, 11}};
  for (const auto& [zoom, x, column] : cases) {
    ZoomTo(zoom);
    Document().PaintArea.OnMouseDown(kLeftButton, 0, x, static_cast<Single>(zoom));
    Document().PaintArea.OnMouseUp(kLeftButton, 0, x, static_cast<Single>(zoom));
    EXPECT_EQ(Document().Buffer.Point(column, 0), kBlack) << x << " at " << zoom;
    Undo_Click();
  }
}

TEST_F(Painting, TheWheelScrollsAndWithCtrlZoomsAtThePointerButNotDuringAStroke) {
  Open(2000, 1500);
  frmPaint& document = Document();
  const auto wheel = [&](int16_t shift, Single notches, Single x = 100, Single y = 100) {
    document.PaintArea.OnMouseWheel(shift, x, y, 0, notches);
    return Scrolled();
  };
  EXPECT_GT(wheel(0, -2).y(), 0);
  EXPECT_EQ(wheel(0, 50).y(), 0);
  EXPECT_GT(wheel(kShift, -1).x(), 0);
  document.HScroll1.SetValue(600), document.VScroll1.SetValue(400);
  const auto under_pointer = [&] {
    return QPoint(static_cast<int>(333 - document.PaintArea.Left()) / document.ZoomMultiple(),
                  static_cast<int>(222 - document.PaintArea.Top()) / document.ZoomMultiple());
  };
  const QPoint pixel = under_pointer();
  for (int step = 1; step < 15; ++step) {
    wheel(kCtrl, step < 8 ? 1 : -1, 333.49F - document.PaintArea.Left(), 222.49F - document.PaintArea.Top());
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
  const auto key = [&](Qt::Key code) {
    QTest::keyClick(Document().PaintArea.Widget(), code);
    return Scrolled();
  };
  EXPECT_EQ(key(Qt::Key_End), QPoint(Document().HScroll1.Max(), Document().VScroll1.Max()));
  EXPECT_EQ(key(Qt::Key_Home), QPoint());
  EXPECT_EQ(key(Qt::Key_PageDown).y(), Document().Back.Height());
  EXPECT_EQ(key(Qt::Key_PageUp), QPoint());
  EXPECT_GT(key(Qt::Key_Right).x(), 0);
  EXPECT_GT(key(Qt::Key_Down).y(), 0);
  EXPECT_EQ(key(Qt::Key_Left).x(), 0);
  EXPECT_EQ(key(Qt::Key_Up), QPoint());
  Click(5, 5);
  Press(300, 200, Qt::MiddleButton);
  MoveTo(190, 130, Qt::MiddleButton);
  EXPECT_EQ(Scrolled(), QPoint(110, 70));
  MoveTo(310, 250, Qt::MiddleButton);
  EXPECT_EQ(Scrolled(), QPoint(100, 20)) << "the unit that was grabbed is under the pointer";
  Release(310, 250, Qt::MiddleButton);
  MoveTo(200, 100, Qt::NoButton);
  EXPECT_EQ(Scrolled(), QPoint(100, 20));
  EXPECT_EQ(State.PointerButton, kNoButton);
  Undo_Click();
  Expect("the click alone has painted, and is what comes to be undone");
}

TEST_F(Painting, AStrokeBeyondTheEdgeScrollsWhileThereIsPictureLeft) {
  Open(1500, 1200);
  const int row = 100, start = static_cast<int>(Document().Back.Width()) - 20;
  Press(start, row);
  MoveTo(start + 120, row);
  EXPECT_TRUE(QTest::qWaitFor([] { return Scrolled() == QPoint(Document().HScroll1.Max(), 0); }));
  Release(1499, row);
  Gets({start, row, 1500 - start, 1});
  Expect("painted along");
}

TEST_F(Painting, TheOutlineOfABrushFollowsTheZoomAndItsSizeAtOnce) {
  Open();
  SelectTool(kEraserTool);
  MoveTo(40, 30, Qt::NoButton);
  const auto& outline = Document().BrushOutline;
  EXPECT_EQ(PlaceOf(outline), QRect(38, 28, 5, 5));
  ZoomTo(3);
  EXPECT_EQ(outline.Width(), 15);
  frmControls->pixelSelector[kEraserWidth].SetValue(9);
  EXPECT_EQ(outline.Width(), 27);
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(Document().PaintArea.Widget(), &leave);
  frmControls->pixelSelector[kEraserWidth].SetValue(20);
  EXPECT_FALSE(outline.Visible());
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

TEST_F(Painting, APenPaintsIntoTheFloatingSelectionAtItsPlace) {
  Open();
  Float();
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
  Gets({22, 0, 3, 40});
  Float();
  PictureSurface &picture = Document().Buffer, &selection = Document().BufferSelected;
  const auto blacken = [](PictureSurface& layer, float left, float top, float right, float bottom) {
    layer.FilledBox(left, top, right, bottom, kBlack);
    layer.Refresh();
  };
  const auto expect = [&](const char* what) {
    RefreshPaintArea(picture);
    Expect(what);
  };
  blacken(picture, 22, 0, 24, 39);
  blacken(selection, 8, 3, 8, 3);
  Gets({28, 13, 1, 1});
  expect("new");
  blacken(picture, 0, 12, 59, 12);
  blacken(selection, 1, 7, 1, 7);
  Gets({0, 12, 20, 1}), Gets({30, 12, 30, 1}), Gets({21, 17, 1, 1});
  expect("drawn on and beneath at once");
  const auto gets_at_40 = [&] {
    Gets({40, 10, 10, 10}, kBackInk), Gets({48, 13, 1, 1}), Gets({41, 17, 1, 1});
  };
  selection.SetLeft(40);
  gets_at_40();
  expect("moved");
  Document().SelectArea.SetVisible(false);
  blacken(picture, 0, 0, 59, 39);
  RefreshPaintArea(picture);
  Document().SelectArea.SetVisible(true);
  Gets({0, 0, 60, 40}), gets_at_40();
  expect("shown again where it was");
}

TEST_F(Painting, TheReadOutsTellThePixelUnderThePointer) {
  Open();
  Press(10, 20);
  MoveTo(25, 32);
  EXPECT_EQ(ReadOuts->lblArea.Caption(), "15 x 12");
  Release(25, 32);
  ZoomTo(4);
  MoveTo(-5, -9, Qt::NoButton);
  EXPECT_EQ(ReadOuts->lblCoords.Caption(), "-2, -3");
}

TEST_F(Painting, TheMagnifyingToolMakesTheClickedFractionThatOfTheScrollRange) {
  Open(2000, 1500);
  SelectTool(kMagnifyingTool);
  Click(1000, 375);
  const frmPaint& document = Document();
  EXPECT_EQ(document.HScroll1.Max(), 4002 - document.Back.Width());
  EXPECT_EQ(static_cast<QScrollBar*>(document.HScroll1.Widget())->pageStep(), document.Back.Width());
  EXPECT_NEAR(Scrolled().x(), document.HScroll1.Max() / 2.0, 2);
  EXPECT_NEAR(Scrolled().y(), document.VScroll1.Max() / 4.0, 2);
  EXPECT_EQ(document.PaintArea.Left(), -Scrolled().x());
  for (int step = 2; step <= 9; ++step) Click(0, 0);
  EXPECT_EQ(document.Zoom, 800);
  EXPECT_EQ(frmControls->comboZoom.ListIndex(), 7);
  for (int step = 0; step < 8; ++step) Click(0, 0, Qt::RightButton);
  EXPECT_EQ(document.Zoom, 100);
  EXPECT_EQ(document.PaintArea.Left(), 0);
  EXPECT_FALSE(document.Dirty);
}

TEST_F(Painting, ABarKeepsItsRangeWhereThePictureNeedsMoreThanItHas) {
  Open(5000, 10);
  for (int multiple : {6, 8}) {
    ZoomTo(multiple);
    EXPECT_EQ(Document().PaintArea.Width(), 5000 * multiple + 2);
    EXPECT_EQ(Document().HScroll1.Max(), 30002 - Document().Back.Width());
  }
}

TEST_F(Painting, TheViewFillsTheWindowInEveryState) {
  Open(2000, 1500);
  frmPaint& document = Document();
  document.SetWidth(3000);
  for (int16_t state : {kNormal, kMaximised, kMinimised, kNormal}) {
    document.SetWindowState(state);
    QApplication::processEvents();
    if (state == kMinimised) continue;
    EXPECT_EQ(document.Back.Width() + document.VScroll1.Width(), document.ScaleWidth()) << state;
    EXPECT_EQ(document.Back.Height() + document.HScroll1.Height(), document.ScaleHeight()) << state;
  }
  EXPECT_EQ(document.ScaleWidth(), 200);
}
