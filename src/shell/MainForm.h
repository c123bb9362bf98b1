#pragma once

#include "components/SysInfo.h"
#include "shell/MainMenu.h"
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
  MainMenu Menus;
  SysInfo Desktop;
  IntervalTimer CmdTimer;

  /// Takes the stored place, brought back to the screens that there are.
  void RestoreWindowPlace();
  void MeasureTitle();
  void MDIForm_Resize();
  void MDIForm_QueryUnload(bool& Cancel);
  /// The desktop's settings changed: the window isn't larger than the work area.
  void Desktop_SettingsChanged();

 private:
  void PutOnScreen();
  bool NoteSize();
  bool CloseDocuments();
  void KeepWindowPlace();
};

inline SingleWindow<MainWindow> MainForm;

}  // namespace zelvane
