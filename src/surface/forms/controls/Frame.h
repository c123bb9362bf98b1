#pragma once

#include <string>

#include "surface/forms/controls/Control.h"

namespace zelvane {

/// A box with a caption that holds what belongs together.
class Frame : public Control {
 public:
  Frame(Control& parent, const std::string& name, const std::string& caption);

  /// How far below the frame's top the room for its controls begins, in its parent's unit.
  Single CaptionHeight() const;
};

}  // namespace zelvane
