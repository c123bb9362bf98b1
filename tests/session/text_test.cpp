#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QTest>
#include <QTextEdit>

#include "colour/ColorPanel.h"
#include "imageops/Undo.h"
#include "selection/Selection.h"
#include "session/Session.h"
#include "shell/MainForm.h"
#include "tools/OptionBars.h"
#include "tools/SelectTool.h"
#include "tools/TextTool.h"

using namespace zelvane;

namespace {

constexpr Color kInk = RGB(200, 30, 60), kGround = RGB(250, 240, 200);

class Text : public Session {
 protected:
  /// The Text tool on a white picture.
  void Open(int width = 300, int height = 200) {
    QImage white(width, height, QImage::Format_RGB32);
    white.fill(Qt::white);
    Start(MakePicture("white.png", white));
    ColorPanel->SelColor[0].SetBackColor(kInk);
    ColorPanel->SelColor[1].SetBackColor(kGround);
    SelectTool(kTextTool);
    frmControls->lblFont.SetCaption(" DejaVu Sans");
  }
  static QTextEdit& Box() { return *qobject_cast<QTextEdit*>(Document().TextInput.Widget()); }
  static void Type(const char* keys) {
    for (const char* key = keys; *key; ++key)
      *key == '\n' ? QTest::keyClick(&Box(), Qt::Key_Return) : QTest::keyClick(&Box(), *key);
  }
  static void Paste(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    QTest::keyClick(&Box(), Qt::Key_V, Qt::ControlModifier);
  }
  /// The picture after text was printed at a place of the picture, at a zoom; it is undone again.
  QImage Printed(const char* text, QPoint at, int zoom = 1) {
    ZoomTo(zoom);
    Click(at.x() * zoom, at.y() * zoom);
    Type(text);
    ClickOn(frmControls->CmdButton[0]);
    const QImage printed = Picture(Document().Buffer);
    Undo_Click();
    return printed;
  }
  static QRect Ink(const QImage& picture) {
    QImage white(picture.size(), QImage::Format_RGB32);
    white.fill(Qt::white);
    return Difference(picture, white);
  }
  /// Where the view shows something else than white, in its own units.
  static QRect SeenInk() {
    Box().clearFocus();  // the caret is no ink
    QWidget& view = *Document().PaintArea.Widget();
    const QImage seen = view.grab(view.rect().adjusted(1, 1, -1, -1)).toImage();
    Box().setFocus();
    return Ink(seen.convertToFormat(QImage::Format_RGB32));
  }
};

}  // namespace

TEST_F(Text, ABoxInThePicturesFontFollowsThePointerWithItsText) {
  Open();
  ZoomTo(3);
  frmControls->pixelSelector[kTextSize].SetValue(12);
  FloatSelection(Document(), Bitmap(20, 20, 0xFF000000), 5, 5);
  const QImage before = Picture(Document().Buffer);
  Press(30, 33, Qt::RightButton);
  EXPECT_FALSE(Document().SelectArea.Visible());
  EXPECT_EQ(PlaceOf(Document().TextInput).topLeft(), QPoint(30, 33));
  EXPECT_EQ(Document().TextInput.FontSize(), 36);
  EXPECT_EQ(Document().Buffer.FontSize(), 12);
  EXPECT_EQ(Box().palette().color(QPalette::Text), QColor(200, 30, 60));
  EXPECT_EQ(Box().palette().color(QPalette::Base), QColor(250, 240, 200));
  EXPECT_TRUE(Document().TextInput.HasFocus());
  const Single bare = Document().TextInput.Width();
  Type("word");
  EXPECT_GT(Document().TextInput.Width(), bare);
  MoveTo(96, 63, Qt::RightButton);
  Release(99, 66, Qt::RightButton);
  Click(62, 61);
  EXPECT_EQ(PlaceOf(Document().TextInput).topLeft(), QPoint(60, 60));
  EXPECT_EQ(Document().TextInput.Text(), "word");
  EXPECT_EQ(Document().lblTextSize.Caption(), "wordM");
  ApplyText();
  EXPECT_NE(Picture(Document().Buffer), before);
  Undo_Click();
  EXPECT_EQ(Picture(Document().Buffer), before);
}

