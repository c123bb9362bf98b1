#pragma once

#include <memory>
#include <string>
#include <vector>

#include "surface/forms/controls/Control.h"

namespace zelvane {

/// A list of texts, a row each, of which one is chosen. Quick with many thousands.
///
/// `OnClick` comes when the person chooses a row, by pointer, by keys or by typing how it begins, also the
/// one that is chosen already; `OnDblClick` at a double click on a row. Enter and Esc go on to the window.
class ListBox : public Control {
 public:
  ListBox(Control& parent, const std::string& name);
  ~ListBox() override;

  /// Nothing is chosen after it.
  void SetItems(std::vector<std::string> items);
  int ListCount() const;
  const std::string& List(int index) const;
  /// 0 and up, -1 for none.
  int ListIndex() const;
  /// Fires nothing. The row comes into view.
  void SetListIndex(int index);
  /// That of the chosen row, empty without one.
  std::string Text() const;
  /// The drawn icon before every row, empty for none.
  void SetIcon(const std::string& icon);

 protected:
  bool ClicksByPointer() const override { return false; }

 private:
  class Rows;
  class View;
  std::unique_ptr<Rows> rows_;
};

}  // namespace zelvane
