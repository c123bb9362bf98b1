#include "surface/forms/controls/Timer.h"

#include <QTimer>

#include "surface/forms/controls/Events.h"

namespace zelvane {
namespace {

/// From here on the system may shift a call by a twentieth of the interval, which spares waking up.
constexpr int kCoarseFromMs = 50;

}  // namespace

class IntervalTimer::Clockwork : public QTimer {};

IntervalTimer::IntervalTimer(int interval_ms) : clockwork_(std::make_unique<Clockwork>()) {
  clockwork_->setInterval(interval_ms);
  clockwork_->setTimerType(interval_ms >= kCoarseFromMs ? Qt::CoarseTimer : Qt::PreciseTimer);
  QObject::connect(clockwork_.get(), &QTimer::timeout, clockwork_.get(), [this] { FireEvent(OnTimer); });
}

IntervalTimer::~IntervalTimer() = default;

void IntervalTimer::SetEnabled(bool enabled) {
  // Enabling a timer that runs doesn't make it start its interval anew.
  if (enabled == clockwork_->isActive()) return;
  enabled ? clockwork_->start() : clockwork_->stop();
}

}  // namespace zelvane