TEST_F(Text, IsPrintedAsItWasSeenAtEveryZoom) {
  Open();
  ColorPanel->SelColor[1].SetBackColor(kWhite);
  struct Case {
    const char *family, *text;
    bool italic;
  };
  for (const auto& [family, text, italic] :
       {Case{"", "Hgf\nMiW", false}, {"DejaVu Serif", "Hgf\nMiW", false}, {"DejaVu Serif", "jg\nMy", true}}) {
    Document().SetTextFont({family, 14, false, italic});
    frmControls->lblFont.SetCaption(std::string(" ") + family);
    const QImage plain = Printed(text, {40, 30});
    const QRect ink = Ink(plain);
    EXPECT_EQ(ink.left() < 40, italic);
    EXPECT_GE(ink.top(), 30);
    for (int zoom : {1, 3, 8}) {
      EXPECT_EQ(Printed(text, {40, 30}, zoom), plain) << zoom;
      Click(40 * zoom, 30 * zoom);
      Type(text);
      const QRect seen = SeenInk();
      EXPECT_NEAR(seen.left(), ink.left() * zoom, zoom) << zoom;
      EXPECT_NEAR(seen.top(), ink.top() * zoom, zoom) << zoom;
      EXPECT_NEAR(seen.right() + 1, (ink.right() + 1) * zoom, zoom) << zoom;
      EXPECT_NEAR(seen.bottom() + 1, (ink.bottom() + 1) * zoom, zoom) << zoom;
      EXPECT_LE(40 + Document().TextInput.Width() / static_cast<Single>(zoom), 300);
      ClickOn(frmControls->CmdButton[1]);
    }
    // The second line is the first one, one line down.
    const QImage two = Printed("Hg\nHg", {40, 30});
    const QImage first = Printed("Hg", {40, 30});
    const int advance = Ink(two).bottom() - Ink(first).bottom();
    EXPECT_EQ(Printed("Hg", {40, 30 + advance}).copy(0, 30 + advance, 300, 80),
              two.copy(0, 30 + advance, 300, 80));
    EXPECT_EQ(Ink(Printed("\nHg", {40, 30})), Ink(first).translated(0, advance));
  }
}

TEST_F(Text, HasGreyEdgesAndTheStyleThatIsSet) {
  Open();
  ColorPanel->SelColor[0].SetBackColor(kBlack);
  const QImage plain = Printed("Wafg", {20, 20});
  int shades = 0;
  for (int y = 0; y < plain.height(); ++y)
    for (int x = 0; x < plain.width(); ++x) {
      ASSERT_TRUE(qIsGray(plain.pixel(x, y)));
      shades += qGray(plain.pixel(x, y)) % 255 != 0;
    }
  EXPECT_GT(shades, 0);
  Document().Buffer.SetFontBold(true);
  const QImage bold = Printed("Wafg", {20, 20});
  EXPECT_GT(Ink(bold).width(), Ink(plain).width());
  Document().Buffer.SetFontItalic(true);
  EXPECT_NE(Printed("Wafg", {20, 20}), bold);
}

