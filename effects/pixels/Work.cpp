#include "effects/pixels/Work.h"

#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace zelvane {

void ForBands(int height, Work& work, const std::function<void(int first, int end)>& band) {
  constexpr int kBandsAtMost = 64, kRowsAtLeast = 8;
  const int rows = std::max(kRowsAtLeast, (height + kBandsAtMost - 1) / kBandsAtMost);
  std::atomic<int> next = 0;
  std::exception_ptr failure;
  std::mutex failing;
  const auto run = [&] {
    try {
      for (int first = next.fetch_add(rows); first < height && !work.IsStopped();
           first = next.fetch_add(rows)) {
        const int end = std::min(first + rows, height);
        band(first, end);
        work.Add(static_cast<float>(end - first) / static_cast<float>(height));
      }
    } catch (...) {
      const std::lock_guard lock(failing);
      failure = std::current_exception();
    }
  };
  {
    const auto bands = static_cast<unsigned>((height + rows - 1) / rows);
    std::vector<std::jthread> helpers;
    try {
      for (unsigned i = 1; i < std::min(std::thread::hardware_concurrency(), bands); ++i)
        helpers.emplace_back(run);
    } catch (const std::system_error&) {
      // Those that there are do it.
    }
    run();
  }
  if (failure) std::rethrow_exception(failure);
}

}  // namespace zelvane
