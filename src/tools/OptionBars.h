#pragma once

#include <array>

#include "shell/state/State.h"
#include "surface/forms/ComboBox.h"
#include "surface/forms/Form.h"
#include "surface/forms/Label.h"
#include "surface/forms/PictureSurface.h"

namespace zelvane {

/// The option bars, one for each tool, of which that of `CurrentTool` is seen. The main window moves them
/// into its top bar; the window itself never shows.
class OptionBarsWindow : public Form {
 public:
  OptionBarsWindow();

  ControlArray<PictureSurface> DrawToolbar;
  ControlArray<PictureSurface> ToolIcon;
  Label lblZoom;
  ComboBox comboZoom;  ///< "100%" to "800%", one for all documents
  std::array<PointerIcon, kToolCount>
      MyCursor{};  ///< the pointer over the picture; the Cursor tool has the default
};

inline SingleWindow<OptionBarsWindow> frmControls;

}  // namespace zelvane
