#include "surface/forms/windows/MdiArea.h"

#include <QScrollBar>
#include <QShowEvent>
#include <QStyle>
#include <algorithm>
#include <cmath>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/SystemColors.h"
#include "surface/raster/Units.h"

namespace zelvane {
namespace {

constexpr int kCorners = 5;

}  // namespace

ChildArea::ChildArea(QWidget* parent) : QMdiArea(parent) {
  setActivationOrder(ActivationHistoryOrder);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  ShadeBackground();
}

void ChildArea::ShadeBackground() {
  constexpr int kShade = 130;  // percent
  setBackground(GroundOf(palette(), kShade));
}

void ChildArea::changeEvent(QEvent* event) {
  QMdiArea::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ShadeBackground();
}

void ChildArea::showEvent(QShowEvent* event) {
  QMdiArea::showEvent(event);
  for (Fitting& fitting : fittings_)
    if (!fitting.given.isValid()) Place(fitting);
}

void ChildArea::PlaceChild(ChildFrame& child, QSize inside, bool keeps_place) {
  Forget(child);
  fittings_.push_back({&child, inside, keeps_place});
  if (isVisible()) Place(fittings_.back());
}

void ChildArea::Forget(const ChildFrame& child) {
  std::erase_if(fittings_, [&](const Fitting& fitting) { return fitting.child == &child; });
}

/// What the child asks for, as far as there's room; two thirds of the room where it leaves that to the area.
QSize ChildArea::SizeWithin(const Fitting& fitting, QSize room) {
  const ChildFrame& child = *fitting.child;
  const QSize asked = child.WithFrame(fitting.inside).expandedTo(QSize(child.WidthForCaption(), 0));
  const QSize size(
      fitting.inside.width() > 0 ? std::min(asked.width(), room.width()) : room.width() * 2 / 3,
      fitting.inside.height() > 0 ? std::min(asked.height(), room.height()) : room.height() * 2 / 3);
  return size.expandedTo(child.minimumSizeHint());
}

void ChildArea::Give(Fitting& fitting, const QRect& place) {
  fitting.given = place;
  const bool before = std::exchange(giving_, true);
  ChildFrame& child = *fitting.child;
  child.setGeometry(place);
  child.LayOut();
  giving_ = before;
}

void ChildArea::Place(Fitting& fitting) {
  const ChildFrame& child = *fitting.child;
  if (child.isMaximized() || child.isMinimized()) return;
  const QPoint corner = fitting.keeps_place ? child.pos() : NextCorner();
  Give(fitting, QRect(corner, SizeWithin(fitting, viewport()->size() - QSize(corner.x(), corner.y()))));
}

void ChildArea::FitChild(const ChildFrame& child, QSize inside) {
  for (Fitting& fitting : fittings_) {
    if (fitting.child != &child) continue;
    fitting.inside = inside.expandedTo(fitting.inside);
    if (!fitting.given.isValid() || child.isMaximized() || child.isMinimized()) return;
    const QSize room = viewport()->size() - QSize(child.x(), child.y());
    return Give(fitting, QRect(child.pos(), SizeWithin(fitting, room).expandedTo(child.size())));
  }
}

/// The window manager may have its say only after a child has come up: what was cut to the room follows it.
void ChildArea::resizeEvent(QResizeEvent* event) {
  QMdiArea::resizeEvent(event);
  for (size_t i = 0; i < fittings_.size(); ++i) {
    Fitting& fitting = fittings_[i];
    const QRect& given = fitting.given;
    if (!given.isValid() || fitting.child->geometry() != given) continue;
    Give(fitting,
         QRect(given.topLeft(), SizeWithin(fitting, viewport()->size() - QSize(given.left(), given.top()))));
  }
}

bool ChildArea::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && !giving_) {
    std::erase_if(fittings_, [&](const Fitting& fitting) {
      const ChildFrame& child = *fitting.child;
      const bool is_normal = !child.isMaximized() && !child.isMinimized() && child.isVisible();
      return &child == watched && is_normal && fitting.given.isValid() &&
             child.size() != fitting.given.size();
    });
  }
  return QMdiArea::eventFilter(watched, event);
}

/// A few corners down the area's diagonal, a title bar apart, over and over.
QPoint ChildArea::NextCorner() {
  const int at = (style()->pixelMetric(QStyle::PM_TitleBarHeight) + 4) * (cascade_++ % kCorners);
  return QPoint(at, at);
}

