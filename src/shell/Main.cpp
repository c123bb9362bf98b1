#include "shell/Main.h"

#include "shell/MainForm.h"
#include "shell/state/Settings.h"
#include "shell/state/State.h"
#include "surface/forms/windows/Application.h"
#include "surface/system/desktop/Clock.h"
#include "surface/system/desktop/Programs.h"
#include "surface/system/files/Files.h"
#include "surface/system/files/PictureFile.h"

namespace zelvane {
namespace {

constexpr double kSecondsOfDay = 24 * 60 * 60;

void FindSiblings() {
  State.SabriqueWindow = FindWindowByTitle(" Sabrique");
  State.KorvathWindow = FindWindowByTitle(" Korvath");
}

std::string DefaultFolder() {
  const std::string folder = CurrentFolder();
  return folder + (folder.ends_with('/') ? "MyKorvath" : "/MyKorvath");
}

/// The place for it holds 64 bytes, of which one ends the text: a temporary folder with a longer path leaves
/// it empty.
std::string FetchTempPath() {
  constexpr size_t kRoom = 64;
  return TemporaryFolder().size() < kRoom ? OwnTemporaryFolder() : std::string();
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

bool Main(const std::string& tail) {
  SurviveFileSizeLimit();
  State.CommandLine = PathFromCommandLine(tail);
  WriteSetting("CommandLine2", State.CommandLine);
  State.FileTypeNames = {"", "GIF", "JPEG", "PNG", "BMP"};
  State.AccentColor = RGB(192, 192, 192);
  State.PicFormatObject = std::make_unique<PicFormat32>();
  State.IsNT = IsNTPlatform();
  if (!State.CommandLine.empty()) ReadAhead(State.CommandLine);
  ChangeFolder(ApplicationFolder());
  State.ZelvaneFolder = ReadSetting("ZelvaneFolder", DefaultFolder());
  FindSiblings();
  State.ShowSplash =
      ReadNumber("ShowSplashScreen", 1) == 1.0 && State.SabriqueWindow == 0 && State.KorvathWindow == 0;
  State.TempPath = FetchTempPath();
  MainForm->MDIForm_Load();
  return true;
}

/// Past midnight the clock starts anew, which ends the wait.
void WaitSeconds(int16_t seconds) {
  const double start = Timer(), end = start + seconds;
  for (double now = start; now >= start && now < end && end < kSecondsOfDay; now = Timer()) DoEvents();
}

}  // namespace zelvane
