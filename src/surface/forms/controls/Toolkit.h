#pragma once

#include <functional>
#include <utility>

namespace zelvane {

/// The unit of windows is 1/15 of a logical pixel.
inline constexpr int kTwipsPerPixel = 15;

/// Runs `step` from the event loop, but not before every handler that runs now has returned, however deeply
/// event loops are nested in it.
void DeferToOutermost(std::function<void()> step);

/// Calls an event through a copy, as the handler may put another one in its place.
template <class... Parameters, class... Arguments>
void FireEvent(const std::function<void(Parameters...)>& event, Arguments&&... arguments) {
  if (!event) return;
  const std::function<void(Parameters...)> standing = event;
  standing(std::forward<Arguments>(arguments)...);
}

}  // namespace zelvane
