#pragma once

#include <string>

class QWidget;

namespace zelvane {

/// What the desktop gave to a start of the program, so that a window may come to the front for it: a desktop
/// keeps windows back that nobody asked for.
struct Activation {
  std::string token;       ///< Wayland's; empty for none
  std::string startup_id;  ///< X11's; empty for none
};

/// From this process's environment.
Activation ActivationOfThisStart();

/// Restores the window if it's minimised, raises it and gives it the keyboard, by right of `activation`;
/// where that is empty, by that of a person who has just started something. Ends the desktop's sign that a
/// program is starting.
void BringToFront(QWidget& window, const Activation& activation);

}  // namespace zelvane
