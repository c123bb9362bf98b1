#include "surface/forms/windows/DialogForm.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QPointer>
#include <QWindow>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/windows/MdiForm.h"
#include "surface/raster/Units.h"

namespace zelvane {

class DialogForm::View : public QDialog {
 public:
  View() : QDialog(nullptr, Qt::Dialog | Qt::FramelessWindowHint) {}

  /// Through the form, which may have a say.
  void reject() override { close(); }

 protected:
  void showEvent(QShowEvent* event) override {
    qApp->installEventFilter(this);
    QDialog::showEvent(event);
  }
  void hideEvent(QHideEvent* event) override {
    qApp->removeEventFilter(this);
    QDialog::hideEvent(event);
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress || !static_cast<const QKeyEvent*>(event)->isAutoRepeat())
      return false;
    const auto* widget = qobject_cast<const QWidget*>(watched);
    return widget && widget->window() == this;
  }
  void keyPressEvent(QKeyEvent* event) override {
    // What Esc does is the form's business.
    if (event->key() != Qt::Key_Escape) QDialog::keyPressEvent(event);
  }
};

DialogForm::DialogForm(const std::string& name) : Form(name, new View) {}

void DialogForm::ShowModal() {
  auto* dialog = static_cast<View*>(widget_);
  dialog->setWindowModality(Qt::ApplicationModal);
  const QWidget* owner = OwnerOfDialogs();
  dialog->winId();  // makes the window, which then can be told whose it is
  if (owner && owner != dialog) dialog->windowHandle()->setTransientParent(owner->window()->windowHandle());
  const QPointer<View> standing(dialog);
  Show();
  if (Visible()) dialog->exec();
  if (standing && standing->isVisible()) Unload();
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
