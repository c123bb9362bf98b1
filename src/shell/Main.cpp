#include "shell/Main.h"

#include "shell/HandOver.h"
#include "shell/LoadMainForm.h"
#include "shell/Logo.h"
#include "shell/state/DataFile.h"
#include "shell/state/Settings.h"
#include "shell/state/State.h"
#include "surface/forms/windows/EventLoop.h"
#include "surface/raster/FailingStep.h"
#include "surface/system/desktop/Programs.h"
#include "surface/system/files/Files.h"
#include "surface/system/files/PictureFile.h"

namespace zelvane {
namespace {

void FindSiblings() {
  State.SabriqueWindow = FindWindowByTitle(" Sabrique");
  State.KorvathWindow = FindWindowByTitle(" Korvath");
}

std::string DefaultFolder() {
  const std::string folder = CurrentFolder();
  return JoinPath(folder, "MyKorvath");
}

/// The place for it holds 64 bytes, of which one ends the text: a temporary folder with a longer path leaves
/// it empty.
std::string FetchTempPath() {
  constexpr size_t kRoom = 64;
  return TemporaryFolder().size() < kRoom ? OwnTemporaryFolder() : std::string();
}

/// Unlike the messages that come later, it doesn't hold the start up.
void TellDataFile() {
  Logo->Message.SetCaption("PLEASE WAIT... Opening data file");
  Logo->Message.Update();
}

void ShowSplash() {
  Logo->Label[0].SetCaption("Zelvane");
  Logo->ShowCentred();
  if (Logo.IsLoaded() && !Logo->IsHurried()) WaitSeconds(1);
}

}  // namespace

std::string PathFromCommandLine(const std::string& tail) {
  std::string path = tail;
  if (path.starts_with('"')) path.erase(0, 1);
  if (path.ends_with('"')) path.pop_back();
  return AbsolutePath(path);
}

bool IsNTPlatform() {
  return true;
}

StartResult Main(const std::string& tail) {
  SurviveFileSizeLimit();
  State.CommandLine = PathFromCommandLine(tail);
  if (ThisInstance.IsFirst()) WriteSetting("CommandLine2", State.CommandLine);
  State.FileTypeNames = {"", "GIF", "JPEG", "PNG", "BMP"};
  State.AccentColor = RGB(192, 192, 192);
  State.PicFormatObject = std::make_unique<PicFormat32>();
  State.IsNT = IsNTPlatform();
  if (!State.CommandLine.empty()) ReadAhead(State.CommandLine);
  ListenToStarts();
  ChangeFolder(ApplicationFolder());
  State.ZelvaneFolder = ReadSetting("ZelvaneFolder", DefaultFolder());
  FindSiblings();
  State.ShowSplash =
      ReadNumber("ShowSplashScreen", 1) == 1.0 && State.SabriqueWindow == 0 && State.KorvathWindow == 0;
  if (State.ShowSplash) Attempt(ShowSplash);
  if (State.ShowSplash && Logo.IsLoaded()) TellDataFile();
  if (!OpenDataFile()) return StartResult::Failed;
  State.TempPath = FetchTempPath();
  return Attempt(MDIForm_Load) ? StartResult::Running : StartResult::Failed;
}

}  // namespace zelvane
