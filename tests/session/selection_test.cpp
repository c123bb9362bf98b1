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
#include "imageops/Flip.h"
#include "imageops/InvertImage.h"
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
  void Lay(const QImage& piece, QPoint place) { Drop(), piece_ = piece, place_ = place; }
  void Lift(const QRect& area) {
    Drop();
    const QRect inside = area & ground_.rect();
    if (inside.isEmpty()) return;
    Lay(ground_.copy(inside), inside.topLeft());
    QPainter(&ground_).fillRect(inside, QColor::fromRgb(kGround));
  }
  void LiftAll() { Lift(ground_.rect()); }
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
  static QImage Seen() { return Picture(Document().Buffer); }
  static QRect Marquee() { return PlaceOf(Document().SelectArea); }
  /// In the picture, or as far beyond it.
  QPoint Somewhere(int beyond = 0) {
    const int x = Below(24 + 2 * beyond), y = Below(16 + 2 * beyond);
    return QPoint(x, y) - QPoint(beyond, beyond);
  }
  int Below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  /// A drag of the tool between image pixels, somewhere within each.
  void DragTool(int16_t tool, QPoint from, QPoint to) {
    SelectTool(tool);
    const int multiple = Document().ZoomMultiple();
    const auto unit = [&](int pixel) { return pixel * multiple + Below(multiple); };
    Press(unit(from.x()), unit(from.y()));
    MoveTo(unit((from.x() + to.x()) / 2), unit((from.y() + to.y()) / 2));
    MoveTo(unit(to.x()), unit(to.y()));
    for (const auto command : {Undo_Click, FlipVertical_Click, InvertImage_Click}) command();  // in vain
    // A marquee that is still being drawn has lifted nothing that it would follow.
    if (tool == kSelectAreaTool) Document().RealignZoom(-1, -1);
    Release(unit(to.x()), unit(to.y()));
  }
  void Select(const QRect& area) {
    DragTool(kSelectAreaTool, area.topLeft(), area.bottomRight() + QPoint(1, 1));
  }
  std::mt19937 random_{7};
};

}  // namespace

TEST_F(Selection, LeavesThePixelsThatAPersonExpectsAfterAnySequence) {
  Open();
  PlainDocument plain(Seen());
  QImage clipboard;
  const auto drag = [&](int16_t tool, QPoint from, QPoint to) {
    DragTool(tool, from, to);
    plain.undo = plain.Live();
  };
  const auto select = [&] {
    const QPoint from = Somewhere(), to = Somewhere(6);
    drag(kSelectAreaTool, from, to);
    const QRect area = QRectF(from, to).normalized().toRect();
    plain.Lift(area.width() <= 1 && area.height() <= 1 ? QRect() : area);
  };
  const auto move = [&] {
    const QPoint from = Somewhere(), to = Somewhere(12);
    drag(kCursorTool, from, to);
    plain.MoveBy(to - from);
  };
  const auto dot = [&] {
    const QPoint at = Somewhere();
    drag(kPenTool, at, at);
    plain.Dot(at);
  };
  const auto cut = [&] {
    Cut_Click();
    if (!plain.HasPiece()) plain.LiftAll();
    clipboard = plain.Live();
    plain.Wipe();
  };
  const auto clear = [&] {
    ClearSelection_Click();
    if (plain.HasPiece()) plain.undo = plain.Seen(), plain.Wipe();
  };
  const auto paste = [&] {
    Paste_Click();
    if (!clipboard.isNull()) plain.Lay(clipboard, {0, 0});
  };
  const std::vector<std::pair<std::string, std::function<void()>>> acts = {
      {"select", select},
      {"move", move},
      {"dot", dot},
      {"undo", [&] { Undo_Click(), plain.Undo(); }},
      {"cut", cut},
      {"clear", clear},
      {"select all", [&] { SelectAll_Click(), plain.LiftAll(); }},
      {"paste", paste},
      {"zoom", [&] { ZoomTo(1 + Below(8)); }}};
  std::string done;
  for (int step = 0; step < 10000; ++step) {
    const auto& [name, act] = acts[static_cast<size_t>(Below(static_cast<int>(acts.size())))];
    act();
    done = name + (step % 12 ? ", " + done : "");
    ASSERT_EQ(Seen(), plain.Seen()) << step << " after (last first): " << done;
    ASSERT_EQ(Document().SelectArea.Visible(), plain.HasPiece()) << step << ": " << done;
    if (!plain.HasPiece()) continue;
    const QRect shown(plain.Place() * Document().ZoomMultiple(),
                      plain.Live().size() * Document().ZoomMultiple());
    ASSERT_EQ(Marquee(), shown) << step << ": " << done;
  }
}

