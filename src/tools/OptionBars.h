#pragma once

#include <array>
#include <functional>
#include <vector>

#include "surface/forms/controls/CheckBox.h"
#include "surface/forms/controls/ComboBox.h"
#include "surface/forms/controls/CommandButton.h"
#include "surface/forms/controls/Label.h"
#include "surface/forms/controls/Timer.h"
#include "surface/forms/picture/PictureSurface.h"
#include "surface/forms/windows/Form.h"
#include "tools/ButtonGroup.h"
#include "tools/NumericOptions.h"
#include "ui/NumberBox.h"

namespace zelvane {

/// The option bars, one for each tool, of which that of `CurrentTool` is seen. The main window moves them
/// into its top bar; the window itself never shows. What the controls are for is wired by `WireOptionBars`.
class OptionBarsWindow : public Form {
 public:
  OptionBarsWindow();

  ControlArray<PictureSurface> DrawToolbar;
  ControlArray<PictureSurface> ToolIcon;
  std::array<PointerIcon, kToolCount>
      MyCursor{};  ///< the pointer over the picture; the Cursor tool has the default

  ControlArray<NumberBox> pixelSelector;     ///< by `NumericOption`
  std::function<void()> OnOptionChange;      ///< one of the numbers has changed
  ControlArray<PictureSurface> CmdDropDown;  ///< opens the slider for the box beside it
  ButtonGroup Cmd, Cmd2;  ///< style of the Rectangle and of the Circle tool, which share it
  ButtonGroup Cmd3;       ///< style of the Pen
  ButtonGroup Cmd4;       ///< Brighten or Darken
  ComboBox comboZoom;     ///< "100%" to "800%", one for all documents
  Label lblAngle;         ///< direction of a gradient
  Label ColorPick, lblRed, lblGreen, lblBlue;  ///< the colour under the eyedropper
  CheckBox RoundCorners;
  Label lblFont, lblFontStyle;
  PictureSurface CmdFont, CmdFontStyle;
  ControlArray<CommandButton> CmdButton;  ///< "Apply Text", "Cancel Text"
  CommandButton clearButton;

  int16_t OpenSelector = -1;  ///< the box whose slider is open
  std::array<bool, kOptionCount> DropDownDown{};
  bool FontsOpen = false, FontStyleOpen = false;  ///< the pickers of the Text tool are

  IntervalTimer CmdTimer, CircleTimer, BrushTimer,
      LightTimer;  ///< hover of the four groups, each while its bar is seen

 private:
  class Row;
  void NameBars();
  void AddNumbers();
  void FillBars();
  void FillTextBar();
  ControlArray<Label> captions_;
};

inline SingleWindow<OptionBarsWindow> frmControls;

}  // namespace zelvane
