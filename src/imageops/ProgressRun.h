#pragma once

#include "surface/forms/windows/InputGuard.h"

namespace zelvane {

/// While one stands, the main window shows how far a long operation has come, the program takes no input, and
/// no document closes. One may stand within another; the display is the outermost's until that goes.
class ProgressRun {
 public:
  ProgressRun();
  ~ProgressRun();
  ProgressRun(const ProgressRun&) = delete;
  ProgressRun& operator=(const ProgressRun&) = delete;

  static bool IsStanding();

  /// How much of it is done, 0 to 1. Costs little where the display looks the same.
  static void Show(float done);

  /// Whether the person has asked to give it up, by Esc or by closing a window.
  bool GaveUp() const { return guard_.GaveUp(); }

 private:
  const InputGuard guard_;
  bool was_enabled_ = false;
};

}  // namespace zelvane
