#pragma once

#include <functional>
#include <utility>

#include "surface/raster/FailingStep.h"

namespace zelvane {

/// Calls an event through a copy, as the handler may put another one in its place. A handler that fails is
/// skipped from there on, and whoever fired the event goes on; false then.
template <class... Parameters, class... Arguments>
bool FireEvent(const std::function<void(Parameters...)>& event, Arguments&&... arguments) {
  if (!event) return true;
  return Attempt([&] {
    const std::function<void(Parameters...)> standing = event;
    standing(std::forward<Arguments>(arguments)...);
  });
}

}  // namespace zelvane
