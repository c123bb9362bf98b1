#include "selection/Selection.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPainter>
#include <QTest>
#include <QWidget>
#include <random>

#include "colour/ColorPanel.h"
#include "document/window/OpenPicture.h"
#include "imageops/Undo.h"
#include "selection/SelectionCommands.h"
#include "selection/clipboard/Paste.h"
#include "session/Session.h"
#include "shell/MainForm.h"
#include "shell/MenuEvents.h"
#include "surface/system/desktop/Clipboard.h"
#include "tools/OptionBars.h"
#include "tools/SelectTool.h"

using namespace zelvane;

namespace {

constexpr Pixel kInk = 0xFFC81E3C, kGround = 0xFF14A05A;

/// A document with a selection as a person sees it: a picture, and perhaps a piece of another lying on it.
class PlainDocument {
 public:
  explicit PlainDocument(QImage picture) : undo(), ground_(std::move(picture)) {}

  QImage undo;
  bool HasPiece() const { return !piece_.isNull(); }
  QPoint Place() const { return place_; }
  QImage& Live() { return HasPiece() ? piece_ : ground_; }
  QImage Seen() const { return Stamped(ground_, piece_, place_); }

  void Drop() { ground_ = Seen(), piece_ = {}; }
  void Lift(const QRect& area) {
    Drop();
    const QRect inside = area.intersected(ground_.rect());
    if (inside.isEmpty()) return;
    Lay(ground_.copy(inside), inside.topLeft());
    QImage hole(inside.size(), QImage::Format_RGB32);
    hole.fill(kGround);
    ground_ = Stamped(ground_, hole, place_);
  }
  void Lay(const QImage& piece, QPoint place) { piece_ = piece, place_ = place; }
  void MoveBy(QPoint way) { place_ += way; }
  void Wipe() { piece_.fill(kGround), Drop(); }
  void Dot(QPoint at) {
    if (HasPiece()) at -= place_;
    if (Live().rect().contains(at)) Live().setPixel(at, kInk);
  }
  /// Exchanges what the live layer and the last snapshot have in common at the top left.
  void Undo() {
    const QRect common = Live().rect() & undo.rect();
    const QImage live = Live().copy(common), kept = undo.copy(common);
    if (common.isEmpty()) return;
    Live() = Stamped(Live(), kept, {});
    undo = Stamped(undo, live, {});
  }

 private:
  static QImage Stamped(QImage picture, const QImage& piece, QPoint place) {
    QPainter(&picture).drawImage(place, piece);
    return picture;
  }
  QImage ground_, piece_;
  QPoint place_;
};

class Selection : public Session {
 protected:
  /// No two pixels are alike.
  static QImage Speckled(int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x) picture.setPixel(x, y, qRgb(x * 9, y * 11, (x * 7 + y * 5) % 256));
    return picture;
  }
  void Open(int width = 24, int height = 16) {
    Start(MakePicture("speckled.png", Speckled(width, height)));
    ColorPanel->SelColor[0].SetBackColor(ToColor(kInk));
    ColorPanel->SelColor[1].SetBackColor(ToColor(kGround));
  }
  static void ZoomTo(int multiple) { frmControls->comboZoom.SetListIndex(multiple - 1); }
  /// A drag of the tool between image pixels, somewhere within each.
  void DragTool(int16_t tool, QPoint from, QPoint to) {
    SelectTool(tool);
    const int multiple = Document().ZoomMultiple();
    const auto unit = [&](int pixel) {
      return pixel * multiple + static_cast<int>(random_() % static_cast<unsigned>(multiple));
    };
    Press(unit(from.x()), unit(from.y()));
    MoveTo(unit((from.x() + to.x()) / 2), unit((from.y() + to.y()) / 2));
    MoveTo(unit(to.x()), unit(to.y()));
    // A marquee that is still being drawn has lifted nothing that could be exchanged, or that it would
    // follow.
    if (tool == kSelectAreaTool) Undo_Click(), Document().RealignZoom(-1, -1);
    Release(unit(to.x()), unit(to.y()));
  }
  void Select(const QRect& area) {
    DragTool(kSelectAreaTool, area.topLeft(), area.bottomRight() + QPoint(1, 1));
  }
  static QRect Marquee() {
    const ShapeOverlay& box = Document().SelectArea;
    return QRectF(box.Left(), box.Top(), box.Width(), box.Height()).toAlignedRect();
  }
  std::mt19937 random_{7};
};

/// What a person may do, in the program and on the plain document alike.
class Sequence : public Selection {
 protected:
  int Below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  QPoint Somewhere(int beyond) { return {Below(24 + 2 * beyond) - beyond, Below(16 + 2 * beyond) - beyond}; }
  void Press(PlainDocument& plain) { plain.undo = plain.Live(); }

