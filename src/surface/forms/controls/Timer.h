#pragma once

#include <functional>
#include <memory>

namespace zelvane {

/// Calls `OnTimer` every `Interval` milliseconds while enabled, from the event loop.
class IntervalTimer {
 public:
  explicit IntervalTimer(int interval_ms);
  ~IntervalTimer();
  IntervalTimer(const IntervalTimer&) = delete;
  IntervalTimer& operator=(const IntervalTimer&) = delete;

  void SetEnabled(bool enabled);
  std::function<void()> OnTimer;

 private:
  class Clockwork;
  std::unique_ptr<Clockwork> clockwork_;
};

}  // namespace zelvane
