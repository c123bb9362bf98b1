#pragma once

#include <atomic>
#include <exception>
#include <new>
#include <optional>
#include <stdexcept>
#include <utility>

/// The program's one rule for failures: a failing step is skipped and the routine goes on with the next.
namespace zelvane {

/// A surface of that size can't be had: a side beyond 32,767, or more than memory holds.
struct SurfaceTooLarge : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A step has failed for want of memory. Who tells the person of it takes the note away.
inline std::atomic<bool> LackedMemory = false;

/// Makes the assignment only where there is a value: `Assign(StartX, ToInt32(x))`.
template <class Target, class Value>
bool Assign(Target& target, const std::optional<Value>& value) {
  if (value) target = *value;
  return value.has_value();
}

/// Calls the step with the value where there is one: `With(ToInt16(x * z), [&](auto v) { line.SetX2(v); })`.
template <class Value, class Step>
bool With(const std::optional<Value>& value, Step&& step) {
  if (value) std::forward<Step>(step)(*value);
  return value.has_value();
}

/// Runs a step that may throw. False: it failed, and what it would have done is skipped.
template <class Step>
bool Attempt(Step&& step) {
  try {
    std::forward<Step>(step)();
    return true;
  } catch (const std::bad_alloc&) {
    LackedMemory = true;
  } catch (const SurfaceTooLarge&) {
    LackedMemory = true;
  } catch (const std::exception&) {
  }
  return false;
}

}  // namespace zelvane
