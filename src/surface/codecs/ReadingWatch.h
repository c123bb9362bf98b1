#pragma once

#include <atomic>
#include <cstdint>

namespace zelvane {

/// All that a reader of a picture shares with whoever waits for it, who may be another thread: how far the
/// reading is, and whether it's still wanted.
class ReadingWatch {
 public:
  /// The reader's side: `done` of `all` steps are taken. False: give up.
  bool GoOn(int64_t done, int64_t all) {
    progress_.store(static_cast<float>(done) / static_cast<float>(all), std::memory_order_relaxed);
    return !stopped_.load(std::memory_order_relaxed);
  }

  /// The other side. 0 to 1.
  float Progress() const { return progress_.load(std::memory_order_relaxed); }
  void Stop() { stopped_.store(true, std::memory_order_relaxed); }

 private:
  std::atomic<float> progress_ = 0;
  std::atomic<bool> stopped_ = false;
};

}  // namespace zelvane
