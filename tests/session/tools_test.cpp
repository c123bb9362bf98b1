#include <QTest>
#include <QWidget>

#include "colour/ColorBars.h"
#include "imageops/Undo.h"
#include "selection/Selection.h"
#include "session/Session.h"
#include "shell/MainForm.h"
#include "surface/forms/windows/Application.h"
#include "tools/NumericOptions.h"
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
  void Open() {
    Start(MakePicture("stripes.png", Stripes()));
    UseColors(kFront, kBack);
  }
  static void UseColors(Color front, Color back) {
    ColorPanel->SelColor[0].SetBackColor(front);
    ColorPanel->SelColor[1].SetBackColor(back);
    SetColorBars();
  }
  static void SetNumber(int entry, double value) {
    frmControls->pixelSelector[entry].SetValue(value);
    ASSERT_EQ(State.OptionTable[static_cast<size_t>(entry)].Value, value);
  }
  /// The picture after a drag of image pixels at the zoom, which is then undone.
  QImage Painted(QPoint from, QPoint to, Qt::MouseButton button = Qt::LeftButton, int zoom = 1) {
    frmControls->comboZoom.SetListIndex(zoom - 1);
    Drag(from.x() * zoom, from.y() * zoom, to.x() * zoom, to.y() * zoom, button);
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

/// Pixels that differ.
QRect Difference(const QImage& a, const QImage& b) {
  QRect found;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      if (a.pixel(x, y) != b.pixel(x, y)) found |= QRect(x, y, 1, 1);
  return found;
}

}  // namespace

/// But for the gradient, which starts at the press's fraction of a pixel.
TEST_F(Tools, ZoomDoesNotChangeWhatIsPainted) {
  Open();
  for (int tool : kPainting) {
    if (tool == kGradientTool) continue;
    SelectTool(static_cast<int16_t>(tool));
    const QImage at_100 = Painted({20, 15}, {55, 48});
    EXPECT_FALSE(Difference(at_100, Stripes()).isEmpty()) << "tool " << tool;
    for (int zoom : {2, 3, 8})
      EXPECT_EQ(Difference(at_100, Painted({20, 15}, {55, 48}, Qt::LeftButton, zoom)), QRect())
          << "tool " << tool << " at " << zoom << "00%";
  }
}

TEST_F(Tools, TheRightButtonPaintsWithTheColoursExchanged) {
  Open();
  SelectOption(1);
  for (int tool : {kPenTool, kFloodfillTool, kAirbrushTool, kRectangleTool, kCircleTool}) {
    SelectTool(static_cast<int16_t>(tool));
    UseColors(kFront, kBack);
    const QImage left = Painted({12, 20}, {60, 45});
    UseColors(kBack, kFront);
    EXPECT_EQ(Difference(left, Painted({12, 20}, {60, 45}, Qt::RightButton)), QRect()) << "tool " << tool;
  }
}

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
      Select(area);
      const QImage selected = Painted({20, 15}, {50, 38});
      EXPECT_TRUE((area & Difference(selected, Stripes())) == Difference(selected, Stripes()))
          << "tool " << tool;
      // The blur reads black beyond the selection's edge; the others are only cut off there.
      const QRect seen = area & plain.rect();
      if (tool == kBlurTool || seen.isEmpty()) continue;
      EXPECT_EQ(Difference(selected.copy(seen), plain.copy(seen)), QRect()) << "tool " << tool;
    }
}

TEST_F(Tools, StrokesFarOutsideAndOfBothButtonsAreHarmless) {
  Open();
  for (int tool = 0; tool < kToolCount; ++tool) {
    SelectTool(static_cast<int16_t>(tool));
    for (int zoom : {1, 8}) {
      frmControls->comboZoom.SetListIndex(zoom - 1);
      Drag(-5000, -5000, 200000, 200000);
      Drag(200000, 10, -200000, 10, Qt::RightButton);
      Press(10, 10);
      Press(12, 12, Qt::RightButton);
      SelectTool(static_cast<int16_t>((tool + 1) % kToolCount));
      MoveTo(30, 30, Qt::LeftButton | Qt::RightButton);
      SelectTool(static_cast<int16_t>(tool));
      Release(30, 30);
      Release(30, 30, Qt::RightButton);
    }
  }
  EXPECT_EQ(Document().Buffer.ScaleWidth(), 90);
}

TEST_F(Tools, TheEraserPaintsWhiteWithEitherButtonAtItsWidth) {
  Open();
  SelectTool(kEraserTool);
  for (auto button : {Qt::LeftButton, Qt::RightButton}) {
    const QImage erased = Painted({40, 30}, {40, 30}, button);
    EXPECT_EQ(Difference(erased, Stripes()), QRect(38, 28, 5, 5));
    EXPECT_EQ(erased.pixel(40, 30), 0xFFFFFFFFu);
  }
}

