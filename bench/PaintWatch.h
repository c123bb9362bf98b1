#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <utility>

namespace zelvane {

/// Calls `OnPainted` at the turn of the event loop after the control of that name has been painted next.
class PaintWatch : public QObject {
 public:
  explicit PaintWatch(const char* control) : control_(control) { qApp->installEventFilter(this); }
  std::function<void()> OnPainted;

 private:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && IsWatched(watched) && OnPainted)
      QTimer::singleShot(0, std::exchange(OnPainted, nullptr));
    return false;
  }
  /// The control itself, or the viewport of one that scrolls.
  bool IsWatched(const QObject* widget) const {
    return widget->objectName() == control_ ||
           (widget->parent() && widget->parent()->objectName() == control_);
  }
  const char* control_;
};

}  // namespace zelvane
