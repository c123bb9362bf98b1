#pragma once

#include "surface/forms/windows/Form.h"

namespace zelvane {

/// Opens the picture that a start was given, this one's or a later one's. Never seen.
class MonitorWindow final : public Form {
 public:
  MonitorWindow();
  /// Opens what waits in the setting `CommandLine2`, and empties it. The setting is the first instance's;
  /// another one opens `State.CommandLine`.
  void Form_Activate();

 private:
  void OpenCommandLineFile();
};

inline SingleWindow<MonitorWindow> frmMonitor;

}  // namespace zelvane
