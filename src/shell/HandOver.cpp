#include "shell/HandOver.h"

#include <deque>
#include <memory>
#include <utility>

#include "document/layers/ImageDocument.h"
#include "shell/MainForm.h"
#include "shell/frmMonitor.h"
#include "shell/state/Settings.h"
#include "surface/forms/controls/Timer.h"
#include "surface/forms/windows/EventLoop.h"
#include "surface/raster/FailingStep.h"
#include "surface/system/desktop/Programs.h"

namespace zelvane {
namespace {

constexpr int kPatienceMs = 3000, kRetryMs = 100;

/// Pictures that were handed over and have yet to open.
struct WaitingPictures {
  struct Picture {
    std::string path;
    StandBy start;
  };
  std::deque<Picture> pictures;
  bool may_open = false;  ///< the interface stands
  bool is_due = false;    ///< the next one opens as soon as no handler runs
  /// Runs while there are pictures and the program is busy with something else.
  IntervalTimer retry{kRetryMs};
};
std::unique_ptr<WaitingPictures> waiting;

/// Not beneath a dialog, nor in the midst of a long operation or a stroke.
bool IsFree() {
  if (!MainForm.IsLoaded() || !MainForm->Enabled()) return false;
  const ImageDocument* document = ActiveDocument();
  return !document || !document->Down;
}

void OpenNext() {
  if (!waiting || waiting->pictures.empty()) return;
  waiting->is_due = false;
  waiting->retry.SetEnabled(!IsFree());
  if (!IsFree()) return;
  const WaitingPictures::Picture next = std::move(waiting->pictures.front());
  waiting->pictures.pop_front();
  Attempt([&] {
    WriteSetting("CommandLine2", next.path);
    frmMonitor->Form_Activate();
  });
  next.start.TellDone();
  OpenHandedOver();
}

void Receive(const StartOrder& order, StandBy start) {
  if (!order.path.empty()) waiting->pictures.push_back({order.path, std::move(start)});
  if (MainForm.IsLoaded() && MainForm->Visible()) BringToFront(*MainForm->Widget(), order.activation);
  if (waiting->may_open) OpenHandedOver();
}

}  // namespace

bool HandOver(const std::string& path) {
  const StartOrder order = {path, ActivationOfThisStart()};
  if (ThisInstance.Begin(order, kPatienceMs) != StartRole::HandedOver) return false;
  if (path.empty()) return true;
  GoOnUnseen();
  do {
    if (ThisInstance.WaitUntilDone()) return true;
  } while (ThisInstance.Begin(order, kPatienceMs) == StartRole::HandedOver);
  return false;
}

void ListenToStarts() {
  if (!ThisInstance.IsFirst()) return;
  waiting = std::make_unique<WaitingPictures>();
  waiting->retry.OnTimer = OpenHandedOver;
  ThisInstance.Listen(Receive);
}

void OpenHandedOver() {
  if (!waiting) return;
  waiting->may_open = true;
  if (waiting->pictures.empty() || std::exchange(waiting->is_due, true)) return;
  DeferToOutermost(OpenNext);
}

void EndHandOver() {
  ThisInstance.End();
  waiting.reset();
}

}  // namespace zelvane
