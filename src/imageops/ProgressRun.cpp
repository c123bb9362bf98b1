#include "imageops/ProgressRun.h"

#include <algorithm>

#include "imageops/ProgressDisplay.h"

namespace zelvane {
namespace {

int standing = 0;

}  // namespace

ProgressRun::ProgressRun() {
  if (standing++ > 0 || !Progress || !MdiForm::Main()) return;
  // Only this isn't greyed with the window.
  Progress->lblProcessing.SetForeColor(SystemColor::ButtonText);
  Progress->ProcessBg.SetVisible(true);
  Progress->ProcessBar.SetWidth(1);
  Progress->ProcessBar.SetVisible(true);
  was_enabled_ = MdiForm::Main()->Enabled();
  MdiForm::Main()->SetEnabled(false);
}

/// The main window may have gone meanwhile, and may have been disabled before, for a window that asks.
ProgressRun::~ProgressRun() {
  if (--standing > 0 || !Progress || !MdiForm::Main()) return;
  if (was_enabled_) MdiForm::Main()->SetEnabled(true);
  Progress->ProcessBg.SetVisible(false);
}

bool ProgressRun::IsStanding() {
  return standing > 0;
}

void ProgressRun::Show(float done) {
  if (!Progress) return;
  const Single whole = Progress->Process.ScaleWidth();
  const auto width = std::max(1.0f, static_cast<Single>(static_cast<int>(done * whole)));
  if (width != Progress->ProcessBar.Width()) Progress->ProcessBar.SetWidth(width);
}

}  // namespace zelvane