TEST_F(Selection, GoesFarOffThePictureAndComesBack) {
  Open();
  const QImage before = Seen();
  FloatSelection(Document(), Bitmap(32767, 1, kInk), 0, 3);
  DragTool(kCursorTool, {0, 0}, {20000, 0});
  EXPECT_EQ(Seen(), before);
  // Beyond 16 bits a drag ends where it began.
  DragTool(kCursorTool, {0, 0}, {20000, 0});
  EXPECT_EQ(Document().BufferSelected.Left(), 20000);
  DragTool(kCursorTool, {0, 0}, {-32000, 2});
  QImage expected = before;
  for (int x = 0; x < 24; ++x) expected.setPixel(x, 5, kInk);
  EXPECT_EQ(Document().BufferSelected.Left(), -12000);
  EXPECT_EQ(Seen(), expected);
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
  MainMenu& menu = MainForm->Menus;
  Menu* const entries[] = {&menu.Undo,         &menu.Cut,       &menu.Copy,          &menu.Paste,
                           &menu.PasteSpecial, &menu.SelectAll, &menu.ClearSelection};
  const auto enabled = [&] {
    Edit_Click();
    std::string names;
    for (const Menu* entry : entries) names += entry->Enabled() ? entry->Name() + " " : "";
    return names;
  };
  const auto offer = [](const char* format, const QByteArray& bytes) {
    auto* data = new QMimeData;
    data->setData(format, bytes);
    QGuiApplication::clipboard()->setMimeData(data);
  };
  offer("text/plain", "text");
  EXPECT_EQ(enabled(), "");
  for (Menu* entry : entries) entry->OnClick();
  EXPECT_FALSE(ActiveDocument());
  QBuffer png;
  Speckled(5, 4).save(&png, "PNG");
  offer("image/png", png.data());
  EXPECT_EQ(enabled(), "PasteSpecial ");

  menu.PasteSpecial.OnClick();
  EXPECT_EQ(Seen(), Speckled(5, 4));
  EXPECT_EQ(Document().Caption(), "Untitled - 100%");
  EXPECT_TRUE(Document().Dirty && MainForm->LeftBar.HasFocus());
  EXPECT_EQ(enabled(), "Undo Cut Copy Paste PasteSpecial SelectAll ");
  SelectAll_Click();
  offer("text/plain", "text");
  EXPECT_EQ(enabled(), "Undo Cut Copy SelectAll ClearSelection ");
  offer("image/png", "rubbish");
  EXPECT_EQ(Answering({"OK"}, Paste_Click).size(), 1u);
  EXPECT_EQ(Seen(), Speckled(5, 4));
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
  const QImage before = Seen();
  SelectTool(kPenTool);
  NumberBox& box = frmControls->pixelSelector[kPenWidth];
  QWidget *const entry = box.Entry().Widget(), *const picture = Document().PaintArea.Widget();
  for (QWidget* focus : {entry, entry, picture}) {
    box.SetLocked(!box.Locked());
    focus->setFocus();
    QTest::keyClick(focus, Qt::Key_Delete);
    EXPECT_EQ(Seen() == before, focus == entry);
    Undo_Click();
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_C, Qt::Key_X, Qt::Key_V})
      QTest::keyClick(focus, key, Qt::ControlModifier);
    EXPECT_EQ(Clipboard::HasBitmap(), focus == picture);
  }
}

TEST_F(Selection, CropKeepsWhatTheMarqueeShows) {
  const std::tuple<int, QPoint, QPoint, QRect> cases[] = {{1, {3, 2}, {10, 9}, {3, 2, 7, 7}},
                                                          {3, {10, 8}, {40, 40}, {10, 8, 14, 8}},
                                                          {8, {12, 10}, {-5, -5}, {0, 0, 12, 10}},
                                                          {2, {5, 5}, {6, 7}, {5, 5, 1, 2}},
                                                          {1, {5, 5}, {6, 4}, {}},
                                                          {4, {5, 5}, {5, 12}, {}}};
  Open();
  for (const auto& [zoom, from, to, kept] : cases) {
    OpenRecentFile(PathOf("speckled.png"));
    Select({1, 1, 4, 4});
    ZoomTo(zoom);
    const auto crop = [&, &from = from, &to = to] { DragTool(kCropTool, from, to); };
    EXPECT_EQ(Answering({"No"}, crop).empty(), kept.isEmpty());
    EXPECT_FALSE(Document().CropArea.Visible() || Document().SelectArea.Visible());
    EXPECT_EQ(Seen(), Speckled(24, 16));
    Answering({"Yes"}, crop);
    EXPECT_EQ(Seen(), kept.isEmpty() ? Speckled(24, 16) : Speckled(24, 16).copy(kept));
    EXPECT_EQ(Document().PaintArea.ScaleWidth(), Document().Buffer.ScaleWidth() * zoom);
  }
}

TEST_F(Selection, CropAndPasteGoByWhatIsInView) {
  Open(1600, 1200);
  ZoomTo(2);
  Answering({"Yes"}, [&] { DragTool(kCropTool, {100, 1100}, {1300, 350}); });
  EXPECT_EQ(Seen(), Speckled(1600, 1200).copy(100, 350, 1200, 750));
  EXPECT_EQ(Document().HScroll1.Value(), Document().HScroll1.Max());
  EXPECT_EQ(Document().VScroll1.Value(), 0);

  Select({1, 1, 7, 5});
  Copy_Click();
  Document().HScroll1.SetValue(100);
  Document().VScroll1.SetValue(40);
  Paste_Click();
  EXPECT_EQ(Marquee(), QRect(100, 40, 14, 10));
  EXPECT_EQ(Seen().copy(50, 20, 7, 5), Speckled(1600, 1200).copy(101, 351, 7, 5));
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
  EXPECT_EQ(Seen(), Speckled(32767, 16).copy(4000, 2, 95, 7));
}
