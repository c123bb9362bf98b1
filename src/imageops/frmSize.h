#pragma once

#include <functional>

#include "document/layers/ImageDocument.h"
#include "surface/forms/controls/CheckBox.h"
#include "surface/forms/controls/CommandButton.h"
#include "surface/forms/windows/DialogForm.h"
#include "ui/SideBoxes.h"

namespace zelvane {

/// Asks for a new size of the active document's picture and scales it. The main window is disabled while it
/// is shown, and it is only hidden until the program ends.
class ImageSizeDialog final : public DialogForm {
 public:
  ImageSizeDialog();

  Label lblWidth;
  NumberBox txtWidth;
  Label lblHeight;
  NumberBox txtHeight;
  PictureSurface Constrain;              ///< links the boxes while the one follows the other
  CheckBox Check1;                       ///< the boxes keep the picture's proportions
  ControlArray<CommandButton> Command1;  ///< Cancel, OK

  /// Comes up with the size of the active document's picture.
  void ShowSize();

  /// The picture is about to be scaled, whole.
  std::function<void(ImageDocument& document)> OnScaling;

 private:
  void Form_Load();
  void WireEvents();
  void LayOut();
  void Form_QueryUnload(bool& Cancel);
  void Check1_Click();
  void Command1_Click(int16_t Index);
  void FollowWidth();
  void FollowHeight();
  bool ScalePicture();

  const SideBoxes Sides{lblWidth, txtWidth, lblHeight, txtHeight};
};

inline SingleWindow<ImageSizeDialog> frmSize;

}  // namespace zelvane
