#include "imageops/ProgressRun.h"

#include <algorithm>

#include "imageops/ProgressDisplay.h"

namespace zelvane {
namespace {

int standing = 0;

}  // namespace

ProgressRun::ProgressRun() {
  if (standing++ > 0 || !Progress || !MdiForm::Main()) return;
  Progress->ProcessBar.SetWidth(1);
  Progress->ProcessBg.SetVisible(true);
  Progress->ProcessBar.SetVisible(true);
  MdiForm::Main()->SetEnabled(false);
}

/// The main window may have gone meanwhile.
ProgressRun::~ProgressRun() {
  if (--standing > 0 || !Progress || !MdiForm::Main()) return;
  Progress->ProcessBg.SetVisible(false);
  MdiForm::Main()->SetEnabled(true);
}

void ProgressRun::Show(float done) {
  if (Progress) Progress->ProcessBar.SetWidth(std::max(1.0f, done * Progress->Process.ScaleWidth()));
}

}  // namespace zelvane
