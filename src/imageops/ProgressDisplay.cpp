#include "imageops/ProgressDisplay.h"

#include <algorithm>

namespace zelvane {
namespace {

constexpr Single kLeastHeight = 24, kLeft = 8, kMargin = 4, kLeastWay = 100;  // pixels

}  // namespace

ProgressControls::ProgressControls(MdiForm& main)
    : ProcessBg(main, "ProcessBg"),
      lblProcessing(ProcessBg, "lblProcessing", "Processing:"),
      Process(ProcessBg, "Process"),
      ProcessBar(Process, "ProcessBar") {
  const Single text = lblProcessing.NaturalWidth();
  const Single row = std::max(lblProcessing.NaturalHeight(), kLeastHeight - 2 * kMargin);
  const Single bar = kLeft + text + 2 * kMargin;
  ProcessBg.SetHeight(row + 2 * kMargin);
  ProcessBg.SetBackColor(SystemColor::ButtonFace);
  ProcessBg.SetAlign(Align::Bottom);
  ProcessBg.SetVisible(false);
  lblProcessing.Move(kLeft, kMargin, text, row);
  Process.Move(bar, kMargin, kLeastWay, row);
  Process.SetBackColor(SystemColor::WindowBackground);
  ProcessBar.SetBackColor(SystemColor::ActiveCaption);
  ProcessBar.Move(0, 0, 1, row);
}

}  // namespace zelvane
