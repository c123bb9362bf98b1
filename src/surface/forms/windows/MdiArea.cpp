#include "surface/forms/windows/MdiArea.h"

#include <QLayout>
#include <QScrollBar>
#include <QShowEvent>
#include <QStyle>
#include <algorithm>
#include <cmath>

#include "surface/forms/controls/Conversions.h"
#include "surface/raster/Units.h"

namespace zelvane {
namespace {

constexpr int kCorners = 5;

}  // namespace

QSize WithFrame(const QMdiSubWindow& child, QSize inside) {
  return inside.grownBy(child.contentsMargins());
}

void LayOutChild(QMdiSubWindow& child) {
  if (child.layout()) child.layout()->activate();
}

ChildArea::ChildArea(QWidget* parent) : QMdiArea(parent) {
  setActivationOrder(ActivationHistoryOrder);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  ShadeBackground();
}

void ChildArea::ShadeBackground() {
  // One shade below the window's own, in light and in dark palettes.
  setBackground(palette().color(QPalette::Window).darker(130));
}

void ChildArea::changeEvent(QEvent* event) {
  QMdiArea::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ShadeBackground();
}

void ChildArea::showEvent(QShowEvent* event) {
  QMdiArea::showEvent(event);
  for (const Newcomer& newcomer : std::exchange(waiting_, {})) Place(newcomer);
}

void ChildArea::PlaceChild(QMdiSubWindow& child, QSize inside, bool keeps_place) {
  if (isVisible()) return Place({&child, inside, keeps_place});
  waiting_.push_back({&child, inside, keeps_place});
}

void ChildArea::Forget(const QMdiSubWindow& child) {
  std::erase_if(waiting_, [&](const Newcomer& newcomer) { return newcomer.child == &child; });
}

void ChildArea::Place(const Newcomer& newcomer) {
  QMdiSubWindow& child = *newcomer.child;
  if (child.isMaximized() || child.isMinimized()) return;
  const QSize asked = WithFrame(child, newcomer.inside);
  const QPoint corner = newcomer.keeps_place ? child.pos() : NextCorner();
  const QSize room = viewport()->size() - QSize(corner.x(), corner.y());
  const auto side = [](int inside, int whole, int rooms) {
    return inside > 0 ? std::min(whole, rooms) : rooms * 2 / 3;
  };
  const QSize size(side(newcomer.inside.width(), asked.width(), room.width()),
                   side(newcomer.inside.height(), asked.height(), room.height()));
  child.resize(size.expandedTo(child.minimumSizeHint()));
  child.move(corner);
  LayOutChild(child);
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
