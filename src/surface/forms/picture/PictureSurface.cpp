#include "surface/forms/picture/PictureSurface.h"

#include <QPaintEvent>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Events.h"
#include "surface/forms/controls/IconArt.h"
#include "surface/forms/controls/SystemColors.h"
#include "surface/forms/picture/PixelPaint.h"
#include "surface/raster/FailingStep.h"

namespace zelvane {

class PictureSurface::View : public QWidget {
 public:
  explicit View(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    // A pointer that the parent shows ends at the surface.
    setCursor(Qt::ArrowCursor);
  }

  /// Null while the surface is made or has gone.
  PictureSurface* surface = nullptr;

 protected:
  void paintEvent(QPaintEvent* event) override {
    if (!surface) return;
    QPainter painter(this);
    const DeviceGrid grid(painter, surface->FrameWidth());
    const int frame = surface->FrameWidth();
    for (const QRect& part : event->region()) {
      const Rect units{part.left() - frame, part.top() - frame, part.right() + 1 - frame,
                       part.bottom() + 1 - frame};
      PaintPixels(grid, surface->Image(), 1, units, ToPixel(surface->BackColor()));
    }
    PaintIcon(grid);
    if (frame > 0) PaintFrame(grid, width() - 2 * frame, height() - 2 * frame);
  }

  void changeEvent(QEvent* event) override {
    if (event->type() == QEvent::PaletteChange && surface) FollowPalette();
  }

  void resizeEvent(QResizeEvent*) override {
    if (surface) surface->Follow(width(), height());
  }

 private:
  /// A part of a window stays one in a new palette: what was drawn in the old colours gets the new ones.
  void FollowPalette() {
    TakeSystemColors();
    const SystemShades before = std::exchange(shades_, ShadesOfParts());
    if (before == shades_ || !IsSystemColor(surface->BackColor())) return;
    for (int y = 0; y < surface->ScaleHeight(); ++y) {
      Pixel* row = surface->WritableRow(y);
      for (Pixel* pixel = row; pixel != row + surface->ScaleWidth(); ++pixel) {
        const auto shade = std::find(before.begin(), before.end(), *pixel);
        if (shade != before.end()) *pixel = shades_[static_cast<size_t>(shade - before.begin())];
      }
    }
    update();
  }

  void PaintIcon(const DeviceGrid& grid) const {
    const QPixmap icon = IconArt(surface->icon_, surface->icon_size_, grid.Scale());
    if (icon.isNull()) return;
    const int frame = surface->FrameWidth();
    const QRect inside = grid.Covered({0, 0, width() - 2 * frame, height() - 2 * frame});
    const QPoint corner(inside.left() + (inside.width() - icon.width()) / 2,
                        inside.top() + (inside.height() - icon.height()) / 2);
    grid.Painter().drawPixmap(QRect(corner, icon.size()), icon, icon.rect());
  }

  SystemShades shades_ = ShadesOfParts();
};

PictureSurface::PictureSurface(Control& parent, const std::string& name, Frame frame, Kind kind)
    : Control(&parent, name, kind == Kind::Shown ? new View(parent.Widget()) : nullptr), frame_(frame) {
  if (widget_) static_cast<View*>(widget_)->surface = this;
}

PictureSurface::~PictureSurface() {
  if (widget_) static_cast<View*>(widget_)->surface = nullptr;
}

int PictureSurface::ToPixels(Single units) const {
  const auto pixels = ToInt32(units / UnitsPerPixel());
  if (!pixels) throw SurfaceTooLarge("a side is too long for a surface");
  return *pixels;
}

/// Gives the canvas the size inside of the outer one, in pixels.
void PictureSurface::Take(int width, int height) {
  const int frames = 2 * FrameWidth();
  taking_ = true;
  const auto resize = [&] { Resize(std::max(0, width - frames), std::max(0, height - frames)); };
  try {
    resize();
  } catch (...) {
    taking_ = false;
    throw;
  }
  taking_ = false;
}

void PictureSurface::SetWidth(Single width) {
  const int pixels = ToPixels(width);
  Take(pixels, ToPixels(height_));
  Control::SetWidth(static_cast<Single>(pixels * UnitsPerPixel()));
}

void PictureSurface::SetHeight(Single height) {
  const int pixels = ToPixels(height);
  Take(ToPixels(width_), pixels);
  Control::SetHeight(static_cast<Single>(pixels * UnitsPerPixel()));
}

void PictureSurface::SetLeft(Single left) {
  Move(left, Top());
}
void PictureSurface::SetTop(Single top) {
  Move(Left(), top);
}

void PictureSurface::Move(Single left, Single top) {
  const double unit = UnitsPerPixel();
  Control::Move(static_cast<Single>(RoundHalfEven(left / unit) * unit),
                static_cast<Single>(RoundHalfEven(top / unit) * unit));
}

void PictureSurface::SizeChanged() {
  if (taking_) return;
  const double unit = UnitsPerPixel();
  width_ = static_cast<Single>((ScaleWidth() + 2 * FrameWidth()) * unit);
  height_ = static_cast<Single>((ScaleHeight() + 2 * FrameWidth()) * unit);
  Place();
}

void PictureSurface::Place() {
  if (!widget_) return;
  const double unit = UnitsPerPixel();
  // The main window places a docked panel; only the size across the side is the panel's own.
  if (align_ == Align::Top || align_ == Align::Bottom)
    return widget_->resize(widget_->width(), ToSize(height_ / unit));
  if (align_ == Align::Left || align_ == Align::Right)
    return widget_->resize(ToSize(width_ / unit), widget_->height());
  Control::Place();
}

/// Takes over a size that the widget was given from outside.
void PictureSurface::Follow(int width, int height) {
  const double unit = UnitsPerPixel();
  if (width == ToSize(width_ / unit) && height == ToSize(height_ / unit)) return;
  // A docked panel bears the size even where there is no memory for its pixels: what lacks is painted plain.
  Attempt([&] { Take(width, height); });
  width_ = static_cast<Single>(width * unit);
  height_ = static_cast<Single>(height * unit);
  FireEvent(OnResize);
}

void PictureSurface::Refresh() {
  if (!widget_) return;
  const Rect damage = TakeDamage();
  if (damage.IsEmpty()) return;
  NoteForPainting(*widget_, QRect(damage.left + FrameWidth(), damage.top + FrameWidth(), damage.Width(),
                                  damage.Height()));
}

void PictureSurface::SetIcon(const std::string& name, int size) {
  icon_ = name;
  icon_size_ = size;
  DrawIconAhead(name, size);
  if (widget_) widget_->update();
}

void PictureSurface::SetAlign(Align align) {
  align_ = align;
  if (Parent()) Parent()->Dock(*this, align);
}

}  // namespace zelvane
