#pragma once

#include <string>

#include "surface/forms/controls/Control.h"

namespace zelvane {

/// A plain part of a window that holds other controls.
class Panel : public Control {
 public:
  /// The desktop's, or a shade of it that sets off what lies on the panel.
  enum class Face { Plain, Ground };
  Panel(Control& parent, const std::string& name, Face face = Face::Plain);
};

}  // namespace zelvane
