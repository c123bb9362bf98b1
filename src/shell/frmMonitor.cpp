#include "shell/frmMonitor.h"

#include "document/window/OpenPicture.h"
#include "shell/MainForm.h"
#include "shell/state/RecentFiles.h"
#include "shell/state/Settings.h"
#include "shell/state/State.h"
#include "surface/raster/FailingStep.h"

namespace zelvane {

MonitorWindow::MonitorWindow() : Form("frmMonitor") {
  SetCaption("ZelvaneMonitor");
}

void MonitorWindow::Form_Activate() {
  State.CommandLine = ReadSetting("CommandLine2", "");
  if (!State.CommandLine.empty()) {
    if (MainForm->WindowState() == kMinimised) MainForm->SetWindowState(kNormal);
    Attempt([] { OpenPicture(State.CommandLine); });
    AddToRecentList(State.CommandLine);
    State.CommandLine.clear();
    WriteSetting("CommandLine2", "");
  }
  MainForm->Show();
}

}  // namespace zelvane
