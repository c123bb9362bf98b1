#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QWidget>
#include <string>
#include <vector>

#include "colour/ColorBars.h"
#include "colour/ColorRamp.h"
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

  static void Send(const Control& to, QEvent::Type type, int x, Qt::MouseButton button = Qt::LeftButton) {
    const QPointF place(x, 3);
    const bool moves = type == QEvent::MouseMove, ends = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, place, to.Widget()->mapToGlobal(place), moves ? Qt::NoButton : button,
                      ends ? Qt::NoButton : button, Qt::NoModifier);
    QApplication::sendEvent(to.Widget(), &event);
  }
  static void Press(const Control& on, int x, Qt::MouseButton button = Qt::LeftButton) {
    Send(on, QEvent::MouseButtonPress, x, button);
  }
  static void Drag(const Control& on, int x, Qt::MouseButton button = Qt::LeftButton) {
    Send(on, QEvent::MouseMove, x, button);
  }
  static void Release(const Control& on, int x) { Send(on, QEvent::MouseButtonRelease, x); }
  static void Click(const Control& on) { Press(on, 3), Release(on, 3); }

  static double Number(int channel) { return ColorPanel->lblColor[channel].Value(); }
  static Color Front() { return ColorPanel->SelColor[0].BackColor(); }
  static Color Back() { return ColorPanel->SelColor[1].BackColor(); }
  /// The labels' colours, which of them is selected, and that bars and numbers agree with it.
  static void Expect(Color front, Color back, int selected = 0) {
    EXPECT_EQ(Front(), front);
    EXPECT_EQ(Back(), back);
    EXPECT_EQ(GetSelectedColor(), selected);
    const auto [red, green, blue] = Split(selected == 0 ? front : back);
    const auto number = [](int channel) { return static_cast<int>(Number(channel)); };
    EXPECT_EQ(RGB(number(0), number(1), number(2)), RGB(red, green, blue));
    const Color ends[] = {RGB(255, green, blue), RGB(red, 255, blue), RGB(red, green, 255)};
    for (int i = 0; i < kChannelCount; ++i) EXPECT_EQ(ColorPanel->ColorBar[i].Point(100, 3), ends[i]);
  }

  MdiForm& window_ = *new MdiForm("window");
  Sheet& sheet_ = *new Sheet;
};

TEST_F(ColorPanelTest, APressOnABarMovesTheMarkersEdgeThere) {
  RampSurface& bar = ColorPanel->ColorBar[0];
  Press(bar, 10);
  EXPECT_EQ(Number(0), 37) << "(10 + 4.5) / 101 * 256";
  Drag(bar, 50);
  EXPECT_EQ(ColorPanel->ColorScroll[0].Left(), 62);
  EXPECT_EQ(Number(0), 138);
  EXPECT_EQ(ColorPanel->Gradient.Painted->left, kBlack) << "the strip waits for the end of the drag";
  Release(bar, 50);
  EXPECT_EQ(ColorPanel->Gradient.Painted->left, RGB(138, 0, 0));
  Drag(bar, 90);
  Expect(RGB(138, 0, 0), kWhite);
}

TEST_F(ColorPanelTest, TheStripGivesAColourToEitherLabel) {
  const Color middle = ColorPanel->Gradient.Point(30, 5);
  Press(ColorPanel->Gradient, 30, Qt::RightButton);
  Expect(kBlack, middle, 1);
  EXPECT_EQ(State.ColorDialogTarget, 1);
  EXPECT_EQ(ColorPanel->Gradient.Point(60, 5), middle);
  Press(ColorPanel->Gradient, 60);
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
  EXPECT_EQ(ColorPanel->ColorScroll[2].Left(), static_cast<Single>(100 / 255.0 * 101 + 12 - 4.5));
  Expect(RGB(255, 0, 100), kWhite);
  MarkerSurface& marker = ColorPanel->ColorScroll[1];
  EXPECT_EQ(marker.Left(), 7.5f);
  Press(marker, 4);
  Drag(marker, 400);
  EXPECT_EQ(marker.Left(), 108);
  Expect(RGB(255, 255, 100), kWhite);
  Drag(marker, -400);
  EXPECT_EQ(marker.Left(), 8);
  EXPECT_EQ(Front(), RGB(255, 0, 100));
  EXPECT_EQ(sheet_.Buffer.ForeColor(), Front());
  Release(marker, 4);
  Drag(marker, 40);
  Expect(RGB(255, 0, 100), kWhite);
  Click(ColorPanel->SelColor[1]);
  Press(marker, 4, Qt::RightButton);
  Drag(marker, -400, Qt::RightButton);
  Expect(RGB(255, 0, 100), RGB(255, 0, 255), 1);
}

TEST_F(ColorPanelTest, NumbersCountUpTo255AndBeforeAPressOnABar) {
  ColorPanel->ColorDragging = true;
  ColorPanel->lblColor[0].SetValue(300.0);
  ColorPanel->lblColor[2].SetValue(7.0);
  ColorPanel->lblColor[1].OnKeyUp('A', 0);
  EXPECT_EQ(Front(), kBlack);
  ColorPanel->lblColor[1].OnKeyUp(kKeyEnter, 0);
  Expect(RGB(255, 0, 7), kWhite);
  EXPECT_FALSE(ColorPanel->ColorDragging);
  EXPECT_EQ(ColorPanel->Gradient.Painted->left, Front());
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
  Expect(RGB(200, 100, 50), RGB(1, 2, 3));
  EXPECT_EQ(sheet_.Buffer.ForeColor(), Front());
  EXPECT_EQ(ColorPanel->Gradient.Painted->right, Back());
  Click(ColorPanel->SelColor[1]);
  Click(ColorPanel->RestoreColors);
  Expect(kBlack, kWhite);
  EXPECT_EQ(sheet_.Buffer.ForeColor(), kBlack);
  EXPECT_EQ(State.ColorDialogTarget, 1);
  std::string asked;
  ColorPanel->OnEditColor = [&](int16_t index) { asked += std::to_string(index); };
  for (int i = 1; i >= 0; --i) {
    Click(ColorPanel->SelColor[i]);
    Send(ColorPanel->SelColor[i], QEvent::MouseButtonDblClick, 3);
  }
  EXPECT_EQ(asked, "10");
}

struct Ramp : Canvas {
  Ramp(int width, int height, Color left, Color right) {
    Resize(width, height);
    PaintRamp(*this, left, right);
  }
};

std::vector<int> Reds(int width, int first, int last) {
  const Ramp ramp(width, 9, RGB(first, 0, 0), RGB(last, 0, 0));
  std::vector<int> reds;
  for (int x = 0; x < width; ++x) reds.push_back(Split(ramp.GetPixel(x, 8)).red);
  return reds;
}

TEST(ColorRamp, StartsAStepAwayAndEndsAtTheEndRoundingHalvesToEven) {
  EXPECT_EQ(Reds(4, 0, 100), (std::vector{25, 50, 75, 100}));
  EXPECT_EQ(Reds(4, 100, 0), (std::vector{75, 50, 25, 0}));
  EXPECT_EQ(Reds(4, 0, 2), (std::vector{0, 1, 2, 2}));
  EXPECT_EQ(Reds(101, 0, 255)[49], 126) << "without drift";
  const Ramp flat(5, 30, kBlack, kBlack);
  EXPECT_EQ(flat.GetPixel(2, 20), kBlack);
  EXPECT_EQ(flat.GetPixel(2, 21), kWhite) << "only the top is covered";
  EXPECT_EQ(Ramp(0, 9, kBlack, kWhite).ScaleWidth(), 0);
}

}  // namespace
}  // namespace zelvane
