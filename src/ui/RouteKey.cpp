#include "ui/RouteKey.h"

#include "surface/forms/windows/MdiForm.h"

namespace zelvane {

void RouteKey(Form& form, int16_t KeyCode, int16_t Shift) {
  if (KeyCode != kKeyEscape || (Shift != 0 && Shift != kShift)) return;
  form.Unload();
  if (MdiForm* main = MdiForm::Main(); main && Shift == kShift) main->Unload();
}

}  // namespace zelvane
