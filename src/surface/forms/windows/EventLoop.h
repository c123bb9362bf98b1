#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace zelvane {

/// Lets pending events run.
void DoEvents();
/// Lets pending events run in the midst of long work, at most as often as a screen shows something new.
class EventsMeanwhile {
 public:
  void Run();

 private:
  std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
};
/// Sleeps until there is an event, and lets what is pending run.
void WaitForEvents();
/// Lets events run until `is_done`, which is asked after each, or for so many milliseconds; the program
/// sleeps while there are none.
void RunEventsUntil(const std::function<bool()>& is_done, int longest_ms);
/// Lets events run for so many seconds, asleep while there are none. Midnight makes no difference.
void WaitSeconds(int16_t seconds);
/// Runs `step` at the next turn of the event loop.
void Defer(std::function<void()> step);
/// Runs `step` from the event loop, but not before every handler that runs now has returned, however deeply
/// event loops are nested in it.
void DeferToOutermost(std::function<void()> step);

/// A handler of an event runs while one stands. The application makes one for each.
class HandlerLevel {
 public:
  HandlerLevel();
  ~HandlerLevel();
  HandlerLevel(const HandlerLevel&) = delete;
  HandlerLevel& operator=(const HandlerLevel&) = delete;
};

}  // namespace zelvane
