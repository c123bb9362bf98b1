#include "ui/KeptDialog.h"

#include "surface/forms/windows/MdiForm.h"

namespace zelvane {

void PlaceAtMain(Form& dialog) {
  const MdiForm* main = MdiForm::Main();
  if (main) dialog.Move(main->Left(), main->Top());
}

void ReturnToMain(Form& dialog) {
  dialog.Hide();
  MdiForm* main = MdiForm::Main();
  if (!main) return;
  main->SetEnabled(true);
  main->Activate();
}

}  // namespace zelvane
