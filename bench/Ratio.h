#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <vector>

/// Every operation runs in turn with the cheapest thing that does as much, and is shown as a multiple of it
/// in the counter `ratio` (medians of both, so that a busy machine tells little).
namespace zelvane::ratio {

inline double Median(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// Of the processor, on this thread: what others do meanwhile doesn't count.
inline double ThreadSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// By the clock, for what also waits.
inline double ClockSeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

template <class Step>
double Seconds(Step&& step, double (*now)() = ThreadSeconds) {
  const double start = now();
  step();
  benchmark::ClobberMemory();
  return now() - start;
}

template <class Operation, class Floor>
void Compare(benchmark::State& state, Operation operation, Floor floor, double (*now)() = ThreadSeconds) {
  std::vector<double> operations, floors;
  for (auto _ : state) {
    operations.push_back(Seconds(operation, now));
    floors.push_back(Seconds(floor, now));
    state.SetIterationTime(operations.back());
  }
  const double operation_time = Median(operations), floor_time = Median(floors);
  state.counters["floor_us"] = floor_time * 1e6;
  state.counters["ratio"] = operation_time / floor_time;
}

}  // namespace zelvane::ratio