TEST_F(Tools, TheFillPaintsEachAreaThatThePointerEnters) {
  Open();
  SelectTool(kFloodfillTool);
  const QImage filled = Painted({5, 5}, {25, 5});
  for (int x = 0; x < 90; ++x)
    EXPECT_EQ(ToColor(filled.pixel(x, 69)),
              x / 10 == 0 || x / 10 == 2 ? kFront : ToColor(Stripes().pixel(x, 69)))
        << x;
  SelectTool(kRectangleTool);
  SelectOption(0);
  Painted({30, 30}, {40, 40});
  SelectTool(kFloodfillTool);
  EXPECT_EQ(Difference(Painted({5, 5}, {5, 5}), Stripes()), QRect()) << "the brush is transparent now";
}

TEST_F(Tools, ABoxIsTheSameInEitherDirectionAndFollowsItsStyle) {
  Open();
  SelectTool(kRectangleTool);
  SelectOption(1);
  SetNumber(5, 3);
  const QImage down = Painted({20, 20}, {60, 50});
  EXPECT_EQ(Difference(down, Painted({60, 50}, {20, 20})), QRect());
  EXPECT_EQ(ToColor(down.pixel(20, 20)), kFront);
  EXPECT_EQ(ToColor(down.pixel(21, 35)), kFront);
  EXPECT_EQ(ToColor(down.pixel(22, 35)), kBack);
  EXPECT_EQ(Difference(down, Stripes()), QRect(19, 19, 43, 33));
  SelectOption(2);
  const QImage filled = Painted({20, 20}, {60, 50});
  EXPECT_EQ(ToColor(filled.pixel(40, 35)), kFront);
  EXPECT_EQ(Difference(filled, Stripes()), QRect(20, 20, 41, 31));
  frmControls->RoundCorners.SetValue(1);
  const QImage rounded = Painted({20, 20}, {60, 50});
  EXPECT_EQ(rounded.pixel(20, 20), Stripes().pixel(20, 20));
  EXPECT_EQ(Difference(rounded, Stripes()), QRect(20, 20, 40, 30));
}

TEST_F(Tools, TheEllipseIsWhatTheOverlayShowedAtTheLastDrag) {
  Open();
  SelectTool(kCircleTool);
  SelectOption(2);
  Press(20, 20);
  MoveTo(60, 50);
  EXPECT_TRUE(Document().DrawCircle.Visible());
  EXPECT_NEAR(Document().DrawCircle.Width(), 40, 0.02);
  Release(80, 65);
  EXPECT_FALSE(Document().DrawCircle.Visible());
  EXPECT_EQ(Difference(Picture(Document().Buffer), Stripes()), QRect(20, 20, 40, 30));
}

TEST_F(Tools, TheGradientRunsFromTheFrontToTheBackColourAndTellsItsAngle) {
  Open();
  SelectTool(kGradientTool);
  Press(20, 30, Qt::RightButton);
  MoveTo(70, 30, Qt::RightButton);
  EXPECT_EQ(frmControls->lblAngle.Caption(), "0 ° ");
  MoveTo(20, 5, Qt::RightButton);
  EXPECT_EQ(frmControls->lblAngle.Caption(), "90 ° ");
  MoveTo(70, 30, Qt::RightButton);
  Release(70, 30, Qt::RightButton);
  EXPECT_EQ(frmControls->lblAngle.Caption(), "N/A");
  const QImage painted = Picture(Document().Buffer);
  EXPECT_EQ(Difference(painted, Stripes()), QRect(19, 0, 53, 70));
  EXPECT_EQ(ToColor(painted.pixel(19, 40)), kFront);
  EXPECT_EQ(ToColor(painted.pixel(71, 40)), kBack);
  // The first line runs from corner to corner here, with an end in the picture: three wide as well.
  EXPECT_EQ(ToColor(Painted({0, 0}, {28, -36}).pixel(46, 37)), kFront);
}

TEST_F(Tools, APressOnTheSliderPutsAPartOfItsHandleUnderThePointer) {
  Open();
  SelectTool(kPenTool);
  ClickOn(frmControls->CmdDropDown[kPenWidth]);
  const auto handle_after = [](const Control& pressed, int x) {
    QTest::mousePress(pressed.Widget(), Qt::LeftButton, {}, QPoint(x, 3));
    QTest::mouseRelease(pressed.Widget(), Qt::LeftButton, {}, QPoint(x, 3));
    return frmSelector->ScrollBlock.Left();
  };
  const Single quarter = 2.5F, half = 5;  // of its width of 10; the window has a frame of 1
  EXPECT_EQ(handle_after(frmSelector->Window, 61), RoundHalfEven(60.49F - quarter));
  EXPECT_EQ(handle_after(frmSelector->ScrollBar, 40),
            RoundHalfEven(frmSelector->ScrollBar.Left() + 40.49F - half));
  EXPECT_EQ(handle_after(frmSelector->ScrollBlock, 7), 43) << "a press on the handle moves nothing";
}

