#include "shell/frmMonitor.h"

#include "document/window/OpenPicture.h"
#include "shell/HandOver.h"
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
  if (ThisInstance.IsFirst()) State.CommandLine = ReadSetting("CommandLine2", "");
  if (!State.CommandLine.empty()) {
    if (MainForm->WindowState() == kMinimised) MainForm->SetWindowState(kNormal);
    Attempt([this] { OpenCommandLineFile(); });
    AddToRecentList(State.CommandLine);
    State.CommandLine.clear();
    if (ThisInstance.IsFirst()) WriteSetting("CommandLine2", "");
  }
  MainForm->Show();
}

void MonitorWindow::OpenCommandLineFile() {
  OpenPicture(State.CommandLine);
}

}  // namespace zelvane
