#include <QAction>
#include <QTest>
#include <QTimer>
#include <cmath>
#include <random>

#include "imageops/Flip.h"
#include "imageops/Greyscale.h"
#include "imageops/InvertImage.h"
#include "imageops/ProgressDisplay.h"
#include "imageops/ProgressRun.h"
#include "imageops/Undo.h"
#include "imageops/frmPalette.h"
#include "imageops/frmSize.h"
#include "selection/Selection.h"
#include "session/Session.h"
#include "shell/MainForm.h"
#include "shell/MenuEvents.h"
#include "surface/forms/windows/Application.h"

using namespace zelvane;

namespace {

QImage Noise(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  std::mt19937 random(1);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) image.setPixel(x, y, 0xFF000000 | random());
  return image;
}

template <class Change>
QImage PixelByPixel(QImage image, Change change) {
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) image.setPixel(x, y, change(image.pixel(x, y)));
  return image;
}

/// As it is told: in doubles, term by term, halves to even.
int GreyOf(QRgb c) {
  return static_cast<int>(
      std::nearbyint(qGreen(c) * 150 / 255.0 + qRed(c) * 76 / 255.0 + qBlue(c) * 28 / 255.0));
}

struct ImageOps : Session {
  void Open(const QImage& picture) { Start(MakePicture("a.png", picture)); }
  static QImage Seen() { return Picture(Document().Buffer); }
  static void Press(Qt::Key key) { QTest::keyClick(frmSize->txtWidth.Entry().Widget(), key), DoEvents(); }
  static QSize Typed() { return QSizeF(frmSize->txtWidth.Value(), frmSize->txtHeight.Value()).toSize(); }
};

TEST_F(ImageOps, FlipAndInvertTheLiveLayer) {
  const QImage odd = Noise(7, 5);
  const auto invert = [](QRgb c) { return c ^ 0xFFFFFF; };
  const struct {
    void (*act)();
    QImage expected;
    bool undone;
  } cases[] = {{FlipHorizontal_Click, odd.mirrored(true, false), false},
               {FlipVertical_Click, odd.mirrored(false, true), false},
               {InvertImage_Click, PixelByPixel(odd, invert), true}};
  for (const auto& [act, expected, undone] : cases) {
    Open(odd);
    const QImage blank = Picture(Document().Undo);
    act();
    EXPECT_TRUE(Seen() == expected && Document().Dirty);
    EXPECT_EQ(Picture(Document().Undo), undone ? odd : blank);
    act();
    EXPECT_EQ(Seen(), odd);
    LiftSelection(Document(), {1, 1, 6, 4});
    act();
    const QRect place(1, 1, 5, 3);
    EXPECT_EQ(Difference(Seen(), odd) & place, Difference(Seen(), odd)) << "only the selection changes";
    act();
    EXPECT_EQ(Seen(), odd);
    Document().SetDirtyFalse();
  }
  QTest::keyClick(MainForm->Widget(), Qt::Key_I, Qt::ControlModifier);
  EXPECT_NE(Seen(), odd) << "the shortcut of a hidden entry works";
  Document().SetDirtyFalse();
}

