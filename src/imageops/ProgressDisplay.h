#pragma once

#include <memory>

#include "surface/forms/controls/Label.h"
#include "surface/forms/picture/PictureSurface.h"
#include "surface/forms/windows/MdiForm.h"

namespace zelvane {

/// How far a long operation has come: a strip at the bottom of the main window, hidden while there is none.
struct ProgressControls {
  explicit ProgressControls(MdiForm& main);

  PictureSurface ProcessBg;
  Label lblProcessing;
  PictureSurface Process;     ///< the way to go
  PictureSurface ProcessBar;  ///< how much of it is done
};

/// Stands while the main window does.
inline std::unique_ptr<ProgressControls> Progress;

}  // namespace zelvane