/// Puts every shown child that isn't minimised into `normal`, in the order of `children`, and returns the
/// room for them: the area without the row of the minimised ones.
QRect ChildArea::Restored(const QList<QMdiSubWindow*>& children, std::vector<QMdiSubWindow*>& normal) {
  int row = 0;
  for (QMdiSubWindow* child : children) {
    if (child->isHidden()) continue;
    if (child->isMinimized()) {
      row = std::max(row, child->height());
      continue;
    }
    if (child->isMaximized()) child->showNormal();
    normal.push_back(child);
  }
  horizontalScrollBar()->setValue(0);
  verticalScrollBar()->setValue(0);
  return QRect(QPoint(0, 0), maximumViewportSize() - QSize(0, row));
}

void ChildArea::Cascade() {
  std::vector<QMdiSubWindow*> children;
  const QRect room = Restored(subWindowList(StackingOrder), children);
  cascade_ = 0;
  for (QMdiSubWindow* child : children) {
    child->resize((room.size() * 2 / 3).expandedTo(child->minimumSizeHint()));
    child->move(NextCorner());
  }
}

void ChildArea::Tile(bool side_by_side) {
  std::vector<QMdiSubWindow*> children;
  const QRect room = Restored(subWindowList(CreationOrder), children);
  const int count = static_cast<int>(children.size());
  if (count == 0) return;
  // Up to three windows are one stack; more make about as many stacks as each has windows.
  const int stacks = static_cast<int>(std::sqrt(count));
  const QSize size = side_by_side ? room.size().transposed() : room.size();
  for (int i = 0, stack = 0; stack < stacks; ++stack) {
    const int left = size.width() * stack / stacks, right = size.width() * (stack + 1) / stacks;
    // The stacks with a window more than the others come last.
    const int windows = (count + stack) / stacks;
    for (int at = 0; at < windows; ++at, ++i) {
      const int top = size.height() * at / windows, bottom = size.height() * (at + 1) / windows;
      const QRect place(left, top, right - left, bottom - top);
      children[static_cast<size_t>(i)]->setGeometry(
          side_by_side ? QRect(place.y(), place.x(), place.height(), place.width()) : place);
    }
  }
}

DockField::DockField() : children_(new ChildArea(this)) {}

void DockField::Dock(Control& panel, QWidget& widget, Align align) {
  std::erase_if(panels_, [&](const Panel& one) { return one.widget == &widget; });
  widget.removeEventFilter(this);
  if (align != Align::None) {
    panels_.push_back({&panel, &widget, align});
    if (widget.parentWidget() != this) widget.setParent(this);
    widget.installEventFilter(this);
    connect(&widget, &QObject::destroyed, this, [this] {
      std::erase_if(panels_, [](const Panel& one) { return !one.widget; });
      LayOut();
    });
    widget.setVisible(panel.Visible());
  }
  LayOut();
}

bool DockField::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Resize:
    case QEvent::Move:
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
      LayOut();
      break;
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

void DockField::resizeEvent(QResizeEvent*) {
  LayOut();
}

void DockField::LayOut() {
  if (laying_out_) return;
  laying_out_ = true;
  QRect room = rect();
  const auto cut = [&room](const Panel& panel) {
    const double unit = panel.control->Parent()->ScaleMode() == Scale::Twips ? kTwipsPerPixel : 1;
    const int high = ToSize(panel.control->Height() / unit), wide = ToSize(panel.control->Width() / unit);
    QRect place = room;
    if (panel.align == Align::Top) place.setHeight(high), room.setTop(room.top() + high);
    if (panel.align == Align::Bottom)
      place.setTop(room.bottom() + 1 - high), room.setHeight(room.height() - high);
    if (panel.align == Align::Left) place.setWidth(wide), room.setLeft(room.left() + wide);
    if (panel.align == Align::Right)
      place.setLeft(room.right() + 1 - wide), room.setWidth(room.width() - wide);
    panel.widget->setGeometry(place);
  };
  // Top and bottom run over the full width, the sides between them.
  for (const bool is_side : {false, true}) {
    for (const Panel& panel : panels_) {
      const bool at_side = panel.align == Align::Left || panel.align == Align::Right;
      if (panel.widget && at_side == is_side && !panel.widget->isHidden()) cut(panel);
    }
  }
  children_->setGeometry(room);
  laying_out_ = false;
}

}  // namespace zelvane
