#include "surface/forms/windows/MdiFrame.h"

#include <QLayout>
#include <QMenu>
#include <QPainter>
#include <QStyle>
#include <QWindowStateChangeEvent>

#include "surface/forms/controls/Events.h"
#include "surface/forms/controls/IconArt.h"

namespace zelvane {
namespace {

/// Side of the icon in a child's title bar, in logical pixels.
constexpr int kChildIcon = 16;

}  // namespace

/// A child's frame. While it fills the main window it bears no title of its own: the toolkit would write it
/// into the main window's, by which other programs find that window.
class MdiFrame::Child : public QMdiSubWindow {
 public:
  Child(Form& form, MdiFrame& main) : form_(form), main_(main) { ConfineSystemMenu(); }
  Form& Served() const { return form_; }
  const QString& Caption() const { return caption_; }

  void SetCaption(const QString& caption) {
    caption_ = caption;
    setAccessibleName(caption);
    ShowTitle();
  }

 protected:
  void changeEvent(QEvent* event) override {
    if (event->type() == QEvent::WindowStateChange && isMaximized()) ShowTitle();
    QMdiSubWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && !isMaximized()) ShowTitle();
  }

 private:
  void ShowTitle() {
    setWindowTitle(isMaximized() ? QString() : caption_);
    main_.TellCaption();
  }

  /// Leaves out what the program has no use for, and takes the closing key that a menu may want.
  void ConfineSystemMenu() {
    for (QAction* action : systemMenu()->actions()) {
      if (action->isCheckable()) action->setVisible(false);
      if (!action->shortcut().isEmpty()) action->setShortcut(Qt::CTRL | Qt::Key_F4);
    }
  }

  Form& form_;
  MdiFrame& main_;
  QString caption_;
};

MdiFrame::MdiFrame() : bar_(new CaptionBar), field_(new DockField) {
  // A bar that the desktop shows elsewhere has no room for the buttons of a child that fills the window.
  bar_->setNativeMenuBar(false);
  setMenuBar(bar_);
  setCentralWidget(field_);
  connect(&field_->Children(), &QMdiArea::subWindowActivated, this,
          [this](QMdiSubWindow* window) { Activated(window); });
}

QMdiSubWindow* MdiFrame::AddChild(Form& form, QWidget& inside) {
  auto* child = new Child(form, *this);
  child->setObjectName(QString::fromStdString(form.Name()) + "Frame");
  child->setAttribute(Qt::WA_DeleteOnClose, false);
  child->setWidget(&inside);
  field_->Children().addSubWindow(child);
  return child;
}

void MdiFrame::PlaceChild(QMdiSubWindow& child, QSize inside, bool keeps_place) {
  child.setWindowIcon(IconArt("zelvane", kChildIcon, devicePixelRatioF()));
  field_->Children().PlaceChild(child, inside, keeps_place);
}

void MdiFrame::SetChildCaption(QMdiSubWindow& child, const QString& caption) {
  static_cast<Child&>(child).SetCaption(caption);
}

void MdiFrame::ActivateChild(Form& form) {
  field_->Children().setActiveSubWindow(form.engine_->ChildFrame());
  // The toolkit tells of it only while the main window has the keyboard.
  SetActive(&form);
}

void MdiFrame::Activated(QMdiSubWindow* window) {
  // None: the main window has lost the keyboard, but its active form stays.
  if (window && !holding_) SetActive(&static_cast<Child*>(window)->Served());
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

void MdiFrame::LeaveChild(Form& form) {
  if (&form != active_) return;
  if (form_->unloading_) {
    active_ = nullptr;
    return;
  }
  const QList<QMdiSubWindow*> latest = field_->Children().subWindowList(QMdiArea::ActivationHistoryOrder);
  for (auto window = latest.rbegin(); window != latest.rend(); ++window) {
    Form& next = static_cast<Child*>(*window)->Served();
    if (&next != &form && !next.unloading_ && !(*window)->isHidden()) return ActivateChild(next);
  }
  SetActive(nullptr);
}

void MdiFrame::RemoveChild(Form& form) {
  LeaveChild(form);
  if (active_ == &form) active_ = nullptr;
  field_->Children().Forget(*form.engine_->ChildFrame());
}

void MdiFrame::TellCaption() {
  auto* child = active_ ? static_cast<Child*>(active_->engine_->ChildFrame()) : nullptr;
  bar_->SetCaption(child && child->isMaximized() && !child->isMinimized() ? child->Caption() : QString());
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
  QString text = caption_;
  text.replace("[*][*]", "[*]");
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawText(room, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
                   fontMetrics().elidedText(text, Qt::ElideMiddle, room.width()));
}

}  // namespace zelvane
