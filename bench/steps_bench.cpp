#include <cstdio>

#include "shell/Main.h"
#include "shell/MainForm.h"
#include "steps/Sheet.h"

namespace zelvane {
namespace {

/// The main window, with room for both sheets and without the document that the start opened.
void StartProgram() {
  Main("");
  const std::vector<Form*> forms = Forms();
  for (Form* form : forms) {
    if (auto* document = dynamic_cast<ImageDocument*>(form)) document->Unload();
  }
  MainForm->SetWidth(kMainWidth * kTwips);
  MainForm->SetHeight(kMainHeight * kTwips);
  QGuiApplication::sync();
}

/// What isn't in view isn't painted either, and would make the steps look quicker.
bool HasRoom() {
  LargeSheet large;
  SmallSheet small;
  if (large.IsInView(kViewWidth, kViewHeight) && small.IsInView(kSmallSide, kSmallSide)) return true;
  std::fputs("The display is too small for the windows.\n", stderr);
  return false;
}

}  // namespace
}  // namespace zelvane

int main(int argc, char** argv) {
  return zelvane::RunInProgram(argc, argv, [] {
    zelvane::StartProgram();
    return zelvane::HasRoom();
  });
}
