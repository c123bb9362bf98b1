#pragma once

#include <functional>

namespace zelvane {

/// Tells the work area and when the desktop's settings changed.
class SysInfo {
 public:
  SysInfo();
  ~SysInfo();
  SysInfo(const SysInfo&) = delete;
  SysInfo& operator=(const SysInfo&) = delete;

  /// Twips.
  double WorkAreaWidth() const;
  double WorkAreaHeight() const;
  /// The work area or the screen changed.
  std::function<void()> OnSettingChanged;

 private:
  struct Watcher;
  Watcher* watcher_;
};

}  // namespace zelvane
