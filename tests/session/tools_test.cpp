#include <QAbstractItemView>
#include <QComboBox>
#include <QCursor>
#include <QTest>

#include "colour/ColorBars.h"
#include "document/window/MakeDocument.h"
#include "imageops/Undo.h"
#include "selection/Selection.h"
#include "session/Session.h"
#include "tools/EyedropperTool.h"
#include "tools/OptionBars.h"
#include "tools/SelectTool.h"
#include "tools/Selector.h"

using namespace zelvane;

namespace {

constexpr int kPainting[] = {kPenTool,    kFloodfillTool, kGradientTool, kAirbrushTool, kRectangleTool,
                             kCircleTool, kBrightenTool,  kBlurTool,     kEraserTool};
constexpr Color kFront = RGB(200, 30, 60), kBack = RGB(20, 160, 90);

class Tools : public Session {
 protected:
  /// Stripes of several colours, so that every tool leaves a trace.
  static QImage Stripes() {
    QImage picture(90, 70, QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) picture.setPixel(x, y, x / 10 % 2 ? 0xFF4060A0 : 0xFFC0B080);
    return picture;
  }
  static QRect Trace(const QImage& painted) { return Difference(painted, Stripes()); }
  void Open() {
    Start(MakePicture("stripes.png", Stripes()));
    ColorPanel->SelColor[0].SetBackColor(kFront);
    ColorPanel->SelColor[1].SetBackColor(kBack);
    SetColorBars();
  }
  /// The picture after a drag, which is then undone.
  QImage Painted(QPoint from, QPoint to) {
    Drag(from.x(), from.y(), to.x(), to.y());
    const QImage painted = Picture(Document().Buffer);
    Undo_Click();
    return painted;
  }
  /// A floating selection that shows what lies beneath it, and black off the picture.
  static void Select(const QRect& area) {
    const QImage beneath = Stripes().copy(area);
    Bitmap pixels = Bitmap::Uninitialised(area.width(), area.height());
    for (int y = 0; y < area.height(); ++y)
      std::copy_n(reinterpret_cast<const Pixel*>(beneath.constScanLine(y)), area.width(),
                  pixels.WritableRow(y));
    FloatSelection(Document(), std::move(pixels), static_cast<Single>(area.x()),
                   static_cast<Single>(area.y()));
  }
  static void Type(NumberBox& box, const char* keys) {
    auto* entry = box.Entry().Widget();
    entry->setFocus();
    QTest::keyClick(entry, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(entry, keys);
  }
};

}  // namespace

TEST_F(Tools, AFloatingSelectionTakesTheStrokeAndClipsIt) {
  Open();
  SelectOption(1);
  // Within the picture, half off two of its corners, wholly off it.
  for (const QRect area :
       {QRect(15, 10, 41, 33), QRect(-10, -12, 40, 40), QRect(40, 30, 70, 70), QRect(95, 10, 30, 30)})
    for (int tool : kPainting) {
      SelectTool(static_cast<int16_t>(tool));
      DropSelection(Document());
      const QImage plain = Painted({20, 15}, {50, 38});
      EXPECT_NE(Trace(plain), QRect()) << "tool " << tool;
      Select(area);
      const QImage selected = Painted({20, 15}, {50, 38});
      EXPECT_EQ(area & Trace(selected), Trace(selected)) << "tool " << tool;
      // The blur reads black beyond the selection's edge; the others are only cut off there.
      const QRect seen = area & plain.rect();
      if (tool == kBlurTool || seen.isEmpty()) continue;
      EXPECT_EQ(Difference(selected.copy(seen), plain.copy(seen)), QRect()) << "tool " << tool;
    }
}

TEST_F(Tools, TheFillPaintsEachAreaThatThePointerEnters) {
  Open();
  SelectTool(kFloodfillTool);
  const QImage filled = Painted({5, 5}, {25, 5});
  for (int x = 0; x < 90; ++x) {
    const bool is_entered = x / 10 == 0 || x / 10 == 2;
    EXPECT_EQ(ToColor(filled.pixel(x, 69)), is_entered ? kFront : ToColor(Stripes().pixel(x, 69))) << x;
  }
  SelectTool(kRectangleTool);
  SelectOption(0);
  Painted({30, 30}, {40, 40});
  SelectTool(kFloodfillTool);
  EXPECT_EQ(Trace(Painted({5, 5}, {5, 5})), QRect()) << "the brush is transparent now";
}

TEST_F(Tools, ClearingFillsThePictureAndMarksNothing) {
  Open();
  SelectTool(kEraserTool);
  ClickOn(frmControls->clearButton);
  EXPECT_EQ(Document().Buffer.Point(45, 35), ToColor(ToPixel(Document().Buffer.BackColor())));
  EXPECT_FALSE(Document().Dirty);
  Undo_Click();
  EXPECT_EQ(Trace(Picture(Document().Buffer)), QRect());
}

TEST_F(Tools, TheGradientRunsFromTheFrontToTheBackColourAndTellsItsAngle) {
  Open();
  SelectTool(kGradientTool);
  Press(20, 30, Qt::RightButton);
  MoveTo(20, 5, Qt::RightButton);
  EXPECT_EQ(frmControls->lblAngle.Caption(), "90 ° ");
  MoveTo(70, 30, Qt::RightButton);
  EXPECT_EQ(frmControls->lblAngle.Caption(), "0 ° ");
  Release(70, 30, Qt::RightButton);
  EXPECT_EQ(frmControls->lblAngle.Caption(), "N/A");
  const QImage painted = Picture(Document().Buffer);
  EXPECT_EQ(Trace(painted), QRect(19, 0, 53, 70));
  EXPECT_EQ(ToColor(painted.pixel(19, 40)), kFront);
  EXPECT_EQ(ToColor(painted.pixel(71, 40)), kBack);
  Undo_Click();
  // From corner to corner the line ends in the picture; it is three wide there as well.
  const QImage below = Painted({0, 0}, {-70, 90});
  EXPECT_EQ(ToColor(below.pixel(46, 34)), kFront) << "1.4 pixels from its middle";
  EXPECT_EQ(below.pixel(46, 33), Stripes().pixel(46, 33)) << "2.2 pixels from its middle";
}

TEST_F(Tools, TheEyedropperTakesColoursWithinThePicture) {
  Open();
  SelectTool(kEyedropperTool);
  MoveTo(15, 5, Qt::NoButton);
  EXPECT_EQ(frmControls->ColorPick.BackColor(), RGB(0x40, 0x60, 0xA0));
  ShowPixelInfo(Document().Buffer, 5.4F, 69.4F);
  for (const auto& [x, y] : {std::pair{89.5F, 5.0F}, {15.0F, 69.5F}, {-0.1F, 5.0F}, {15.0F, -0.1F}})
    ShowPixelInfo(Document().Buffer, x, y);
  EXPECT_EQ(frmControls->lblRed.Caption(), "192") << "beyond the picture the last colour stays";
  Click(5, 5);
  EXPECT_EQ(Document().Buffer.ForeColor(), RGB(0xC0, 0xB0, 0x80));
  Press(15, 5, Qt::RightButton);
  MoveTo(-3, 5, Qt::RightButton);
  Release(95, 5, Qt::RightButton);
  EXPECT_EQ(ColorPanel->SelColor[1].BackColor(), RGB(0x40, 0x60, 0xA0));
}

TEST_F(Tools, TheEllipseIsWhatTheOverlayShowedAtTheLastDrag) {
  Open();
  SelectTool(kCircleTool);
  SelectOption(2);
  const ShapeOverlay& box = Document().DrawCircle;
  Press(20, 20);
  MoveTo(60, 50);
  EXPECT_TRUE(box.Visible());
  EXPECT_EQ(PlaceOf(box), QRect(20, 20, 40, 30));
  Release(80, 65);
  EXPECT_FALSE(box.Visible());
  EXPECT_EQ(Trace(Picture(Document().Buffer)), QRect(20, 20, 40, 30));
  // 5,000 pixels are 40,000 units, beyond 16 bits: only the side that needs them stays as it was.
  ZoomTo(8);
  Press(80, 80);
  MoveTo(160, 160);
  MoveTo(40000, 320);
  EXPECT_EQ(PlaceOf(box), QRect(76, 76, 84, 244));
  MoveTo(-40000, 0);
  EXPECT_EQ(PlaceOf(box), QRect(76, 0, 84, 76));
  Release(0, 0);
}

TEST_F(Tools, TheZoomBoxActsOnTheEntryThatItShows) {
  Open();
  ZoomTo(3);
  Document().Zoom = 100;
  ZoomTo(3);
  EXPECT_EQ(Document().Zoom, 100) << "the program has chosen nothing new";
  auto* list = qobject_cast<QComboBox*>(frmControls->comboZoom.Widget());
  list->showPopup();
  QTest::keyClick(list->view(), Qt::Key_Return);
  EXPECT_EQ(Document().Zoom, 300);
  frmPaint& first = Document();
  MakeDocument(9, 9, kWhite, {"second", ""});
  EXPECT_EQ(frmControls->comboZoom.ListIndex(), 0) << "the zoom of the active document";
  first.Activate();
  EXPECT_EQ(frmControls->comboZoom.ListIndex(), 2);
}

TEST_F(Tools, TheSliderHoldsItsHandleAndReachesBothLimits) {
  Open();
  SelectTool(kAirbrushTool);
  const ToolOption& option = OptionOf(kAirbrushSize);
  ClickOn(frmControls->CmdDropDown[kAirbrushSize]);
  const auto drag = [](const PictureSurface& on, int from, int to) {
    QTest::mousePress(on.Widget(), Qt::LeftButton, {}, QPoint(from, 3));
    QTest::mouseMove(on.Widget(), QPoint(to, 3));
    QTest::mouseRelease(on.Widget(), Qt::LeftButton, {}, QPoint(to, 3));
    return frmSelector->ScrollBlock.Left();
  };
  const Single left = frmSelector->ScrollBar.Left();
  EXPECT_EQ(drag(frmSelector->ScrollBar, 9, 57), left + 55) << "a quarter of 10 pixels before the pointer";
  EXPECT_EQ(drag(frmSelector->Window, 9, 41), 38) << "behind the frame";
  EXPECT_EQ(drag(frmSelector->ScrollBlock, 7, 7), 38);
  EXPECT_GT(option.Value, option.Min);
  EXPECT_NE(option.Value, frmControls->pixelSelector[kAirbrushSize].Value()) << "the slider has fractions";
  drag(frmSelector->ScrollBar, 20, -4000);
  EXPECT_EQ(option.Value, 1);
  drag(frmSelector->ScrollBar, 20, 4000);
  EXPECT_EQ(option.Value, 100);
  EXPECT_EQ(frmControls->pixelSelector[kAirbrushSize].Value(), 100);
  const PictureSurface& button = frmControls->CmdDropDown[kAirbrushPressure];
  ClickOn(button);
  EXPECT_EQ(frmControls->OpenSelector, kAirbrushPressure);
  EXPECT_EQ(frmSelector->Window.Left(), button.Left() + button.Width() + 16 - 132);
  frmControls->CmdDropDown[kAirbrushSize].SetLeft(0);
  ClickOn(frmControls->CmdDropDown[kAirbrushSize]);
  EXPECT_EQ(frmSelector->Window.Left(), 62) << "four pixels over the left bar";
}

TEST_F(Tools, TheSliderClosesForAllButItsNumberWhoseLimitsCountOnceItIsLeft) {
  Open();
  SelectTool(kPenTool);
  const auto toggle = [] { ClickOn(frmControls->CmdDropDown[kPenWidth]); };
  toggle();
  const Single handle = frmSelector->ScrollBlock.Left();
  NumberBox& box = frmControls->pixelSelector[kPenWidth];
  for (const auto& [text, number] : {std::pair{"0", 0}, {"250", 250}}) {
    Type(box, text);
    EXPECT_EQ(OptionOf(kPenWidth).Value, number);
  }
  EXPECT_TRUE(frmSelector->Window.Visible());
  EXPECT_GT(frmSelector->ScrollBlock.Left(), handle);
  QTest::keyClick(box.Entry().Widget(), Qt::Key_Return);
  EXPECT_TRUE(Document().PaintArea.HasFocus());
  EXPECT_EQ(OptionOf(kPenWidth).Value, 100);
  const auto key = [](Qt::Key code) {
    QTest::keyClick(frmSelector->ScrollBlock.Widget(), code);
    EXPECT_TRUE(Document().PaintArea.HasFocus());
  };
  const std::function<void()> ways[] = {toggle, [] { Document().PaintArea.SetFocus(); },
                                        [&] { key(Qt::Key_Escape); }, [&] { key(Qt::Key_Return); },
                                        [] { SelectTool(kEraserTool); }};
  for (const auto& close : ways) {
    toggle();
    ASSERT_TRUE(frmSelector->Window.Visible());
    close();
    EXPECT_FALSE(frmSelector->Window.Visible());
    EXPECT_FALSE(frmControls->DropDownDown[kPenWidth]);
    EXPECT_EQ(frmControls->OpenSelector, -1);
  }
}

TEST_F(Tools, BarsShareTheirStyleAndShowItWhenTheyComeUp) {
  Open();
  const auto pressed = [](auto& buttons) {
    int sum = 0;
    for (int i = 0; i < 3; ++i)
      sum += buttons[i].Point(0, 0) == ToColor(ToPixel(SystemColor::ButtonShadow)) ? 1 << i : 0;
    return sum;
  };
  SelectTool(kRectangleTool);
  ClickOn(frmControls->Cmd[1]);
  SelectTool(kCircleTool);
  EXPECT_EQ(pressed(frmControls->Cmd2), 2);
  ClickOn(frmControls->Cmd2[2]);
  EXPECT_EQ(State.OptionButton, 2);
  SelectTool(kRectangleTool);
  EXPECT_EQ(pressed(frmControls->Cmd), 4);
}
