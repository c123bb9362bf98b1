#include "imageops/effects/WaitForProgram.h"

#include "imageops/effects/frmStop.h"
#include "surface/forms/controls/Timer.h"
#include "surface/forms/windows/EventLoop.h"
#include "surface/forms/windows/MdiForm.h"

namespace zelvane {

std::optional<int> WaitForProgram(Program& program, const std::string& name, int patience_ms) {
  bool is_stopped = false;
  IntervalTimer patience(patience_ms);
  patience.OnTimer = [&] {
    if (frmStop.IsLoaded()) return;
    frmStop.Load().Offer(name, [&] {
      is_stopped = true;
      program.Stop();
    });
  };
  patience.SetEnabled(true);
  while (program.ExitCode() == kStillActive && MdiForm::Main()) WaitForEvents();
  if (frmStop.IsLoaded()) frmStop->Unload();
  if (is_stopped || !MdiForm::Main()) return std::nullopt;
  return program.ExitCode();
}

}  // namespace zelvane
