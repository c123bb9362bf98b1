#pragma once

#include <memory>

#include "surface/forms/controls/Label.h"
#include "surface/forms/picture/PictureSurface.h"

namespace zelvane {

/// The facts of the file behind the active document; hidden without one.
struct InfoFrameControls {
  /// Below `top` of the bar, in pixels.
  InfoFrameControls(Control& RightBar, Single top);

  PictureSurface Split;  ///< the separator above the frame
  PictureSurface InfoFrame;
  Label lblHeading;
  ControlArray<Label> lblNames;
  Label IWidth, IHeight, IBits, iType;

  void SetVisible(bool visible);
};

/// Stands while the main window does.
inline std::unique_ptr<InfoFrameControls> InfoPanel;

}  // namespace zelvane
