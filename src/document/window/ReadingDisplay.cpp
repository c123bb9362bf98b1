#include "document/window/ReadingDisplay.h"

#include "imageops/ProgressRun.h"
#include "surface/forms/windows/EventLoop.h"
#include "surface/forms/windows/InputGuard.h"

namespace zelvane {

void ShowReading(PictureReading& reading) {
  constexpr int kStepMs = 40;
  ProgressRun progress;
  const InputGuard guard;
  while (!reading.IsDone()) {
    progress.Show(reading.Progress());
    RunEventsUntil([&] { return guard.GaveUp() || reading.IsDone(); }, kStepMs);
    if (guard.GaveUp()) return reading.GiveUp();
  }
}

}  // namespace zelvane
