#include "surface/forms/windows/MdiFrame.h"

#include <QApplication>
#include <QMimeData>
#include <QPainter>
#include <QPointer>
#include <algorithm>

#include "surface/forms/controls/Events.h"
#include "surface/forms/controls/IconArt.h"
#include "surface/forms/windows/DroppedFiles.h"
#include "surface/forms/windows/EventLoop.h"
#include "surface/system/text/QtText.h"

namespace zelvane {
namespace {

/// Side of the icon in a child's title bar, in logical pixels.
constexpr int kChildIcon = 16;

std::vector<std::string> FilesOf(const QDropEvent& drop) {
  return DroppedFiles(drop.mimeData()->data("text/uri-list").toStdString());
}

bool IsPath(const std::string& file) {
  return file.starts_with('/');
}

}  // namespace

MdiFrame::MdiFrame() : bar_(new CaptionBar), field_(new DockField) {
  // A bar that the desktop shows elsewhere has no room for the buttons of a child that fills the window.
  bar_->setNativeMenuBar(false);
  setMenuBar(bar_);
  setCentralWidget(field_);
  connect(&field_->Children(), &QMdiArea::subWindowActivated, this,
          [this](QMdiSubWindow* window) { Activated(window); });
  setAcceptDrops(true);
  // Keys are the window's own until a child or a press takes them, rather than those of the first box in it.
  setFocus();
}

ChildFrame* MdiFrame::AddChild(Form& form, QWidget& inside) {
  auto* child = new ChildFrame(form);
  child->OnTitleChanged = [this] { TellCaption(); };
  child->OnMinimised = [this, &form] { Minimised(form); };
  child->OnTab = [this](bool next) { return focusNextPrevChild(next); };
  child->setObjectName(ToQt(form.Name()) + "Frame");
  child->setAttribute(Qt::WA_DeleteOnClose, false);
  child->setWidget(&inside);
  field_->Children().addSubWindow(child);
  return child;
}

void MdiFrame::PlaceChild(ChildFrame& child, QSize inside, bool keeps_place) {
  child.setWindowIcon(IconArt("zelvane", kChildIcon, devicePixelRatioF()));
  field_->Children().PlaceChild(child, inside, keeps_place);
}

void MdiFrame::FitChild(ChildFrame& child, QSize inside) {
  field_->Children().FitChild(child, inside);
}

void MdiFrame::SetChildCaption(ChildFrame& child, const QString& caption) {
  child.SetCaption(caption);
}

void MdiFrame::ActivateChild(Form& form) {
  field_->Children().setActiveSubWindow(form.engine_->ChildFrame());
  // The toolkit tells of it only while the main window has the keyboard.
  SetActive(&form);
}

/// What had the keyboard last in the active child; null where there is no child to see.
QWidget* MdiFrame::KeyReceiverOfChildren() const {
  const ChildFrame* child = active_ ? active_->engine_->ChildFrame() : nullptr;
  if (!child || child->isMinimized()) return nullptr;
  return child->focusWidget() ? child->focusWidget() : child->widget();
}

/// Tab goes round the parts of the panels and the active child, which is one stop among them. The toolkit
/// would keep it within a child.
bool MdiFrame::focusNextPrevChild(bool next) {
  QWidget& children = field_->Children();
  QWidget* from = focusWidget() ? focusWidget() : this;
  if (children.isAncestorOf(from)) from = &children;
  const auto after = [next](QWidget* one) {
    return next ? one->nextInFocusChain() : one->previousInFocusChain();
  };
  for (QWidget* one = after(from); one != from; one = after(one)) {
    QWidget* stop = one == &children ? KeyReceiverOfChildren() : one;
    if (stop != one ? !stop : children.isAncestorOf(one) || !(one->focusPolicy() & Qt::TabFocus)) continue;
    if (stop->window() != this || !stop->isVisible() || !stop->isEnabled()) continue;
    stop->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
  }
  return false;
}

void MdiFrame::Activated(QMdiSubWindow* window) {
  // None: the main window has lost the keyboard, but its active form stays.
  if (window && !holding_) SetActive(&static_cast<ChildFrame*>(window)->Served());
}

void MdiFrame::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) ShowActive();
}