  std::string Act(PlainDocument& plain, QImage& clipboard) {
    switch (Below(11)) {
      case 0: {
        const QPoint from = Somewhere(0), to = Somewhere(6);
        DragTool(kSelectAreaTool, from, to);
        Press(plain);
        const QRect area(std::min(from.x(), to.x()), std::min(from.y(), to.y()), std::abs(to.x() - from.x()),
                         std::abs(to.y() - from.y()));
        const bool is_click = area.width() <= 1 && area.height() <= 1;
        plain.Lift(is_click ? QRect() : area);
        return "select";
      }
      case 1:
      case 2: {
        const QPoint from = Somewhere(0), to = Somewhere(12);
        DragTool(kCursorTool, from, to);
        Press(plain);
        plain.MoveBy(to - from);
        return "move";
      }
      case 3:
      case 4: {
        const QPoint at = Somewhere(0);
        DragTool(kPenTool, at, at);
        Press(plain);
        plain.Dot(at);
        return "dot";
      }
      case 5:
        Undo_Click();
        plain.Undo();
        return "undo";
      case 6:
        Cut_Click();
        if (!plain.HasPiece()) plain.Lift(plain.Seen().rect());
        clipboard = plain.Live();
        plain.Wipe();
        return "cut";
      case 7:
        ClearSelection_Click();
        if (!plain.HasPiece()) return "nothing to clear";
        plain.undo = plain.Seen();
        plain.Wipe();
        return "clear";
      case 8:
        SelectAll_Click();
        plain.Lift(plain.Seen().rect());
        return "select all";
      case 9:
        Paste_Click();
        if (!clipboard.isNull()) plain.Drop(), plain.Lay(clipboard, {0, 0});
        return "paste";
      default:
        ZoomTo(1 + Below(8));
        return "zoom";
    }
  }
};

}  // namespace

TEST_F(Sequence, LeavesThePixelsThatAPersonExpects) {
  Open();
  QImage clipboard;
  PlainDocument plain(Picture(Document().Buffer));
  std::string done;
  for (int step = 0; step < 3000; ++step) {
    done = Act(plain, clipboard) + (step % 12 ? ", " + done : "");
    ASSERT_EQ(Picture(Document().Buffer), plain.Seen()) << step << " after (last first): " << done;
    ASSERT_EQ(Document().SelectArea.Visible(), plain.HasPiece()) << step << ": " << done;
    if (!plain.HasPiece()) continue;
    const int multiple = Document().ZoomMultiple();
    ASSERT_EQ(Marquee(), QRect(plain.Place() * multiple, plain.Live().size() * multiple))
        << step << ": " << done;
  }
}

TEST_F(Selection, GoesFarOffThePictureAndComesBack) {
  Open();
  const QImage before = Picture(Document().Buffer);
  FloatSelection(Document(), Bitmap(32767, 1, kInk), 0, 3);
  DragTool(kCursorTool, {0, 0}, {20000, 0});
  EXPECT_EQ(Picture(Document().Buffer), before);
  // Beyond 16 bits a drag ends where it began.
  DragTool(kCursorTool, {0, 0}, {20000, 0});
  EXPECT_EQ(Document().BufferSelected.Left(), 20000);
  DragTool(kCursorTool, {0, 0}, {-32000, 2});
  QImage expected = before;
  for (int x = 0; x < 24; ++x) expected.setPixel(x, 5, kInk);
  EXPECT_EQ(Document().BufferSelected.Left(), -12000);
  EXPECT_EQ(Picture(Document().Buffer), expected);
}

TEST_F(Selection, EachDocumentDragsItsOwn) {
  Open();
  frmPaint& first = Document();
  Select({2, 2, 5, 5});
  OpenRecentFile(PathOf("speckled.png"));
  Select({10, 8, 5, 5});
  first.Activate();
  DragTool(kCursorTool, {3, 3}, {4, 3});
  EXPECT_EQ(Marquee(), QRect(3, 2, 5, 5));
}

TEST_F(Selection, CommandsActExactlyWhereTheyCan) {
  Start();
  const MainMenu& menu = MainForm->Menus;
  const auto enabled = [&] {
    Edit_Click();
    std::string names;
    for (const Menu* entry : {&menu.Undo, &menu.Cut, &menu.Copy, &menu.Paste, &menu.PasteSpecial,
                              &menu.SelectAll, &menu.ClearSelection})
      if (entry->Enabled()) names += entry->Name() + " ";
    return names;
  };
  const auto offer = [](const char* format, const QByteArray& bytes) {
    auto* data = new QMimeData;
    data->setData(format, bytes);
    QGuiApplication::clipboard()->setMimeData(data);
  };
  offer("text/plain", "text");
  EXPECT_EQ(enabled(), "");
  for (Menu* entry : {&MainForm->Menus.Cut, &MainForm->Menus.Copy, &MainForm->Menus.ClearSelection,
                      &MainForm->Menus.SelectAll, &MainForm->Menus.Paste, &MainForm->Menus.PasteSpecial})
    entry->OnClick();
  EXPECT_FALSE(ActiveDocument());
  QByteArray png;
  QBuffer buffer(&png);
  Speckled(5, 4).save(&buffer, "PNG");
  offer("image/png", png);
  EXPECT_EQ(enabled(), "PasteSpecial ");

  MainForm->Menus.PasteSpecial.OnClick();
  EXPECT_EQ(Picture(Document().Buffer), Speckled(5, 4));
  EXPECT_EQ(Document().Caption(), "Untitled - 100%");
  EXPECT_TRUE(Document().Dirty && MainForm->LeftBar.HasFocus());
  EXPECT_EQ(enabled(), "Undo Cut Copy Paste PasteSpecial SelectAll ");
  SelectAll_Click();
  offer("text/plain", "text");
  EXPECT_EQ(enabled(), "Undo Cut Copy SelectAll ClearSelection ");
  offer("image/png", "rubbish");
  EXPECT_EQ(Answering({"OK"}, Paste_Click).size(), 1u);
  EXPECT_EQ(Picture(Document().Buffer), Speckled(5, 4));
  // Of the commands that change the picture, clearing alone doesn't mark it.
  for (const auto& [command, marks] :
       {std::pair(&ClearSelection_Click, false), {&Cut_Click, true}, {&Paste_Click, true}}) {
    Document().SetDirtyFalse();
    command();
    EXPECT_EQ(Document().Dirty, marks);
  }
}

