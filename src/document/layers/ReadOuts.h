#pragma once

#include <memory>

#include "surface/forms/controls/Label.h"
#include "surface/forms/picture/PictureSurface.h"

namespace zelvane {

/// The read-outs in the top bar: where the pointer is, and how far a stroke has gone from its press.
struct ReadOutControls {
  explicit ReadOutControls(Control& TopBar);

  PictureSurface CoordsInfo;
  Label lblArea, lblCoords;
};

/// Stands while the main window does.
inline std::unique_ptr<ReadOutControls> ReadOuts;

}  // namespace zelvane
