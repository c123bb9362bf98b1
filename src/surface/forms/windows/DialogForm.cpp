#include "surface/forms/windows/DialogForm.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QPainterPath>
#include <QPointer>
#include <QWindow>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/windows/MdiForm.h"
#include "surface/raster/Units.h"

namespace zelvane {

namespace {

constexpr Qt::WindowFlags kTitled =
    Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;

bool Ends(int key) {
  return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape;
}

void Loosen(QWidget& window) {
  window.setMinimumSize(0, 0);
  window.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
}

}  // namespace

class DialogForm::View : public QDialog {
 public:
  explicit View(DialogLook look)
      : QDialog(nullptr, Qt::Dialog | (look == DialogLook::Titled ? kTitled : Qt::FramelessWindowHint)),
        is_titled_(look == DialogLook::Titled) {}

  /// Through the form, which may have a say.
  void reject() override { close(); }

 protected:
  void showEvent(QShowEvent* event) override {
    qApp->installEventFilter(this);
    const QWidget* owner = OwnerOfDialogs();
    if (owner && owner != this) windowHandle()->setTransientParent(owner->window()->windowHandle());
    QDialog::showEvent(event);
  }
  void hideEvent(QHideEvent* event) override {
    qApp->removeEventFilter(this);
    QDialog::hideEvent(event);
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* widget = qobject_cast<const QWidget*>(watched);
    if (event->type() == QEvent::WindowActivate && widget) TakeKeyboardFrom(*widget);
    if (event->type() != QEvent::KeyPress || !widget || widget->window() != this) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    return key.isAutoRepeat() && (!is_titled_ || Ends(key.key()));
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() != Qt::Key_Escape) QDialog::keyPressEvent(event);
  }

 private:
  void TakeKeyboardFrom(const QWidget& window) {
    const MdiForm* main = MdiForm::Main();
    const bool is_idle = main && main->Widget() == &window && !main->Enabled();
    if (!is_titled_ || !is_idle || QApplication::activeModalWidget()) return;
    setWindowState(windowState() & ~Qt::WindowMinimized);
    activateWindow();
  }
  bool is_titled_;
};

DialogForm::DialogForm(const std::string& name, DialogLook look) : Form(name, new View(look)) {}

/// A window that keeps its size is let loose while it takes another one.
void DialogForm::Size(const std::function<void()>& size) {
  if (widget_ && !resizable_) Loosen(*widget_);
  size();
  if (widget_ && !resizable_) widget_->setFixedSize(widget_->size());
}

void DialogForm::SetWidth(Single width) {
  Size([&] { Form::SetWidth(width); });
}

void DialogForm::SetHeight(Single height) {
  Size([&] { Form::SetHeight(height); });
}

void DialogForm::SetResizable(bool resizable) {
  resizable_ = resizable;
  if (!widget_) return;
  resizable ? Loosen(*widget_) : widget_->setFixedSize(widget_->size());
}

void DialogForm::ShowModal() {
  auto* dialog = static_cast<View*>(widget_);
  dialog->setWindowModality(Qt::ApplicationModal);
  const QPointer<View> standing(dialog);
  Show();
  if (Visible()) dialog->exec();
  if (standing && standing->isVisible()) Unload();
}

void DialogForm::ShowAside() {
  widget_->setAttribute(Qt::WA_ShowWithoutActivating);
  Show();
}

bool DialogForm::IsActive() const {
  return widget_ && widget_->isActiveWindow();
}

QWidget* OwnerOfDialogs() {
  if (QWidget* active = QApplication::activeWindow()) return active;
  const MdiForm* main = MdiForm::Main();
  const bool is_seen = main && main->Visible() && main->WindowState() != kMinimised;
  return is_seen ? main->Widget() : nullptr;
}

std::optional<WindowPlace> ActiveWindowPlace() {
  const QWidget* window = OwnerOfDialogs();
  if (!window) return std::nullopt;
  const QRectF frame = window->frameGeometry();
  return WindowPlace{frame.x() * kTwipsPerPixel, frame.y() * kTwipsPerPixel, frame.width() * kTwipsPerPixel,
                     frame.height() * kTwipsPerPixel, FromQt(window->windowTitle())};
}

void RoundWindow(Form& form) {
  constexpr double kRadius = 20;
  if (!form.Widget()) return;
  QPainterPath outline;
  outline.addRoundedRect(QRectF(form.Widget()->rect()).adjusted(1, 1, 0, 0), kRadius, kRadius);
  form.Widget()->setMask(QRegion(outline.toFillPolygon().toPolygon()));
}

void DragWindow(Form& form) {
  QWindow* window = form.Widget() ? form.Widget()->window()->windowHandle() : nullptr;
  if (window) window->startSystemMove();
}

void SetTopMost(Form& form, bool on) {
  if (!form.Widget()) return;
  // The widget's own setter would hide a window that is shown.
  Qt::WindowFlags flags = form.Widget()->windowFlags();
  flags.setFlag(Qt::WindowStaysOnTopHint, on);
  if (flags == form.Widget()->windowFlags()) return;
  form.Widget()->overrideWindowFlags(flags);
  if (QWindow* window = form.Widget()->windowHandle()) window->setFlags(flags);
}

}  // namespace zelvane
