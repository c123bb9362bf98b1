#pragma once

#include "components/SysInfo.h"
#include "shell/MainMenu.h"
#include "surface/forms/controls/Label.h"
#include "surface/forms/controls/Timer.h"
#include "surface/forms/picture/PictureSurface.h"

namespace zelvane {

/// The one top-level window: menus, four docked panels, and the documents in between.
class MainWindow final : public MdiForm {
 public:
  MainWindow();
  ~MainWindow() override;

  int16_t LastWindowState = kNormal;             ///< seen by the last resize
  double RestoredHeight = 0, RestoredWidth = 0;  ///< twips, the last size neither minimised nor maximised

  PictureSurface TopBar, LeftBar, RightBar;
  PictureSurface ProcessBg;  ///< the progress display, hidden
  Label lblProcessing;
  PictureSurface Process, ProcessBar;
  MainMenu Menus;
  SysInfo Desktop;
  IntervalTimer CmdTimer;

  /// Builds the interface up to the first documents.
  void MDIForm_Load();

 private:
  void MDIForm_Resize();
  void MDIForm_QueryUnload(bool& Cancel);
  void SettingsChanged();
  void RestoreWindowPlace();
  void MeasureTitle();
  bool NoteSize();
  bool CloseDocuments();
  void KeepWindowPlace();
  void WireEvents();
};

inline SingleWindow<MainWindow> MainForm;

}  // namespace zelvane
