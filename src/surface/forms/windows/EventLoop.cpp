#include "surface/forms/windows/EventLoop.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>
#include <QTimerEvent>
#include <algorithm>
#include <deque>
#include <memory>
#include <utility>

#include "surface/raster/FailingStep.h"

namespace zelvane {
namespace {

/// Steps that wait for their turn of the event loop. They come from a timer, as posted events would all be
/// run in one turn, even those that the running ones post.
class StepQueue : public QObject {
 public:
  void Add(std::function<void()> step) {
    steps_.push_back(std::move(step));
    if (!timer_) timer_ = startTimer(0);
  }

 private:
  void timerEvent(QTimerEvent*) override {
    for (size_t count = steps_.size(); count > 0 && !steps_.empty(); --count) {
      // Out of the queue first: the step may run an event loop of its own, where the rest has its turn.
      const std::function<void()> step = std::move(steps_.front());
      steps_.pop_front();
      Attempt(step);
    }
    if (steps_.empty() && timer_) killTimer(std::exchange(timer_, 0));
  }

  std::deque<std::function<void()>> steps_;
  int timer_ = 0;
};

/// Steps that wait for the handlers to return.
std::deque<std::function<void()>> held_back;
/// Handlers of events that are running, one inside the other.
int depth = 0;

/// As long as the toolkit stands; timers can't start before and steps are lost after it.
StepQueue* Queue() {
  static std::unique_ptr<StepQueue> queue;
  if (!QCoreApplication::instance()) return nullptr;
  if (!queue) {
    queue = std::make_unique<StepQueue>();
    qAddPostRoutine([] { queue.reset(), held_back.clear(); });
  }
  return queue.get();
}

void QueueHeldBack() {
  for (auto& step : std::exchange(held_back, {})) {
    Defer([step = std::move(step)] { depth == 1 ? step() : held_back.push_back(step); });
  }
}

}  // namespace

void DoEvents() {
  QCoreApplication::processEvents();
}

void EventsMeanwhile::Run() {
  constexpr std::chrono::milliseconds kBetween{10};
  if (std::chrono::steady_clock::now() - last_ < kBetween) return;
  DoEvents();
  last_ = std::chrono::steady_clock::now();
}

void WaitForEvents() {
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void RunEventsUntil(const std::function<bool()>& is_done, int longest_ms) {
  const QDeadlineTimer deadline(longest_ms);
  QTimer alarm;  // ends a sleep that nothing else ends
  alarm.start(std::max(longest_ms, 0));
  while (!is_done() && !deadline.hasExpired()) WaitForEvents();
}

void WaitSeconds(int16_t seconds) {
  constexpr int kMilliseconds = 1000;
  RunEventsUntil([] { return false; }, seconds * kMilliseconds);
}

void Defer(std::function<void()> step) {
  if (StepQueue* queue = Queue()) queue->Add(std::move(step));
}

void DeferToOutermost(std::function<void()> step) {
  if (!QCoreApplication::instance()) return;
  held_back.push_back(std::move(step));
  if (depth == 0) QueueHeldBack();
}

HandlerLevel::HandlerLevel() {
  ++depth;
}

HandlerLevel::~HandlerLevel() {
  if (--depth == 0) QueueHeldBack();
}

}  // namespace zelvane
