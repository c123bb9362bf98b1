#include "surface/forms/picture/PictureView.h"

#include <QPaintEvent>
#include <QWidget>

#include "surface/forms/picture/Overlay.h"
#include "surface/forms/picture/OverlayTracer.h"
#include "surface/forms/picture/PixelPaint.h"

namespace zelvane {
namespace {

constexpr int kFrame = 1;

/// Inverts what the overlays cover. The difference from white inverts each of red, green and blue exactly.
class OverlayPainter : public OverlayTracer {
 public:
  OverlayPainter(const DeviceGrid& grid, const Rect& inside) : OverlayTracer(inside), grid_(grid) {
    grid_.Painter().save();
    grid_.Painter().setCompositionMode(QPainter::CompositionMode_Difference);
    grid_.Painter().setPen(Qt::NoPen);
    grid_.Painter().setBrush(Qt::white);
  }
  ~OverlayPainter() override { grid_.Painter().restore(); }

  void Cover(const Rect& piece) override {
    const Rect seen = piece.Intersected(Inside());
    if (!seen.IsEmpty()) pieces_.append(grid_.Covered(seen));
  }

  void Finish() {
    grid_.Painter().drawRects(pieces_);
    pieces_.clear();
  }

 private:
  const DeviceGrid& grid_;
  QList<QRect> pieces_;
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

  void PaintPicture(const DeviceGrid& grid, const Rect& part) const {
    const Bitmap nothing;
    PaintPixels(grid, control->source_ ? control->source_->Image() : nothing, control->multiple_, part,
                ToPixel(SystemColor::ButtonFace));
  }

  void PaintOverlays(const DeviceGrid& grid, const Rect& part) const {
    const Rect inside = part.Intersected({0, 0, width() - 2 * kFrame, height() - 2 * kFrame});
    if (inside.IsEmpty() || control->overlays_.empty()) return;
    OverlayPainter painter(grid, inside);
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
