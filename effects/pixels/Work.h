#pragma once

#include <algorithm>
#include <atomic>
#include <functional>

namespace zelvane {

/// What a running effect shares with whoever waits for it, who may be another thread.
class Work {
 public:
  /// For an effect that goes over the picture more than once: how often it will.
  void SetPasses(int passes) { passes_ = static_cast<float>(passes); }
  /// Another part of a pass, 0 to 1, is done.
  void Add(float part) { done_.fetch_add(part / passes_, std::memory_order_relaxed); }
  bool IsStopped() const { return is_stopped_.load(std::memory_order_relaxed); }

  /// The other side. 0 to 1.
  float Progress() const { return std::min(done_.load(std::memory_order_relaxed), 1.0F); }
  void Stop() { is_stopped_.store(true, std::memory_order_relaxed); }

 private:
  std::atomic<float> done_ = 0;
  std::atomic<bool> is_stopped_ = false;
  std::atomic<float> passes_ = 1;
};

/// Calls `band` with the first row and the row after the last for bands that make up rows 0 to `height`, on
/// all processors at once. What a band throws is thrown here, once all have ended. Stopped work leaves bands
/// out.
void ForBands(int height, Work& work, const std::function<void(int first, int end)>& band);

}  // namespace zelvane
