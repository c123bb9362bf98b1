#pragma once

#include <string>

#include "surface/forms/controls/Control.h"

namespace zelvane {

/// A plain part of a window that holds other controls; its face is the desktop's.
class Panel : public Control {
 public:
  Panel(Control& parent, const std::string& name);
};

}  // namespace zelvane
