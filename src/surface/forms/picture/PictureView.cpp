#include "surface/forms/picture/PictureView.h"

#include <QPaintEvent>
#include <QWidget>
#include <algorithm>
#include <cstdlib>

#include "surface/forms/picture/Overlay.h"
#include "surface/forms/picture/OverlayTracer.h"
#include "surface/forms/picture/PixelPaint.h"

namespace zelvane {
namespace {

constexpr int kFrame = 1;

/// What an overlay shows above a pixel.
enum class Contrast { Inverse, Black, White };

/// The inverse, unless no channel of it is so far from the pixel that a thin line stands off.
Contrast ContrastTo(Pixel pixel) {
  constexpr int kStandsOff = 64;
  int brightness = 0;
  for (const int shift : {16, 8, 0}) {
    const int channel = static_cast<int>(pixel >> shift & 0xFF);
    if (std::abs(255 - 2 * channel) >= kStandsOff) return Contrast::Inverse;
    brightness += channel;
  }
  return brightness >= 3 * 128 ? Contrast::Black : Contrast::White;
}

/// Inverts what the overlays cover, or paints it in their tone.
class OverlayPainter : public OverlayTracer {
 public:
  OverlayPainter(const DeviceGrid& grid, const Rect& inside, const Bitmap& picture, int multiple)
      : OverlayTracer(inside), grid_(grid), picture_(picture), multiple_(multiple) {
    grid_.Painter().save();
    grid_.Painter().setPen(Qt::NoPen);
  }
  ~OverlayPainter() override { grid_.Painter().restore(); }

  void SetTone(Tone tone) override { tone_ = tone; }

  void Cover(const Rect& piece) override {
    const Rect seen = piece.Intersected(Inside());
    if (seen.IsEmpty()) return;
    if (tone_ != Tone::Inverted) return Add(tone_ == Tone::Black ? black_ : white_, seen);
    Add(inverted_, seen);
    MarkGreys(seen);
  }

  /// The difference from white inverts each of red, green and blue exactly.
  void Finish() {
    Fill(inverted_, Qt::white, QPainter::CompositionMode_Difference);
    Fill(white_, Qt::white, QPainter::CompositionMode_Source);
    Fill(black_, Qt::black, QPainter::CompositionMode_Source);
    tone_ = Tone::Inverted;
  }

 private:
  void Add(QList<QRect>& pieces, const Rect& units) { pieces.append(grid_.Covered(units)); }

  void Fill(QList<QRect>& pieces, Qt::GlobalColor color, QPainter::CompositionMode mode) {
    if (pieces.isEmpty()) return;
    grid_.Painter().setCompositionMode(mode);
    grid_.Painter().setBrush(color);
    grid_.Painter().drawRects(pieces);
    pieces.clear();
  }

  /// Inversion leaves middle greys as they are, or nearly.
  void MarkGreys(const Rect& seen) {
    const int bottom = std::min((seen.bottom - 1) / multiple_ + 1, picture_.Height());
    const int right = std::min((seen.right - 1) / multiple_ + 1, picture_.Width());
    for (int y = seen.top / multiple_; y < bottom; ++y) {
      const Pixel* const row = picture_.Row(y);
      for (int x = seen.left / multiple_, end; x < right; x = end) {
        const Contrast contrast = ContrastTo(row[x]);
        for (end = x + 1; end < right && ContrastTo(row[end]) == contrast;) ++end;
        if (contrast == Contrast::Inverse) continue;
        const Rect run{x * multiple_, y * multiple_, end * multiple_, (y + 1) * multiple_};
        Add(contrast == Contrast::Black ? black_ : white_, run.Intersected(seen));
      }
    }
  }

  const DeviceGrid& grid_;
  const Bitmap& picture_;
  int multiple_;
  Tone tone_ = Tone::Inverted;
  QList<QRect> inverted_, black_, white_;
};

}  // namespace

class PictureView::View : public QWidget {
 public:
  explicit View(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::ClickFocus);
    // A pointer that the parent shows ends at the picture.
    setCursor(Qt::ArrowCursor);
  }

  /// Null while the control is made or has gone.
  PictureView* control = nullptr;

 protected:
  void paintEvent(QPaintEvent* event) override {
    if (!control) return;
    QPainter painter(this);
    const DeviceGrid grid(painter, kFrame);
    for (const QRect& part : event->region()) PaintPicture(grid, InUnits(part));
    PaintOverlays(grid, InUnits(event->region().boundingRect()));
    PaintFrame(grid, width() - 2 * kFrame, height() - 2 * kFrame);
  }

 private:
  static Rect InUnits(const QRect& part) {
    return {part.left() - kFrame, part.top() - kFrame, part.right() + 1 - kFrame, part.bottom() + 1 - kFrame};
  }

  const Bitmap& Picture() const {
    static const Bitmap nothing;
    return control->source_ ? control->source_->Image() : nothing;
  }

  void PaintPicture(const DeviceGrid& grid, const Rect& part) const {
    PaintPixels(grid, Picture(), control->multiple_, part, ToPixel(SystemColor::ButtonFace));
  }

  void PaintOverlays(const DeviceGrid& grid, const Rect& part) const {
    const Rect inside = part.Intersected({0, 0, width() - 2 * kFrame, height() - 2 * kFrame});
    if (inside.IsEmpty() || control->overlays_.empty()) return;
    OverlayPainter painter(grid, inside, Picture(), control->multiple_);
    for (const Overlay* overlay : control->overlays_) {
      if (!overlay->Visible()) continue;
      overlay->Trace(painter);
      painter.Finish();
    }
  }
};

PictureView::PictureView(Control& parent, const std::string& name)
    : Control(&parent, name, new View(parent.Widget())) {
  static_cast<View*>(widget_)->control = this;
}

PictureView::~PictureView() {
  for (Overlay* overlay : overlays_) overlay->view_ = nullptr;
  if (widget_) static_cast<View*>(widget_)->control = nullptr;
}

void PictureView::SetSource(const Canvas* source, int multiple) {
  source_ = source;
  multiple_ = std::max(1, multiple);
}

void PictureView::Refresh() {
  if (widget_) widget_->update();
}

void PictureView::Refresh(const Rect& units) {
  const Rect inside =
      units.Intersected({0, 0, widget_ ? widget_->width() : 0, widget_ ? widget_->height() : 0});
  if (inside.IsEmpty()) return;
  NoteForPainting(*widget_,
                  QRect(inside.left + kFrame, inside.top + kFrame, inside.Width(), inside.Height()));
}

}  // namespace zelvane
