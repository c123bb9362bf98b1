#pragma once

#include <string>

#include "surface/forms/controls/Control.h"

namespace zelvane {

/// A round button with a caption, at first as large as they need. Of those in one parent at most one is set.
class OptionButton : public Control {
 public:
  OptionButton(Control& parent, const std::string& name, const std::string& caption);

  bool Value() const;
  /// Setting one takes the mark from the others of its parent, and fires `OnClick` where it wasn't set.
  void SetValue(bool value);

 protected:
  bool ClicksByPointer() const override { return false; }
};

}  // namespace zelvane
