#include "document/window/ClosePicture.h"

#include "document/layers/InfoPanel.h"
#include "document/window/SavePicture.h"
#include "imageops/ProgressRun.h"
#include "shell/state/State.h"
#include "ui/MsgBox.h"

namespace zelvane {
namespace {

bool SaveUnderAskedName(ImageDocument& document) {
  const std::string name = GetSaveName(document, "Save As...", kSaveFilter);
  if (!name.empty()) return MayReplace(document, name) && SaveFile(document, name);
  return MsgBox("The save operation failed.\r\nClose the window anyway?", kYesNo + kQuestionIcon,
                "Save failed.") == kAnswerYes;
}

bool SaveBeforeClose(ImageDocument& document) {
  const std::string path = document.Buffer.Tag();
  if (path.empty()) return SaveUnderAskedName(document);
  SetSaveType(path);
  return SaveFile(document, path);
}

/// The person sees which picture the question is about.
void BringToFront(ImageDocument& document) {
  MdiForm* main = MdiForm::Main();
  if (main && main->WindowState() == kMinimised) main->SetWindowState(kNormal);
  document.Activate();
}

bool SettleChanges(ImageDocument& document) {
  BringToFront(document);
  switch (MsgBox("The image has been changed.\r\n\r\nDo you wish to save the changes?",
                 kYesNoCancel + kQuestionIcon, "Changed Image")) {
    case kAnswerYes:
      return SaveBeforeClose(document);
    case kAnswerNo:
      return true;
    default:
      return false;
  }
}

}  // namespace

bool MayClose(ImageDocument& document) {
  const bool is_busy = ProgressRun::IsStanding();
  if (is_busy || (document.Dirty && !SettleChanges(document))) {
    State.CloseCancelled = true;
    return false;
  }
  document.ImageInfo.reset();
  InfoPanel->SetVisible(false);
  return true;
}

}  // namespace zelvane
