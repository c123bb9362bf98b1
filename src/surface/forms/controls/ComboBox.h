#pragma once

#include <string>

#include "surface/forms/controls/Control.h"

namespace zelvane {

/// A list that drops down, of which one entry is chosen.
class ComboBox : public Control {
 public:
  ComboBox(Control& parent, const std::string& name);

  void AddItem(const std::string& text);
  int ListCount() const;
  /// 0 and up, -1 for none.
  int ListIndex() const;
  /// Fires `OnClick` where the index is another one. A choice by the user fires it for the entry that stands
  /// as well.
  void SetListIndex(int index);

 protected:
  bool ClicksByPointer() const override { return false; }
};

}  // namespace zelvane
