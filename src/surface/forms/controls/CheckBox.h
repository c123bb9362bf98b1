#pragma once

#include <string>

#include "surface/forms/controls/Control.h"

namespace zelvane {

/// A box with a check mark and a caption, at first as large as they need. `OnClick` comes when the person has
/// changed the mark, by the pointer or a key.
class CheckBox : public Control {
 public:
  CheckBox(Control& parent, const std::string& name, const std::string& caption);

  /// 1 with the mark, 0 without.
  int16_t Value() const;
  void SetValue(int16_t value);

 protected:
  bool ClicksByPointer() const override { return false; }
};

}  // namespace zelvane
