#include "shell/LoadMainForm.h"

#include "colour/ColorBars.h"
#include "colour/Swatches.h"
#include "document/window/OpenPicture.h"
#include "shell/BuildInterface.h"
#include "shell/HandOver.h"
#include "shell/KeyEvents.h"
#include "shell/Logo.h"
#include "shell/MainForm.h"
#include "shell/MenuEvents.h"
#include "shell/Wiring.h"
#include "shell/frmMonitor.h"
#include "shell/state/RecentFiles.h"
#include "shell/state/Settings.h"
#include "shell/state/State.h"
#include "surface/forms/windows/EventLoop.h"
#include "surface/raster/FailingStep.h"
#include "tools/SelectTool.h"
#include "tools/ToolButtons.h"
#include "ui/MsgBoxEnhanced.h"

namespace zelvane {
namespace {

/// How long a picture waits for the main window at most, where the desktop is slow to show it.
constexpr int kLongestWaitMs = 500;

void ConfigureMessages() {
  MessageObject.SetBackColorBody(kWhite);
  MessageObject.SetGradientPaint(true);
  MessageObject.SetHeadingType(1);
  MessageObject.SetMoveable(true);
  MessageObject.SetTextAlignment(kAlignCentre);
  MessageObject.SetDefaultTitle("Zelvane");
  MessageObject.SetStartUpPosition(kCentredOnWindow);
}

void WireWindow(MainWindow& window) {
  window.OnResize = [&window] { window.MDIForm_Resize(); };
  window.OnQueryUnload = [&window](bool& Cancel, UnloadModes) { window.MDIForm_QueryUnload(Cancel); };
  window.Desktop.OnSettingChanged = [&window] { window.Desktop_SettingsChanged(); };
  window.OnFilesDropped = [&window](const std::vector<std::string>& paths) {
    window.Activate();
    OpenPickedFiles(paths);
  };
  window.CmdTimer.OnTimer = [] { ToolButtons->Cmd.Hover(State.ToolButtonDown); };
  WireMenus(window.Menus);
  WirePanels();
  WireKeys(window);
}

/// The person sees the window at once, and a picture finds the room that the desktop has given it.
void ShowAndPaint() {
  bool is_painted = false;
  MainForm->OnPaint = [&] { is_painted = true; };
  MainForm->Show();
  MainForm->MDIForm_Resize();
  RunEventsUntil([&] { return is_painted || !MainForm.IsLoaded(); }, kLongestWaitMs);
  if (MainForm.IsLoaded()) MainForm->OnPaint = nullptr;
}

}  // namespace

void MDIForm_Load() {
  MainForm->RestoreWindowPlace();
  if (ReadSetting("ZelvaneMaximized", "No") == "Yes") MainForm->SetWindowState(kMaximised);
  MainForm->MeasureTitle();
  SetColorBars();
  ConfigureMessages();
  BuildInterface(*MainForm);
  WireWindow(*MainForm);
  SetSplashMessage("Loading Swatches");
  Attempt(LoadSwatches);
  SelectTool(kCursorTool);
  SelectOption(0);
  SelectOption3(0);
  SelectOption4(0);
  LoadRecentList();
  if (State.ShowSplash && Logo.IsLoaded()) Logo->Unload();
  State.ShowSplash = false;
  State.OpenFilterIndex = 0;
  MainForm->CmdTimer.SetEnabled(true);
  ShowAndPaint();
  if (MainForm.IsLoaded()) Attempt([] { frmMonitor->Form_Activate(); });
  OpenHandedOver();
}

}  // namespace zelvane