TEST_F(Tools, TheEyedropperTakesColoursWithinThePicture) {
  Open();
  SelectTool(kEyedropperTool);
  MoveTo(15, 5, Qt::NoButton);
  EXPECT_EQ(frmControls->ColorPick.BackColor(), RGB(0x40, 0x60, 0xA0));
  EXPECT_EQ(frmControls->lblRed.Caption(), "64");
  Drag(15, 5, 5, 5);
  EXPECT_EQ(ColorPanel->SelColor[0].BackColor(), RGB(0xC0, 0xB0, 0x80));
  EXPECT_EQ(Document().Buffer.ForeColor(), RGB(0xC0, 0xB0, 0x80));
  Press(15, 5, Qt::RightButton);
  MoveTo(-3, 5, Qt::RightButton);
  Release(95, 5, Qt::RightButton);
  EXPECT_EQ(ColorPanel->SelColor[1].BackColor(), RGB(0x40, 0x60, 0xA0));
  EXPECT_EQ(Difference(Picture(Document().Buffer), Stripes()), QRect());
}

TEST_F(Tools, ClearWipesAndCanBeUndone) {
  Open();
  Document().SetDirtyFalse();
  SelectTool(kEraserTool);
  ClickOn(frmControls->clearButton);
  EXPECT_EQ(Document().Buffer.Point(45, 35), Document().Buffer.Point(0, 0));
  EXPECT_FALSE(Document().Dirty);
  Undo_Click();
  EXPECT_EQ(Difference(Picture(Document().Buffer), Stripes()), QRect());
}

TEST_F(Tools, ATypedNumberCountsAtOnceAndItsLimitsWhenTheBoxIsLeft) {
  Open();
  SelectTool(kPenTool);
  NumberBox& box = frmControls->pixelSelector[4];
  Type(box, "250");
  EXPECT_EQ(State.OptionTable[4].Value, 250);
  Document().PaintArea.SetFocus();
  DoEvents();
  EXPECT_EQ(State.OptionTable[4].Value, 100);
  Type(box, "0");
  EXPECT_EQ(State.OptionTable[4].Value, 0);
  Drag(10, 10, 30, 10);
  Document().PaintArea.SetFocus();
  EXPECT_EQ(State.OptionTable[4].Value, 1);
  Type(box, "a-1.2.x7");
  EXPECT_EQ(State.OptionTable[4].Value, 127);
}

TEST_F(Tools, TheSliderReachesBothLimitsAndClosesWithTheTool) {
  Open();
  SelectTool(kAirbrushTool);
  for (int entry : {2, 0}) {
    ClickOn(frmControls->CmdDropDown[entry]);
    ASSERT_TRUE(frmSelector->Window.Visible());
    EXPECT_EQ(frmControls->OpenSelector, entry);
    QWidget* track = frmSelector->ScrollBar.Widget();
    const auto drag = [&](int x) {
      QTest::mousePress(track, Qt::LeftButton, {}, QPoint(track->width() / 2, 2));
      QTest::mouseMove(track, QPoint(x, 2));
      QTest::mouseRelease(track, Qt::LeftButton, {}, QPoint(x, 2));
    };
    const ToolOption& option = State.OptionTable[static_cast<size_t>(entry)];
    drag(-4000);
    EXPECT_EQ(option.Value, option.Min);
    drag(4000);
    EXPECT_EQ(option.Value, option.Max);
    EXPECT_EQ(frmControls->pixelSelector[entry].Value(), option.Max);
    drag(track->width() / 2);
    EXPECT_GT(option.Value, option.Min);
    EXPECT_LT(option.Value, option.Max);
  }
  ClickOn(frmControls->CmdDropDown[0]);
  EXPECT_FALSE(frmSelector->Window.Visible());
  ClickOn(frmControls->CmdDropDown[0]);
  SelectTool(kPenTool);
  EXPECT_FALSE(frmSelector->Window.Visible());
  EXPECT_EQ(frmControls->OpenSelector, -1);
}

TEST_F(Tools, TheStyleIsSharedByBoxAndEllipse) {
  Open();
  SelectTool(kRectangleTool);
  ClickOn(frmControls->Cmd[2]);
  EXPECT_EQ(State.OptionButton, 2);
  SelectTool(kCircleTool);
  ClickOn(frmControls->Cmd2[1]);
  EXPECT_EQ(State.OptionButton, 1);
  EXPECT_TRUE(State.OptionButtonDown[1]);
  EXPECT_FALSE(State.OptionButtonDown[2]);
}
