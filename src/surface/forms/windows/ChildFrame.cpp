#include "surface/forms/windows/ChildFrame.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QEvent>
#include <QLayout>
#include <QMenu>
#include <QStyle>
#include <QStyleOptionTitleBar>

#include "surface/forms/controls/Events.h"

namespace zelvane {
namespace {

/// What styles leave free at the ends of a title, in logical pixels.
constexpr int kTitleMargin = 16;

/// The toolkit's own would tell the title that is shown, which a child that fills the main window hasn't.
class AccessibleChild : public QAccessibleWidget {
 public:
  explicit AccessibleChild(ChildFrame& frame) : QAccessibleWidget(&frame, QAccessible::Window) {}

  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name ? static_cast<ChildFrame*>(widget())->Caption()
                                     : QAccessibleWidget::text(kind);
  }
};

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
  auto* frame = dynamic_cast<ChildFrame*>(object);
  return frame ? new AccessibleChild(*frame) : nullptr;
}

}  // namespace

void InstallChildNames() {
  QAccessible::installFactory(MakeAccessible);
}

ChildFrame::ChildFrame(Form& form) : form_(form) {
  ConfineSystemMenu();
}

void ChildFrame::SetCaption(const QString& caption) {
  caption_ = caption;
  setAccessibleName(caption);
  ShowTitle();
}

void ChildFrame::LayOut() {
  if (layout()) layout()->activate();
}

/// The toolkit asks as well where what had the keyboard is hidden, and from a frame that got it as it was
/// activated. Both aren't for the panels.
bool ChildFrame::focusNextPrevChild(bool next) {
  const QWidget* keyboard = focusWidget();
  if (!keyboard || keyboard == this || !keyboard->isVisible()) return QMdiSubWindow::focusNextPrevChild(next);
  return OnTab && OnTab(next);
}

void ChildFrame::changeEvent(QEvent* event) {
  const bool is_new_state = event->type() == QEvent::WindowStateChange;
  if (is_new_state && isMaximized()) ShowTitle();
  QMdiSubWindow::changeEvent(event);
  if (!is_new_state) return;
  if (!isMaximized()) ShowTitle();
  if (isMinimized()) FireEvent(OnMinimised);
}

void ChildFrame::resizeEvent(QResizeEvent* event) {
  QMdiSubWindow::resizeEvent(event);
  ShowTitle();
}

void ChildFrame::ShowTitle() {
  QString title;
  if (!isMaximized()) title = TitleMetrics().elidedText(caption_, Qt::ElideLeft, RoomForTitle(width()));
  // The toolkit takes one "[*]" for the place of its mark of a changed document, two for the text itself.
  title.replace("[*]", "[*][*]");
  if (title != windowTitle()) setWindowTitle(title);
  FireEvent(OnTitleChanged);
}

QFontMetrics ChildFrame::TitleMetrics() const {
  QFont font = QApplication::font("QMdiSubWindowTitleBar");
  font.setBold(true);  // as some styles write the title of the active child
  return QFontMetrics(font);
}

int ChildFrame::RoomForTitle(int width) const {
  QStyleOptionTitleBar bar;
  bar.initFrom(this);
  bar.subControls = QStyle::SC_All;
  bar.titleBarFlags = windowFlags();
  bar.rect = QRect(0, 0, width, style()->pixelMetric(QStyle::PM_TitleBarHeight, &bar, this));
  const QRect label = style()->subControlRect(QStyle::CC_TitleBar, &bar, QStyle::SC_TitleBarLabel, this);
  return label.width() - kTitleMargin;
}

int ChildFrame::WidthForCaption() const {
  constexpr int kWide = 1000;
  return kWide - RoomForTitle(kWide) + TitleMetrics().horizontalAdvance(caption_) + 2;
}

/// Leaves out what the program has no use for, and takes the closing key that a menu may want.
void ChildFrame::ConfineSystemMenu() {
  for (QAction* action : systemMenu()->actions()) {
    if (action->isCheckable()) action->setVisible(false);
    if (!action->shortcut().isEmpty()) action->setShortcut(Qt::CTRL | Qt::Key_F4);
  }
}

}  // namespace zelvane