TEST_F(Selection, ABoxThatTakesTypingKeepsTheClipboardsKeys) {
  Open();
  SelectAll_Click();
  const QImage before = Picture(Document().Buffer);
  SelectTool(kPenTool);
  NumberBox& box = frmControls->pixelSelector[kPenWidth];
  QWidget *const entry = box.Entry().Widget(), *const picture = Document().PaintArea.Widget();
  for (QWidget* focus : {entry, entry, picture}) {
    box.SetLocked(!box.Locked());
    focus->setFocus();
    QTest::keyClick(focus, Qt::Key_Delete);
    EXPECT_EQ(Picture(Document().Buffer) == before, focus == entry);
    Undo_Click();
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_C, Qt::Key_X, Qt::Key_V})
      QTest::keyClick(focus, key, Qt::ControlModifier);
    EXPECT_EQ(Clipboard::HasBitmap(), focus == picture);
  }
}

TEST_F(Selection, CropKeepsWhatTheMarqueeShows) {
  struct Case {
    int zoom;
    QPoint from, to;
    QRect kept;
  };
  const Case cases[] = {{1, {3, 2}, {10, 9}, {3, 2, 7, 7}},
                        {3, {10, 8}, {40, 40}, {10, 8, 14, 8}},
                        {8, {12, 10}, {-5, -5}, {0, 0, 12, 10}},
                        {2, {5, 5}, {6, 7}, {5, 5, 1, 2}},
                        {1, {5, 5}, {6, 4}, {}},
                        {4, {5, 5}, {5, 12}, {}}};
  Open();
  for (const Case& one : cases) {
    OpenRecentFile(PathOf("speckled.png"));
    Select({1, 1, 4, 4});
    ZoomTo(one.zoom);
    const size_t asked = one.kept.isEmpty() ? 0 : 1;
    EXPECT_EQ(Answering({"No"}, [&] { DragTool(kCropTool, one.from, one.to); }).size(), asked);
    EXPECT_FALSE(Document().CropArea.Visible() || Document().SelectArea.Visible());
    EXPECT_EQ(Picture(Document().Buffer), Speckled(24, 16));
    Answering({"Yes"}, [&] { DragTool(kCropTool, one.from, one.to); });
    EXPECT_EQ(Picture(Document().Buffer), asked ? Speckled(24, 16).copy(one.kept) : Speckled(24, 16));
    EXPECT_EQ(Document().PaintArea.ScaleWidth(), Document().Buffer.ScaleWidth() * one.zoom);
  }
}

TEST_F(Selection, CropAndPasteGoByWhatIsInView) {
  Open(1600, 1200);
  ZoomTo(2);
  Answering({"Yes"}, [&] { DragTool(kCropTool, {100, 1100}, {1300, 350}); });
  EXPECT_EQ(Picture(Document().Buffer), Speckled(1600, 1200).copy(100, 350, 1200, 750));
  EXPECT_EQ(Document().HScroll1.Value(), Document().HScroll1.Max());
  EXPECT_EQ(Document().VScroll1.Value(), 0);

  Select({1, 1, 7, 5});
  Copy_Click();
  Document().HScroll1.SetValue(100);
  Document().VScroll1.SetValue(40);
  Paste_Click();
  EXPECT_EQ(Marquee(), QRect(100, 40, 14, 10));
  EXPECT_EQ(Picture(Document().Buffer).copy(50, 20, 7, 5), Speckled(1600, 1200).copy(101, 351, 7, 5));
}

TEST_F(Selection, CropGoesAsFarAsSixteenBitsOfTheView) {
  Open(32767, 16);
  ZoomTo(8);
  Answering({"Yes"}, [&] {
    SelectTool(kCropTool);
    Press(8 * 4000, 8 * 2);
    for (const int column : {4095, 4200}) MoveTo(8 * column, 8 * 9);
    Release(8 * 4200, 8 * 9);
  });
  EXPECT_EQ(Picture(Document().Buffer), Speckled(32767, 16).copy(4000, 2, 95, 7));
}
