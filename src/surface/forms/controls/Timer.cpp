#include "surface/forms/controls/Timer.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

#include "surface/forms/controls/Events.h"

namespace zelvane {
namespace {

/// From here on the system may shift a call by a twentieth of the interval, which spares waking up.
constexpr int kCoarseFromMs = 50;

}  // namespace

class IntervalTimer::Clockwork : public QTimer {
 public:
  explicit Clockwork(Runs runs) : runs_(runs) { setSingleShot(runs == Runs::WithPointer); }

  void SetEnabled(bool enabled) {
    // Enabling a timer that runs doesn't make it start its interval anew.
    if (enabled == enabled_) return;
    enabled_ = enabled;
    if (runs_ == Runs::Always)
      enabled ? start() : stop();
    else
      WatchPointer();
  }

  bool eventFilter(QObject*, QEvent* event) override {
    const auto type = event->type();
    const bool moved = type == QEvent::MouseMove || type == QEvent::Enter || type == QEvent::Leave;
    if (moved && !isActive()) start();
    return false;
  }

 private:
  void WatchPointer() {
    if (enabled_) return qApp->installEventFilter(this);
    qApp->removeEventFilter(this);
    stop();
  }

  Runs runs_;
  bool enabled_ = false;
};

IntervalTimer::IntervalTimer(int interval_ms, Runs runs) : clockwork_(std::make_unique<Clockwork>(runs)) {
  clockwork_->setInterval(interval_ms);
  clockwork_->setTimerType(interval_ms >= kCoarseFromMs ? Qt::CoarseTimer : Qt::PreciseTimer);
  QObject::connect(clockwork_.get(), &QTimer::timeout, clockwork_.get(), [this] { FireEvent(OnTimer); });
}

IntervalTimer::~IntervalTimer() = default;

void IntervalTimer::SetEnabled(bool enabled) {
  clockwork_->SetEnabled(enabled);
}

}  // namespace zelvane
