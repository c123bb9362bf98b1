#pragma once

namespace zelvane {

/// While one stands, the main window shows how far a long operation has come and takes no input, and no
/// document closes. One may stand within another; the display is the outermost's until that goes.
class ProgressRun {
 public:
  ProgressRun();
  ~ProgressRun();
  ProgressRun(const ProgressRun&) = delete;
  ProgressRun& operator=(const ProgressRun&) = delete;

  static bool IsStanding();

  /// How much of it is done, 0 to 1. Costs little where the display looks the same.
  static void Show(float done);

 private:
  bool was_enabled_ = false;
};

}  // namespace zelvane
