#include "imageops/ProgressDisplay.h"

namespace zelvane {
namespace {

constexpr Single kHeight = 24, kMargin = 4;  // pixels

}  // namespace

ProgressControls::ProgressControls(MdiForm& main)
    : ProcessBg(main, "ProcessBg"),
      lblProcessing(ProcessBg, "lblProcessing", "Processing:"),
      Process(ProcessBg, "Process"),
      ProcessBar(Process, "ProcessBar") {
  ProcessBg.SetHeight(kHeight);
  ProcessBg.SetBackColor(SystemColor::ButtonFace);
  ProcessBg.SetAlign(Align::Bottom);
  ProcessBg.SetVisible(false);
  lblProcessing.Move(8, kMargin, 80, kHeight - 2 * kMargin);
  Process.Move(92, kMargin, 100, kHeight - 2 * kMargin);
  Process.SetBackColor(SystemColor::WindowBackground);
  ProcessBar.SetBackColor(SystemColor::ActiveCaption);
  ProcessBar.Move(0, 0, 1, kHeight - 2 * kMargin);
}

}  // namespace zelvane
