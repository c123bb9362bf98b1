#pragma once

#include <functional>
#include <memory>

namespace zelvane {

/// Calls `OnTimer` every `Interval` milliseconds while enabled, from the event loop.
class IntervalTimer {
 public:
  enum class Runs {
    Always,
    /// Sleeps while the pointer rests. It wakes when the pointer moves over one of the program's windows or
    /// leaves it, and calls at the end of that interval.
    WithPointer
  };
  explicit IntervalTimer(int interval_ms, Runs runs = Runs::Always);
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
