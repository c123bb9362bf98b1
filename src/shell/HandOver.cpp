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
#include "surface/system/desktop/Programs.h"
#include "surface/system/files/Files.h"

namespace zelvane {
namespace {

constexpr int kPatienceMs = 3000, kRetryMs = 100;

/// Pictures that were handed over and have yet to open.
struct WaitingPictures {
  std::deque<std::string> paths;
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
  if (!waiting || waiting->paths.empty()) return;
  waiting->is_due = false;
  waiting->retry.SetEnabled(!IsFree());
  if (!IsFree()) return;
  WriteSetting("CommandLine2", waiting->paths.front());
  waiting->paths.pop_front();
  frmMonitor->Form_Activate();
  OpenHandedOver();
}

void Receive(const StartOrder& order) {
  if (!order.path.empty()) waiting->paths.push_back(order.path);
  if (MainForm.IsLoaded() && MainForm->Visible()) BringToFront(*MainForm->Widget(), order.activation);
  if (waiting->may_open) OpenHandedOver();
}

/// Quotes are taken from the ends of what a program is started with; a name may end in one of its own.
std::string InQuotes(const std::string& path) {
  return '"' + path + '"';
}

}  // namespace

bool HandOver(const std::string& path) {
  return ThisInstance.Begin({path, ActivationOfThisStart()}, kPatienceMs) == StartRole::HandedOver;
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
  if (waiting->paths.empty() || std::exchange(waiting->is_due, true)) return;
  DeferToOutermost(OpenNext);
}

void EndHandOver() {
  ThisInstance.End();
  if (!waiting) return;
  const std::deque<std::string> left = std::exchange(waiting->paths, {});
  waiting.reset();
  for (const std::string& path : left)
    StartProgram(JoinPath(ApplicationFolder(), "zelvane"), {InQuotes(path)});
}

}  // namespace zelvane
