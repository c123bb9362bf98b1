#include "imageops/effects/RunEffect.h"

#include <algorithm>
#include <utility>

#include "document/window/MakeDocument.h"
#include "imageops/Undo.h"
#include "imageops/effects/WaitForProgram.h"
#include "selection/Selection.h"
#include "shell/state/State.h"
#include "surface/raster/FailingStep.h"
#include "surface/system/desktop/Programs.h"
#include "surface/system/files/ExchangeFile.h"
#include "surface/system/files/Files.h"
#include "tools/OptionBars.h"
#include "ui/MsgBox.h"

namespace zelvane {
namespace {

constexpr size_t kEndingLength = 4;
/// The one effect whose result may be of another size by its nature.
constexpr char kRotate[] = "rotate.exe";

std::string EffectsFolder() {
  return JoinPath(ApplicationFolder(), "Effects");
}

/// The name without ".exe", which may be in capitals.
std::string BaseOf(const std::string& fileName) {
  return fileName.substr(0, fileName.size() - std::min(kEndingLength, fileName.size()));
}

/// The folder for temporary files may have been cleared away since the start, or never have been found.
std::string ExchangeFolder() {
  return !State.TempPath.empty() && MakeOwnFolder(State.TempPath) ? State.TempPath : OwnTemporaryFolder();
}

/// The main window takes no input while one stands, whatever is thrown meanwhile.
class DisabledMain {
 public:
  DisabledMain() { MdiForm::Main()->SetEnabled(false); }
  ~DisabledMain() {
    MdiForm* main = MdiForm::Main();
    if (!main) return;
    Attempt([&] { main->SetEnabled(true); });
    Attempt([&] { main->Activate(); });
  }
  DisabledMain(const DisabledMain&) = delete;
  DisabledMain& operator=(const DisabledMain&) = delete;
};

/// False: the person has called it off.
bool RunProgram(const std::string& fileName, const std::string& argument) {
  const auto program = StartProgram(JoinPath(EffectsFolder(), fileName), {argument});
  return !program || WaitForProgram(*program, EffectName(fileName)).has_value();
}

bool IsLoaded(const ImageDocument* document) {
  const std::vector<Form*>& forms = Forms();
  return std::find(forms.begin(), forms.end(), document) != forms.end();
}

void TakePicture(ImageDocument& document, Bitmap picture) {
  if (document.SelectArea.Visible()) return ReplaceSelection(document, std::move(picture));
  const bool is_resized = picture.Bounds() != document.Buffer.Image().Bounds();
  document.Buffer.SetPicture(std::move(picture));
  if (!is_resized) return;
  document.SizePaintArea();
  document.RealignZoom(-1, -1);
}

void TakeResult(ImageDocument& document, std::optional<LoadedPicture> result) {
  TakeUndoSnapshot(document);
  if (result) Attempt([&] { TakePicture(document, std::move(*result)); });
  document.Dirty = true;
  RefreshPaintArea(document.Buffer);
}

/// The new document stands before the old one goes, so that a failure loses nothing. The zoom box, which
/// shows the new one's 100 % meanwhile, hands the old one's zoom on.
void ReplaceDocument(ImageDocument& old, LoadedPicture result) {
  const DocumentName name = {old.Tag(), old.Buffer.Tag()};
  const int multiple = old.ZoomMultiple();
  frmPaint& document = MakeDocument(std::move(result), name, DocumentPlace{old.Left(), old.Top()});
  document.OpenedFile = true;
  document.File = old.File;
  document.Dirty = true;
  old.SetDirtyFalse();
  old.Unload();
  frmControls->comboZoom.SetListIndex(multiple - 1);
  document.ChangeZoomFactor();
  document.Form_Activate();
}

void TakeBack(ImageDocument& document, const std::string& fileName, const ExchangeFile& file) {
  std::optional<LoadedPicture> result;
  Attempt([&] { result = file.Read(); });
  if (ToLower(fileName) != kRotate) return TakeResult(document, std::move(result));
  if (result) ReplaceDocument(document, std::move(*result));
}

void TellFailure(const std::string& fileName, const std::string& reason) {
  MsgBox("The effect \"" + EffectName(fileName) +
             "\" could not be given the picture.\r\n\r\nReason: " + reason + ".",
         kExclamationIcon, "Zelvane");
}

}  // namespace

std::vector<std::string> EffectPrograms() {
  const std::string folder = EffectsFolder();
  std::vector<std::string> names = FilesIn(folder, "*.exe");
  std::erase_if(names, [&](const std::string& name) { return !IsExecutable(JoinPath(folder, name)); });
  std::ranges::stable_sort(names, {}, ToLower);
  return names;
}

std::string EffectName(const std::string& fileName) {
  return Capitalised(fileName.substr(0, std::min(fileName.find(".exe"), BaseOf(fileName).size())));
}

void RunEffect(const std::string& fileName) {
  const MdiForm* main = MdiForm::Main();
  ImageDocument* document = ActiveDocument();
  if (!main || !main->Enabled() || !document || document->Down) return;
  const ExchangeFile file(ExchangeFolder(), BaseOf(fileName) + ".bmp");
  const WriteResult written = file.Write(document->LiveLayer().Image());
  if (!written.Done()) return TellFailure(fileName, written.reason);
  const DisabledMain disabled;
  const bool is_result = RunProgram(fileName, file.Path()) && file.Exists();
  if (is_result && IsLoaded(document)) Attempt([&] { TakeBack(*document, fileName, file); });
  file.Remove();
}

}  // namespace zelvane
