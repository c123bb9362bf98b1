#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QWidget>
#include <string>

#include "colour/ColorBars.h"
#include "document/layers/ImageDocument.h"
#include "shell/state/State.h"
#include "surface/forms/windows/Form.h"

namespace zelvane {
namespace {

/// A document that only has its layers.
struct Sheet : ImageDocument {
  void ChangeZoomFactor() override {}
  void Form_Activate() override {}
  void ShowReach() override {}
};

constexpr Color kUntouched{0x123456};

class ColorPanelTest : public testing::Test {
 protected:
  ColorPanelTest() {
    ResetState();
    ColorPanel = std::make_unique<ColorPanelControls>(window_);
    WireColorPanel();
    SetColorBars();
    PaintGradient();
    window_.Show();
    sheet_.Show();
    sheet_.Buffer.SetForeColor(kUntouched);
  }
  ~ColorPanelTest() override {
    ColorPanel.reset();
    DestroyForms();
  }

  static void Send(const Control& to, QEvent::Type type, int x, int y,
                   Qt::MouseButton button = Qt::LeftButton) {
    QWidget* widget = to.Widget();
    const bool moves = type == QEvent::MouseMove, ends = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, QPointF(x, y), widget->mapToGlobal(QPointF(x, y)), moves ? Qt::NoButton : button,
                      ends ? Qt::NoButton : button, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
  }
  static void Press(const Control& on, int x, Qt::MouseButton button = Qt::LeftButton) {
    Send(on, QEvent::MouseButtonPress, x, 2, button);
  }
  static void Drag(const Control& on, int x) { Send(on, QEvent::MouseMove, x, 2); }
  static void Release(const Control& on, int x) { Send(on, QEvent::MouseButtonRelease, x, 2); }
  static void Click(const Control& on) { Press(on, 3), Release(on, 3); }

  static double Number(int channel) { return ColorPanel->lblColor[channel].Value(); }
  static Color Front() { return ColorPanel->SelColor[0].BackColor(); }
  static Color Back() { return ColorPanel->SelColor[1].BackColor(); }
  /// Bars and numbers agree with the selected colour.
  static void ExpectInLine() {
    const Color shown = ColorPanel->SelColor[GetSelectedColor()].BackColor();
    EXPECT_EQ(RGB(static_cast<int>(Number(0)), static_cast<int>(Number(1)), static_cast<int>(Number(2))),
              shown);
    for (int i = 0; i < kChannelCount; ++i)
      EXPECT_EQ(ColorPanel->ColorBar[i].Painted->right,
                RGB(i == 0 ? 255 : Split(shown).red, i == 1 ? 255 : Split(shown).green,
                    i == 2 ? 255 : Split(shown).blue));
  }

