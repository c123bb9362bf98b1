#pragma once

namespace zelvane {

/// While one stands, the main window shows how far a long operation has come and takes no input. One may
/// stand within another; the display is the outermost's until that goes.
class ProgressRun {
 public:
  ProgressRun();
  ~ProgressRun();
  ProgressRun(const ProgressRun&) = delete;
  ProgressRun& operator=(const ProgressRun&) = delete;

  /// How much of it is done, 0 to 1.
  void Show(float done);
};

}  // namespace zelvane