TEST_F(ImageOps, TonesFollowTheirFormula) {
  for (const auto& [color, grey] : {std::pair{kWhite, 254},
                                    {RGB(255, 0, 0), 76},
                                    {RGB(0, 255, 0), 150},
                                    {RGB(0, 0, 255), 28},
                                    {kBlack, 0}})
    EXPECT_EQ(GreyValue(color), grey);
  const QImage picture = Noise(150, 40);
  for (const int index : {0, 2, 3, 5, 6, 8, 9}) {
    Open(picture);
    Greyscale_Click(static_cast<int16_t>(index));
    const int channel = (index - 2) / 3, other = index % 3 == 0 ? 0 : 255;
    EXPECT_EQ(Seen(), PixelByPixel(picture,
                                   [&](QRgb c) {
                                     const int grey = GreyOf(c);
                                     int rgb[] = {grey, grey, grey};
                                     for (int i = 0; index > 0 && i < 3; ++i)
                                       if ((i == channel) == (other == 255)) rgb[i] = other;
                                     return qRgb(rgb[0], rgb[1], rgb[2]);
                                   }))
        << index;
    EXPECT_TRUE(Document().Dirty);
    Undo_Click();
    EXPECT_EQ(Seen(), picture);
    LiftSelection(Document(), {3, 4, 50, 30});
    Greyscale_Click(static_cast<int16_t>(index));
    EXPECT_EQ(Difference(Seen(), picture), QRect(3, 4, 47, 26));
    Undo_Click();
    EXPECT_EQ(Seen(), picture) << "of the selection alone";
    Document().SetDirtyFalse();
  }
}

/// Notes the widths of the progress bar, and makes the work behind the first ones long enough for events.
class SlowBar : public QObject {
 public:
  SlowBar() { Progress->ProcessBar.Widget()->installEventFilter(this); }
  std::vector<int> widths;

 private:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::Resize) return false;
    widths.push_back(static_cast<QResizeEvent*>(event)->size().width());
    if (widths.size() < 5) QTest::qSleep(20);
    return false;
  }
};

TEST_F(ImageOps, NothingComesBetweenALongOperation) {
  constexpr int kWidth = 128;
  const QImage before = Noise(kWidth, 90);
  Open(before);
  SlowBar bar;
  std::vector<int> expected = {1};
  bool kept = true;
  int rounds = 0;
  QTimer meddler;
  QObject::connect(&meddler, &QTimer::timeout, [&] {
    kept &= ProgressRun::IsStanding() && !MainForm->Enabled() && Progress->ProcessBg.Visible();
    kept &= Seen() == before;
    Greyscale_Click(2);
    MainForm->Widget()->findChild<QAction*>("FlipVertical")->trigger();
    QTest::keyClick(MainForm->Widget(), Qt::Key_I, Qt::ControlModifier);
    Click(3, 3);
    Document().Widget()->parentWidget()->close();
    MainForm->Widget()->close();
    kept &= !Document().Unload() && !MainForm->Unload();
    ++rounds;
  });
  meddler.start(0);
  Greyscale_Click(0);
  meddler.stop();
  EXPECT_TRUE(kept);
  EXPECT_GT(rounds, 0);
  for (int x = 1; x < kWidth; ++x)
    expected.push_back(x * static_cast<int>(Progress->Process.ScaleWidth()) / kWidth);
  EXPECT_EQ(bar.widths, expected) << "a step for each column";
  EXPECT_TRUE(MainForm->Enabled() && !Progress->ProcessBg.Visible());
  EXPECT_EQ(Seen(), PixelByPixel(before, [](QRgb c) { return qRgb(GreyOf(c), GreyOf(c), GreyOf(c)); }));
  Document().SetDirtyFalse();
}

TEST_F(ImageOps, SizeIsTakenAsTyped) {
  const QImage picture = Noise(200, 100);
  Open(picture);
  ImageSize_Click();
  EXPECT_TRUE(!MainForm->Enabled() && !frmSize->Constrain.Visible());
  frmSize->txtWidth.SetValue(400), frmSize->txtHeight.SetValue(100);
  ClickOn(frmSize->Command1[0]);
  EXPECT_TRUE(Seen() == picture && MainForm->Enabled() && !frmSize->Visible());

  LiftSelection(Document(), {10, 10, 60, 60});
  ZoomTo(2);
  ImageSize_Click();
  EXPECT_EQ(Typed(), picture.size());
  frmSize->txtWidth.SetValue(400), frmSize->txtHeight.SetValue(300);
  Press(Qt::Key_Return);
  EXPECT_EQ(Seen(), picture.scaled(400, 300)) << "the selection landed, and each pixel is repeated";
  EXPECT_TRUE(!Document().Dirty && !Document().SelectArea.Visible());
  EXPECT_EQ(QSizeF(Document().PaintArea.Width(), Document().PaintArea.Height()), QSizeF(802, 602));

  for (const auto& [width, height] : {std::pair{0, 10}, {10, 0}, {32768, 1}}) {
    ImageSize_Click();
    frmSize->txtWidth.SetValue(width), frmSize->txtHeight.SetValue(height);
    EXPECT_EQ(Answering({"OK"}, [] { Press(Qt::Key_Return); }).size(), 1u);
    EXPECT_TRUE(frmSize->Visible() && Seen().size() == QSize(400, 300));
    Press(Qt::Key_Escape);
    EXPECT_TRUE(MainForm->Enabled() && !frmSize->Visible());
  }
}

