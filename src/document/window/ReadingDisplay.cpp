#include "document/window/ReadingDisplay.h"

#include "imageops/ProgressRun.h"
#include "surface/forms/windows/EventLoop.h"

namespace zelvane {

void ShowReading(PictureReading& reading) {
  constexpr int kStepMs = 40;
  const ProgressRun progress;
  while (!reading.IsDone()) {
    progress.Show(reading.Progress());
    RunEventsUntil([&] { return progress.GaveUp() || reading.IsDone(); }, kStepMs);
    if (progress.GaveUp()) return reading.GiveUp();
  }
}

}  // namespace zelvane