  MdiForm& window_ = *new MdiForm("window");
  Sheet& sheet_ = *new Sheet;
};

TEST_F(ColorPanelTest, APressOnABarMovesTheMarkersEdgeThere) {
  RampSurface& bar = ColorPanel->ColorBar[0];
  Press(bar, 10);
  EXPECT_EQ(ColorPanel->ColorScroll[0].Left(), 22);
  EXPECT_EQ(Number(0), 37) << "(10 + 4.5) / 101 * 256";
  Drag(bar, 50);
  EXPECT_EQ(ColorPanel->ColorScroll[0].Left(), 62);
  EXPECT_EQ(Number(0), 138);
  EXPECT_EQ(ColorPanel->Gradient.Painted->left, kBlack) << "the strip waits for the end of the drag";
  Release(bar, 50);
  EXPECT_EQ(ColorPanel->Gradient.Painted->left, RGB(138, 0, 0));
  EXPECT_EQ(Front(), RGB(138, 0, 0));
  Drag(bar, 90);
  EXPECT_EQ(Number(0), 138);
}

TEST_F(ColorPanelTest, TheStripGivesAColourToEitherLabel) {
  const Color middle = ColorPanel->Gradient.Point(30, 5);
  Send(ColorPanel->Gradient, QEvent::MouseButtonPress, 30, 5, Qt::RightButton);
  EXPECT_EQ(Back(), middle);
  EXPECT_EQ(GetSelectedColor(), 1);
  EXPECT_EQ(State.ColorDialogTarget, 1);
  EXPECT_EQ(ColorPanel->Gradient.Point(60, 5), middle);
  ExpectInLine();
  Send(ColorPanel->Gradient, QEvent::MouseButtonPress, 60, 5);
  EXPECT_EQ(Front(), middle);
  EXPECT_EQ(State.ColorDialogTarget, 0);
  EXPECT_EQ(sheet_.Buffer.ForeColor(), kUntouched);
  SelColor_Click(1);
  Gradient_MouseDown(kLeftButton, 500, 5);
  EXPECT_EQ(Front(), middle) << "there is no colour beyond the strip";
}

TEST_F(ColorPanelTest, MarkersShowTheColourWithTheirFractionAndDragToBothEnds) {
  ColorPanel->SelColor[0].SetBackColor(RGB(255, 0, 100));
  SetColorBars();
  EXPECT_EQ(ColorPanel->ColorScroll[0].Left(), 108.5f);
  EXPECT_EQ(ColorPanel->ColorScroll[0].Widget()->x(), 108);
  EXPECT_EQ(ColorPanel->ColorScroll[2].Left(), static_cast<Single>(100 / 255.0 * 101 + 12 - 4.5));
  ExpectInLine();
  MarkerSurface& marker = ColorPanel->ColorScroll[1];
  EXPECT_EQ(marker.Left(), 7.5f);
  Press(marker, 4);
  Drag(marker, 400);
  EXPECT_EQ(marker.Left(), 108);
  EXPECT_EQ(Front(), RGB(255, 255, 100));
  ExpectInLine();
  Drag(marker, -400);
  EXPECT_EQ(marker.Left(), 8);
  EXPECT_EQ(Front(), RGB(255, 0, 100));
  EXPECT_EQ(sheet_.Buffer.ForeColor(), Front());
  Release(marker, 4);
  sheet_.Buffer.SetForeColor(kUntouched);
  Drag(marker, 40);
  EXPECT_EQ(sheet_.Buffer.ForeColor(), kUntouched);
}

TEST_F(ColorPanelTest, ADragChangesOnlyTheSelectedColour) {
  Click(ColorPanel->SelColor[1]);
  EXPECT_EQ(Number(0), 255);
  Press(ColorPanel->ColorScroll[1], 4, Qt::RightButton);
  Drag(ColorPanel->ColorScroll[1], -400);
  EXPECT_EQ(Back(), RGB(255, 0, 255));
  EXPECT_EQ(Front(), kBlack);
  ExpectInLine();
}

TEST_F(ColorPanelTest, NumbersCountUpTo255AndBeforeAPressOnABar) {
  ColorPanel->ColorDragging = true;
  ColorPanel->lblColor[0].SetValue(300.0);
  ColorPanel->lblColor[2].SetValue(7.0);
  ColorPanel->lblColor[1].OnKeyUp('A', 0);
  EXPECT_EQ(Front(), kBlack);
  ColorPanel->lblColor[1].OnKeyUp(kKeyEnter, 0);
  EXPECT_EQ(Front(), RGB(255, 0, 7));
  EXPECT_FALSE(ColorPanel->ColorDragging);
  EXPECT_EQ(ColorPanel->Gradient.Painted->left, Front());
  ExpectInLine();
  QApplication::setActiveWindow(window_.Widget());
  auto* entry = qobject_cast<QLineEdit*>(ColorPanel->lblColor[2].Entry().Widget());
  entry->setFocus();
  entry->setText("254");
  QKeyEvent up(QEvent::KeyPress, Qt::Key_Up, Qt::NoModifier);
  QApplication::sendEvent(entry, &up), QApplication::sendEvent(entry, &up);
  EXPECT_EQ(Number(2), 255);
  entry->setText("777");
  Press(ColorPanel->ColorBar[0], 10);
  EXPECT_FALSE(entry->hasFocus());
  EXPECT_EQ(Front(), RGB(37, 0, 255));
}

TEST_F(ColorPanelTest, ShiftingRestoringAndTheDialog) {
  ColorPanel->SelColor[0].SetBackColor(RGB(1, 2, 3));
  ColorPanel->SelColor[1].SetBackColor(RGB(200, 100, 50));
  Click(ColorPanel->SelColor[1]);
  State.ColorDialogTarget = 1;
  Click(ColorPanel->ShiftColors);
  EXPECT_EQ(Front(), RGB(200, 100, 50));
  EXPECT_EQ(Back(), RGB(1, 2, 3));
  EXPECT_EQ(sheet_.Buffer.ForeColor(), Front());
  EXPECT_EQ(GetSelectedColor(), 0);
  ExpectInLine();
  EXPECT_EQ(ColorPanel->Gradient.Painted->right, Back());
  Click(ColorPanel->SelColor[1]);
  Click(ColorPanel->RestoreColors);
  EXPECT_EQ(Front(), kBlack);
  EXPECT_EQ(Back(), kWhite);
  EXPECT_EQ(GetSelectedColor(), 0);
  EXPECT_EQ(sheet_.Buffer.ForeColor(), kBlack);
  EXPECT_EQ(State.ColorDialogTarget, 1);
  std::string asked;
  ColorPanel->OnEditColor = [&](int16_t index) { asked += std::to_string(index); };
  for (int i = 1; i >= 0; --i) {
    Click(ColorPanel->SelColor[i]);
    Send(ColorPanel->SelColor[i], QEvent::MouseButtonDblClick, 3, 3);
  }
  EXPECT_EQ(asked, "10");
}

TEST_F(ColorPanelTest, TheForegroundLiesOverTheBackgroundAndARampIsPaintedOnlyWhenItIsAnother) {
  QWidget* bg = ColorPanel->SwatchesBg.Widget();
  EXPECT_EQ(bg->childAt(50, 20), ColorPanel->SelColor[0].Widget());
  EXPECT_EQ(bg->childAt(70, 40), ColorPanel->SelColor[1].Widget());
  EXPECT_EQ(bg->childAt(64, 6), ColorPanel->ShiftColors.Widget());
  EXPECT_EQ(bg->childAt(43, 39), ColorPanel->RestoreColors.Widget());
  EXPECT_EQ(bg->childAt(130, 80)->accessibleName(), "Green");
  RampSurface& bar = ColorPanel->ColorBar[0];
  bar.SetPixelV(3, 3, RGB(1, 1, 1));
  ColorPanel->SelColor[0].SetBackColor(RGB(90, 0, 0));
  SetColorBars();
  EXPECT_EQ(bar.Point(3, 3), RGB(1, 1, 1)) << "the red bar doesn't depend on red";
  ColorPanel->SelColor[0].SetBackColor(RGB(90, 1, 0));
  SetColorBars();
  EXPECT_NE(bar.Point(3, 3), RGB(1, 1, 1));
}

}  // namespace
}  // namespace zelvane