/// While another window has the keyboard the toolkit leaves a child that becomes the active one as it was.
/// The keyboard stays with a panel that has got it meanwhile.
void MdiFrame::ShowActive() {
  QMdiArea& children = field_->Children();
  ChildFrame* child = active_ ? active_->engine_->ChildFrame() : nullptr;
  if (!child || children.activeSubWindow() == child) return;
  QWidget* const keyboard = focusWidget();
  children.setActiveSubWindow(child);
  if (keyboard && !children.isAncestorOf(keyboard)) keyboard->setFocus();
}

void MdiFrame::SetActive(Form* form) {
  if (form == active_ || (form && form->unloading_)) return;
  Form* before = std::exchange(active_, form);
  TellCaption();
  if (before) FireEvent(before->OnDeactivate);
  if (active_ != form) return;
  if (form) FireEvent(form->OnActivate);
  if (active_ == form) FireEvent(OnActiveChanged);
}

/// The child that was active before this one, one that isn't minimised if there is such; null without any.
Form* MdiFrame::NextTo(const Form& form) const {
  const QList<QMdiSubWindow*> latest = field_->Children().subWindowList(QMdiArea::ActivationHistoryOrder);
  Form* minimised = nullptr;
  for (auto window = latest.rbegin(); window != latest.rend(); ++window) {
    Form& next = static_cast<ChildFrame*>(*window)->Served();
    if (&next == &form || next.unloading_ || (*window)->isHidden()) continue;
    if (!(*window)->isMinimized()) return &next;
    if (!minimised) minimised = &next;
  }
  return minimised;
}

void MdiFrame::LeaveChild(Form& form) {
  if (&form != active_) return;
  if (form_->unloading_) {
    active_ = nullptr;
    return;
  }
  if (Form* next = NextTo(form)) return ActivateChild(*next);
  // The toolkit would give the keyboard to the first box of the panels.
  setFocus();
  SetActive(nullptr);
}

void MdiFrame::Minimised(const Form& form) {
  Form* next = &form == active_ && !holding_ ? NextTo(form) : nullptr;
  if (next && !next->engine_->ChildFrame()->isMinimized()) ActivateChild(*next);
}

void MdiFrame::RemoveChild(Form& form) {
  LeaveChild(form);
  if (active_ == &form) active_ = nullptr;
  field_->Children().Forget(*form.engine_->ChildFrame());
}

void MdiFrame::TellCaption() {
  const ChildFrame* child = active_ ? active_->engine_->ChildFrame() : nullptr;
  bar_->SetCaption(child && child->isMaximized() && !child->isMinimized() ? child->Caption() : QString());
}

void MdiFrame::dragEnterEvent(QDragEnterEvent* event) {
  const std::vector<std::string> files = FilesOf(*event);
  if (std::ranges::any_of(files, IsPath)) TakeCopies(*event);
}

/// The files stay where they are, so they are taken as copies. Nothing is taken while a question is up.
void MdiFrame::TakeCopies(QDropEvent& event) const {
  const bool is_free = isEnabled() && !QApplication::activeModalWidget();
  if (!is_free || !(event.possibleActions() & Qt::CopyAction)) return event.ignore();
  event.setDropAction(Qt::CopyAction);
  event.accept();
}

/// Whoever dragged them waits for this to return, which it does before any file is opened.
void MdiFrame::dropEvent(QDropEvent* event) {
  TakeCopies(*event);
  if (!event->isAccepted()) return;
  Defer([frame = QPointer(this), files = FilesOf(*event)] {
    if (frame) FireEvent(frame->OnFilesDropped, files);
  });
}

void CaptionBar::SetCaption(const QString& caption) {
  if (caption == caption_) return;
  caption_ = caption;
  update();
}

void CaptionBar::paintEvent(QPaintEvent* event) {
  QMenuBar::paintEvent(event);
  if (caption_.isEmpty()) return;
  const int gap = fontMetrics().horizontalAdvance('x') * 2;
  QRect room = rect().adjusted(gap, 0, -gap, 0);
  for (const QAction* action : actions()) {
    const QRect menu = actionGeometry(const_cast<QAction*>(action));
    if (action->isVisible() && !menu.isEmpty()) room.setLeft(std::max(room.left(), menu.right() + gap));
  }
  const QWidget* buttons = cornerWidget(Qt::TopRightCorner);
  if (buttons && buttons->isVisible()) room.setRight(buttons->x() - gap);
  if (room.width() < gap * 2) return;
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawText(room, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
                   fontMetrics().elidedText(caption_, Qt::ElideLeft, room.width()));
}

}  // namespace zelvane
