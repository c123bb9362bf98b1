#include <QTest>

#include "colour/ColorPanel.h"
#include "colour/frmColor.h"
#include "document/window/MakeDocument.h"
#include "session/Session.h"
#include "shell/MainForm.h"
#include "surface/forms/windows/Application.h"

using namespace zelvane;

namespace {

class TheColorDialog : public Session {
 protected:
  static void Open(int index) {
    QTest::mouseDClick(ColorPanel->SelColor[index].Widget(), Qt::LeftButton);
    DoEvents();
    EXPECT_TRUE(frmColor->Visible());
    EXPECT_FALSE(MainForm->Enabled());
  }
  /// Pixels of the surface, behind its frame.
  static void ClickAt(const PictureSurface& surface, int x, int y) {
    QTest::mouseClick(surface.Widget(), Qt::LeftButton, {}, QPoint(x + 1, y + 1));
  }
  static std::string Numbers() {
    std::string text;
    for (int i = 0; i < kChannelCount; ++i) text += frmColor->lblRGB[i].Caption() + ' ';
    return text;
  }
};

}  // namespace

TEST_F(TheColorDialog, ShowsEachHueFromWhiteToItDownToBlack) {
  Start();
  Open(0);
  // A hue that is chosen before a place is, is read at the place where the marker would be seen first.
  ClickAt(frmColor->ColorMap, 5, 85);
  EXPECT_EQ(frmColor->NewColor.BackColor(), frmColor->ColorSel.Point(0, 118));
  EXPECT_LT(frmColor->SelObject[0].Left(), -13);
  const std::pair<int, Color> hues[] = {
      {0, RGB(255, 0, 0)}, {85, RGB(0, 0, 255)}, {170, RGB(0, 255, 0)}, {127, RGB(0, 255, 255)}};
  for (const auto& [row, hue] : hues) {
    ClickAt(frmColor->ColorMap, 5, row);
    const Channels shown = Split(frmColor->ColorMap.Point(1, static_cast<Single>(row))), pure = Split(hue);
    EXPECT_LE(std::abs(shown.red - pure.red) + std::abs(shown.green - pure.green) +
                  std::abs(shown.blue - pure.blue),
              12)
        << row;
    const auto picked = [](int x, int y) {
      return ClickAt(frmColor->ColorSel, x, y), frmColor->NewColor.BackColor();
    };
    EXPECT_EQ(picked(254, 0), frmColor->ColorMap.Point(1, static_cast<Single>(row)));
    EXPECT_EQ(picked(0, 0), kWhite);
    EXPECT_EQ(picked(100, 254), kBlack);
  }
  EXPECT_EQ(Numbers(), "0 0 0 ");
}

TEST_F(TheColorDialog, TakesKeysAndComesBackAsItWas) {
  Start();
  const ImageDocument& document = MakeDocument(20, 10, kWhite, {"a", ""});
  Open(1);
  ClickAt(frmColor->ColorSel, 100, 50);
  QTest::keyClick(frmColor->ColorSel.Widget(), Qt::Key_Right);
  QTest::keyClick(frmColor->ColorSel.Widget(), Qt::Key_Up, Qt::ShiftModifier);
  const Color picked = frmColor->ColorSel.Point(101, 40);
  EXPECT_EQ(frmColor->NewColor.BackColor(), picked);
  EXPECT_EQ(document.Buffer.ForeColor(), picked);
  const auto focus = [] { return frmColor->Widget()->focusWidget(); };
  for (const Control* next :
       {static_cast<Control*>(&frmColor->ColorMap), static_cast<Control*>(&frmColor->Command1[1]),
        static_cast<Control*>(&frmColor->Command1[0]), static_cast<Control*>(&frmColor->ColorSel)}) {
    QTest::keyClick(focus(), Qt::Key_Tab);
    EXPECT_EQ(focus(), next->Widget());
  }
  QTest::keyClick(focus(), Qt::Key_Return);
  EXPECT_EQ(ColorPanel->SelColor[1].BackColor(), picked);
  EXPECT_EQ(ColorPanel->SelColor[0].BackColor(), kBlack);
  EXPECT_TRUE(MainForm->Enabled());
  Open(0);
  EXPECT_EQ(frmColor->NewColor.BackColor(), picked);
  EXPECT_EQ(frmColor->OldColor.BackColor(), kBlack);
  QTest::keyClick(frmColor->Command1[1].Widget(), Qt::Key_Escape);
  EXPECT_FALSE(frmColor->Visible());
  EXPECT_EQ(ColorPanel->SelColor[0].BackColor(), kBlack);
  EXPECT_TRUE(MainForm->Enabled());
}
