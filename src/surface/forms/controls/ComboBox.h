#pragma once

#include <functional>
#include <string>

#include "surface/forms/controls/Control.h"

namespace zelvane {

/// A list that drops down, of which one entry is chosen.
class ComboBox : public Control {
 public:
  /// Of the list alone, or of a box for typing with the list behind it.
  enum class Style { DropDownList, DropDown };
  ComboBox(Control& parent, const std::string& name, Style style = Style::DropDownList);

  void AddItem(const std::string& text);
  /// Takes all entries and the text away.
  void Clear();
  int ListCount() const;
  /// 0 and up, -1 for none and while the box holds another text than the entry's.
  int ListIndex() const;
  /// Fires `OnClick` where the index is another one. A choice by the user fires it for the entry that stands
  /// as well.
  void SetListIndex(int index);
  /// What has been typed, in the style without a box the chosen entry's. Nothing typed is changed or
  /// completed.
  std::string Text() const;

  // The following are those of the style with a box.

  void SetText(const std::string& text);
  void SelectAll();
  /// Each change of the text, by the program too, before `OnClick` where an entry is chosen.
  std::function<void()> OnChange;

  void SetAccessibleName(const std::string& name) override;

 protected:
  bool ClicksByPointer() const override { return false; }
};

}  // namespace zelvane
