#pragma once

#include "surface/forms/controls/CommandButton.h"
#include "surface/forms/controls/Label.h"
#include "surface/forms/picture/OutlineMark.h"
#include "surface/forms/picture/PictureSurface.h"
#include "surface/forms/windows/DialogForm.h"

namespace zelvane {

/// Picks a colour for `SelColor[State.ColorDialogTarget]`: a strip of hues, and a field from white to the
/// chosen hue and down to black. The main window is disabled while it is shown. It is only hidden until the
/// program ends, so that it comes back as it was left.
///
/// Arrow keys move the pick in the field, and the hue in the strip, by a pixel, with Shift by ten.
class ColorDialog final : public DialogForm {
 public:
  ColorDialog();

  Label lblTitle;
  PictureSurface ColorSel;
  ControlArray<OutlineMark> SelObject;  ///< round the pick, black and within it white
  PictureSurface ColorMap;
  OutlineMark Line1;      ///< round the hue's row
  OutlineMark FocusMark;  ///< round the picture that has the keyboard
  PictureSurface Picture1, NewColor, OldColor;
  ControlArray<Label> lblNames, lblRGB;
  ControlArray<CommandButton> Command1;  ///< Cancel, OK

  /// Comes up for that label.
  void Edit(int16_t Index);

 private:
  void Form_Load();
  void WireEvents();
  void ShowFocus(PictureSurface& picture);
  void WireField();
  void WireStrip();
  void LayOut();
  void PlaceColorDialog();
  void ShowHue(Single y);
  void TakeHue();
  void PickFieldColor(Single x, Single y);
  void PickInside(Single x, Single y);
  void Preview(Color picked);
  void ShowNumbers(Color color);
  void MovePick(int16_t KeyCode, int16_t Shift);
  void MoveHue(int16_t KeyCode, int16_t Shift);
  void Command1_Click(int16_t Index);
  void Form_QueryUnload(bool& Cancel);

  bool HueDragging = false, FieldDragging = false;
  Single Hue = 0;  ///< the row of the strip
};

inline SingleWindow<ColorDialog> frmColor;

}  // namespace zelvane
