#include "surface/forms/windows/InputGuard.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace zelvane {

class InputGuard::Filter : public QObject {
 public:
  Filter() { QCoreApplication::instance()->installEventFilter(this); }

  bool gave_up = false;

 private:
  bool eventFilter(QObject*, QEvent* event) override {
    switch (event->type()) {
      case QEvent::KeyPress:
        gave_up |= static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
        return true;
      case QEvent::Close:
        if (!event->spontaneous()) return false;
        gave_up = true;
        event->ignore();
        return true;
      case QEvent::ShortcutOverride:
        event->accept();  // it comes as a mere key then
        return true;
      case QEvent::KeyRelease:
      case QEvent::Shortcut:
      case QEvent::InputMethod:
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::MouseMove:
      case QEvent::Wheel:
      case QEvent::ContextMenu:
      case QEvent::TabletPress:
      case QEvent::TabletMove:
      case QEvent::TabletRelease:
      case QEvent::TouchBegin:
      case QEvent::TouchUpdate:
      case QEvent::TouchEnd:
        return true;
      default:
        return false;
    }
  }
};

InputGuard::InputGuard() : filter_(std::make_unique<Filter>()) {}

InputGuard::~InputGuard() = default;

bool InputGuard::GaveUp() const {
  return filter_->gave_up;
}

}  // namespace zelvane
