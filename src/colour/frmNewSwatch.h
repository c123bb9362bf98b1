#pragma once

#include "surface/forms/controls/CommandButton.h"
#include "surface/forms/controls/Label.h"
#include "surface/forms/controls/TextBox.h"
#include "surface/forms/picture/PictureSurface.h"
#include "surface/forms/windows/DialogForm.h"

namespace zelvane {

/// Asks for the name under which the foreground colour becomes a swatch. The main window is disabled while it
/// is shown.
class NewSwatchDialog final : public DialogForm {
 public:
  NewSwatchDialog();

  Label lblName;
  TextBox txtSwatch;
  PictureSurface SwatchColor;
  ControlArray<CommandButton> Command1;  ///< OK, Cancel

 private:
  void Form_Load();
  void LayOut();
  void PlaceAtPanel();
  void Command1_Click(int16_t Index);
};

inline SingleWindow<NewSwatchDialog> frmNewSwatch;

}  // namespace zelvane
