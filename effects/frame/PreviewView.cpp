#include "effects/frame/PreviewView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

namespace zelvane {
namespace {

constexpr double kLeastZoom = 0.01, kMostZoom = 16;
constexpr int kArrowStep = 40;  // logical pixels

/// The picture's own memory as the toolkit sees it.
QImage ImageOf(const Bitmap& bitmap) {
  return {reinterpret_cast<const uchar*>(bitmap.Row(0)), bitmap.Width(), bitmap.Height(),
          static_cast<qsizetype>(bitmap.Width()) * static_cast<qsizetype>(sizeof(Pixel)),
          QImage::Format_RGB32};
}

}  // namespace

PreviewView::PreviewView(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::OpenHandCursor);
  setAccessibleName("Picture");
  setToolTip("Drag to move, turn the wheel to zoom");
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setMinimumSize(160, 120);
}

void PreviewView::Show(Bitmap whole, Bitmap reduced, double scale) {
  whole_ = std::move(whole);
  reduced_ = std::move(reduced);
  scale_ = scale;
  update();
  OnZoom();
}

QSizeF PreviewView::PictureSize() const {
  if (!whole_.IsEmpty()) return {double(whole_.Width()), double(whole_.Height())};
  return QSizeF(reduced_.Width(), reduced_.Height()) / scale_;
}

double PreviewView::Zoom() const {
  if (zoom_ > 0) return zoom_;
  const QSizeF size = PictureSize(), room = QSizeF(this->size()) * devicePixelRatioF();
  return std::clamp(std::min(room.width() / size.width(), room.height() / size.height()), kLeastZoom, 1.0);
}

void PreviewView::Fit() {
  zoom_ = 0;
  middle_ = {0.5, 0.5};
  update();
  OnZoom();
}

QRectF PreviewView::Place() const {
  const QSizeF size = PictureSize() * (Zoom() / devicePixelRatioF());
  const auto start = [](double room, double extent, double middle) {
    if (extent <= room) return (room - extent) / 2;
    return std::clamp(room / 2 - extent * middle, room - extent, 0.0);
  };
  return {QPointF(std::round(start(width(), size.width(), middle_.x())),
                  std::round(start(height(), size.height(), middle_.y()))),
          size};
}

/// What `point` shows stays there.
void PreviewView::ZoomAt(double zoom, QPointF point) {
  const QRectF before = Place();
  const QPointF shown((point.x() - before.x()) / before.width(), (point.y() - before.y()) / before.height());
  zoom_ = std::clamp(zoom, kLeastZoom, kMostZoom);
  const QSizeF size = PictureSize() * (zoom_ / devicePixelRatioF());
  middle_ = {std::clamp(shown.x() + (width() / 2.0 - point.x()) / size.width(), 0.0, 1.0),
             std::clamp(shown.y() + (height() / 2.0 - point.y()) / size.height(), 0.0, 1.0)};
  update();
  OnZoom();
}

void PreviewView::Pan(QPointF by) {
  const QRectF place = Place().translated(by);
  middle_ = {std::clamp((width() / 2.0 - place.x()) / place.width(), 0.0, 1.0),
             std::clamp((height() / 2.0 - place.y()) / place.height(), 0.0, 1.0)};
  update();
}

void PreviewView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Mid));
  const bool is_reduced = whole_.IsEmpty() || Zoom() <= scale_;
  const Bitmap& shown = is_reduced ? reduced_ : whole_;
  if (shown.IsEmpty()) return;
  const QRectF place = Place();
  const double image_zoom = place.width() / shown.Width();
  // Only what can be seen, in whole pixels of the image.
  const QRectF visible = QRectF(rect()).intersected(place).translated(-place.topLeft());
  const QRectF source = QRectF(visible.topLeft() / image_zoom, visible.size() / image_zoom)
                            .toAlignedRect()
                            .intersected(QRect(0, 0, shown.Width(), shown.Height()));
  const QRectF target(place.topLeft() + source.topLeft() * image_zoom, source.size() * image_zoom);
  const double pixels = image_zoom * devicePixelRatioF();
  painter.setRenderHint(QPainter::SmoothPixmapTransform, pixels < 1 || (is_reduced && scale_ < 1));
  painter.drawImage(target, ImageOf(shown), source);
  if (!hasFocus()) return;
  painter.setPen(palette().color(QPalette::Highlight));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void PreviewView::resizeEvent(QResizeEvent*) {
  OnZoom();
}

void PreviewView::wheelEvent(QWheelEvent* event) {
  ZoomAt(Zoom() * std::pow(kStep, event->angleDelta().y() / 120.0), event->position());
}

void PreviewView::mousePressEvent(QMouseEvent* event) {
  dragged_from_ = event->position();
  setCursor(Qt::ClosedHandCursor);
}

void PreviewView::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() == Qt::NoButton) return;
  Pan(event->position() - dragged_from_);
  dragged_from_ = event->position();
}

void PreviewView::mouseReleaseEvent(QMouseEvent*) {
  setCursor(Qt::OpenHandCursor);
}

void PreviewView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
      return Pan({kArrowStep, 0});
    case Qt::Key_Right:
      return Pan({-kArrowStep, 0});
    case Qt::Key_Up:
      return Pan({0, kArrowStep});
    case Qt::Key_Down:
      return Pan({0, -kArrowStep});
    case Qt::Key_Plus:
      return ZoomIn();
    case Qt::Key_Minus:
      return ZoomOut();
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace zelvane
