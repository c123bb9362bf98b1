#pragma once

#include <functional>

#include "surface/forms/controls/CommandButton.h"
#include "surface/forms/controls/Frame.h"
#include "surface/forms/controls/Label.h"
#include "surface/forms/controls/OptionButton.h"
#include "surface/forms/controls/TextBox.h"
#include "surface/forms/windows/DialogForm.h"
#include "ui/SideBoxes.h"

namespace zelvane {

/// Asks for a new image's name, size and background. The main window is disabled while it is shown. It is
/// only hidden until the program ends, so that its fields keep what was typed last.
class NewImageDialog final : public DialogForm {
 public:
  NewImageDialog();

  Label lblName;
  TextBox txtName;
  Frame SizeFrame;
  Label lblWidth;
  NumberBox txtWidth;
  Label lblHeight;
  NumberBox txtHeight;
  Frame BackgroundFrame;
  ControlArray<OptionButton> Option1;    ///< white, foreground colour, background colour
  CommandButton Command2;                ///< keeps the fields as default settings
  ControlArray<CommandButton> Command1;  ///< Cancel, OK

  /// An image has been made, and the main window takes input again.
  std::function<void()> OnMade;

 private:
  void Form_Load();
  void TakeSettings();
  void WireEvents();
  void Form_QueryUnload(bool& Cancel);
  void Command1_Click(int16_t Index);
  void Command2_Click() const;
  void LayOut();
  void FillSizeFrame(Single row);
  void FillBackgroundFrame();
  Single PlaceButtons();
  /// The index of the set `Option1`.
  int16_t Background() const;
  bool MakeImage();

  const SideBoxes Sides{lblWidth, txtWidth, lblHeight, txtHeight};
};

inline SingleWindow<NewImageDialog> frmNew;

}  // namespace zelvane
