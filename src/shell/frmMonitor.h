#pragma once

#include "surface/forms/windows/Form.h"

namespace zelvane {

/// Receives a picture that a start was given, this one's or a later one's. Never seen.
class MonitorWindow final : public Form {
 public:
  MonitorWindow();
  /// Opens what waits in the setting `CommandLine2`, and empties it.
  void Form_Activate();
};

inline SingleWindow<MonitorWindow> frmMonitor;

}  // namespace zelvane