TEST_F(ImageOps, SizeKeepsThePicturesProportions) {
  Open(Noise(200, 100));
  ImageSize_Click();
  ClickOn(frmSize->Check1);
  EXPECT_TRUE(frmSize->Constrain.Visible());
  const auto type = [](NumberBox& box, const char* digits) {
    box.SetFocus();
    DoEvents();
    box.Highlight();
    QTest::keyClicks(box.Entry().Widget(), digits), DoEvents();
  };
  type(frmSize->txtWidth, "50");
  EXPECT_EQ(Typed(), QSize(50, 25));
  type(frmSize->txtWidth, "51");
  QTest::keyPress(frmSize->txtWidth.Entry().Widget(), Qt::Key_Tab), DoEvents();
  QTest::keyRelease(frmSize->txtHeight.Entry().Widget(), Qt::Key_Tab), DoEvents();
  EXPECT_EQ(Typed(), QSize(51, 25)) << "half a pixel doesn't come back";
  type(frmSize->txtHeight, "70");
  EXPECT_EQ(Typed(), QSize(140, 70));
  Start(PathOf("a.png"));
  ImageSize_Click();
  EXPECT_TRUE(frmSize->Check1.Value() == 1 && frmSize->Constrain.Visible());
  ClickOn(frmSize->Check1);
  type(frmSize->txtWidth, "50");
  EXPECT_EQ(Typed(), QSize(50, 100));
}

TEST_F(ImageOps, PaletteListsColorsAsTheyAppear) {
  QImage picture(60, 50, QImage::Format_RGB32);
  for (int i = 0; i < 3000; ++i) picture.setPixel(i % 60, i / 60, qRgb(i / 256, i % 256, 7));
  picture.setPixel(0, 0, 0xFF000000);
  Open(picture);
  ImagePalette_Click();
  const auto& cells = frmPalette->Swatch;
  ASSERT_EQ(cells.size(), 2000u);
  EXPECT_TRUE(cells[0].BackColor == RGB(0, 1, 7) && cells[1999].BackColor == RGB(2000 / 256, 2000 % 256, 7));
  EXPECT_TRUE(cells[1].Left == 0 && cells[1].Top == 0 && cells[0].Top > cells[1].Top) << "the first is last";
  EXPECT_TRUE(frmPalette->VScroll1.Enabled());
  frmPalette->VScroll1.SetValue(2);
  EXPECT_EQ(frmPalette->Display.Top(), -2 * (cells[21].Top - cells[1].Top));
  QTest::keyClick(frmPalette->Widget(), Qt::Key_Escape), DoEvents();
  EXPECT_FALSE(frmPalette.IsLoaded());

  LiftSelection(Document(), {0, 0, 3, 1});
  ImagePalette_Click();
  EXPECT_EQ(frmPalette->Swatch.size(), 2u);
  EXPECT_FALSE(frmPalette->VScroll1.Enabled());
  frmPalette->OnDeactivate();
  EXPECT_FALSE(frmPalette.IsLoaded());
}

}  // namespace
