#include <QPainter>
#include <random>

#include "colour/ColorPanel.h"
#include "imageops/Undo.h"
#include "selection/SelectionCommands.h"
#include "session/Session.h"
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
    for (int y = 0; y < std::min(Live().height(), undo.height()); ++y)
      for (int x = 0; x < std::min(Live().width(), undo.width()); ++x) {
        const QRgb kept = Live().pixel(x, y);
        Live().setPixel(x, y, undo.pixel(x, y)), undo.setPixel(x, y, kept);
      }
  }

 private:
  static QImage Stamped(QImage picture, const QImage& piece, QPoint place) {
    for (int y = 0; y < piece.height(); ++y)
      for (int x = 0; x < piece.width(); ++x)
        if (picture.rect().contains(place + QPoint(x, y)))
          picture.setPixel(place + QPoint(x, y), piece.pixel(x, y));
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
    Drag(unit(from.x()), unit(from.y()), unit(to.x()), unit(to.y()));
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
    switch (Below(10)) {
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