TEST_F(Text, IsTypedAsInAnyField) {
  Open();
  Click(20, 20);
  const QImage picture = Picture(Document().Buffer);
  Type("one");
  QTest::keyClick(&Box(), Qt::Key_Return, Qt::ShiftModifier);
  Type("two");
  EXPECT_EQ(Document().TextInput.Text(), "one\ntwo");
  QTest::keyClick(&Box(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_NE(Document().TextInput.Text(), "one\ntwo");
  for (const Qt::Key key : {Qt::Key_A, Qt::Key_I, Qt::Key_B})
    QTest::keyClick(&Box(), key, Qt::ControlModifier);
  EXPECT_FALSE(Document().SelectArea.Visible());
  EXPECT_EQ(MainForm->Children().size(), 1U);
  Paste("a\r\nb\u2028\u05d0\u05d1\n\U0001F600");
  EXPECT_EQ(Document().TextInput.Text(), "a\nb\n\u05d0\u05d1\n\U0001F600");
  EXPECT_EQ(Document().TextInput.Height(), Document().TextInput.Caret().bottom);
  QTest::keyClick(&Box(), Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&Box(), Qt::Key_Delete);
  EXPECT_EQ(Document().lblTextSize.Caption(), "M");
  EXPECT_EQ(Picture(Document().Buffer), picture);
  const Single bare = Document().TextInput.Width();
  QInputMethodEvent composing("\u4e2d\u6587\u5b57", {});
  QApplication::sendEvent(&Box(), &composing);
  EXPECT_GT(Document().TextInput.Width(), bare);
  EXPECT_EQ(Document().TextInput.Text(), "");
  QInputMethodEvent done;
  done.setCommitString("\u4e2d");
  QApplication::sendEvent(&Box(), &done);
  EXPECT_EQ(Document().TextInput.Text(), "\u4e2d");
}

TEST_F(Text, EndsWithAnotherToolOrByItsButtons) {
  ApplyText();
  Open();
  ClickOn(frmControls->CmdButton[0]);
  const QImage white = Picture(Document().Buffer);
  // The first box is empty, the others hold what is typed at the end of the loop.
  for (const auto& end : std::vector<std::function<void()>>{
           [] { ClickOn(frmControls->CmdButton[0]); }, [] { ClickOn(frmControls->CmdButton[1]); },
           [] { SelectTool(kPenTool), SelectTool(kTextTool); }}) {
    Click(20, 20);
    end();
    EXPECT_FALSE(Document().TextInput.Visible());
    EXPECT_EQ(Document().lblTextSize.Caption(), "M");
    EXPECT_TRUE(Document().PaintArea.HasFocus());
    EXPECT_EQ(Picture(Document().Buffer), white);
    Click(20, 20);
    EXPECT_EQ(Document().TextInput.Text(), "");
    Type("dropped");
  }
}

TEST_F(Text, StaysOnItsPixelAndInViewOverScrollingAndZooming) {
  Open(400, 300);
  Click(120, 90);
  Type("Hgf");
  const Single width = Document().TextInput.Width();
  ZoomTo(8);
  EXPECT_EQ(PlaceOf(Document().TextInput).topLeft(), QPoint(960, 720));
  EXPECT_NEAR(Document().TextInput.Width(), 8 * width, 16);
  Type("g");
  // With some of the letter before it.
  const auto caret_is_seen = [] {
    const QRect caret = Box().cursorRect().adjusted(-60, 0, 0, 0);
    const QWidget* viewport = Document().Back.Widget();
    return viewport->rect().contains(QRect(Box().mapTo(viewport, caret.topLeft()), caret.size()));
  };
  EXPECT_TRUE(caret_is_seen());
  Document().HScroll1.SetValue(Document().HScroll1.Max());
  EXPECT_FALSE(caret_is_seen());
  EXPECT_TRUE(Document().TextInput.HasFocus());
  Document().PaintArea.SetFocus();
  EXPECT_TRUE(Document().TextInput.HasFocus());
  QTest::keyClick(&Box(), Qt::Key_Left);
  EXPECT_TRUE(caret_is_seen());
  ZoomTo(1);
  EXPECT_EQ(PlaceOf(Document().TextInput).topLeft(), QPoint(120, 90));
}

TEST_F(Text, BearsWhatNoPictureHolds) {
  Open(60, 40);
  // A place beyond 16 bits leaves the box; one off the picture prints what still reaches it.
  ZoomTo(8);
  Click(80, 80);
  Press(40000, 80), Release(40000, 80);
  EXPECT_EQ(PlaceOf(Document().TextInput).topLeft(), QPoint(80, 80));
  ClickOn(frmControls->CmdButton[1]);
  EXPECT_EQ(Ink(Printed("H", {500, 10})), QRect());
  EXPECT_EQ(Ink(Printed("H", {-500, -500})), QRect());
  EXPECT_EQ(Ink(Printed("HHHHHHHHHHHHHHHHHH", {-20, 10})).left(), 0);
  // The picture has become smaller meanwhile, or larger.
  for (const int side : {10, 90}) {
    ZoomTo(1);
    Click(30, 10);
    Type("H");
    Document().Buffer.Resize(side, side);
    ClickOn(frmControls->CmdButton[0]);
    EXPECT_EQ(Ink(Picture(Document().Buffer)).isEmpty(), side == 10);
  }
  // Sizes that are no sizes leave the one before.
  Document().SetTextFont({"No such font at all", 0, false, false});
  EXPECT_EQ(Document().Buffer.FontName(), "DejaVu Sans");
  EXPECT_EQ(Document().Buffer.FontSize(), 10);
  for (const QString& text : {QString(100000, 'W'), QString("Wort und noch eins\n").repeated(6000)}) {
    Click(10, 10);
    Paste(text);
    Type("x");
    EXPECT_GE(Document().TextInput.Text().size(), 100000U);
    ClickOn(frmControls->CmdButton[0]);
    EXPECT_FALSE(Document().TextInput.Visible());
  }
}
