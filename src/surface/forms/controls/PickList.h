#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "surface/forms/controls/Control.h"

namespace zelvane {

/// Choices under each other, of which the pointer or the arrow keys highlight one, for a list that drops
/// down. Typing goes to the next one that begins so. Quick with many thousands: a choice is drawn when it
/// comes into view, and one in a face of its own is there a few frames later at most.
class PickList : public Control {
 public:
  /// A line of text with a blank before it, and beneath, where there is a `face`, the same at 12 points in
  /// it.
  struct Choice {
    std::string text;
    bool bold = false, italic = false;  ///< the first line
    std::string face{};                 ///< the name of a font
    double above = 0, below = 0;        ///< how far the face's lines reach from their base, in sizes of it
  };

  PickList(Control& parent, const std::string& name);
  ~PickList() override;

  /// Nothing is highlighted after it.
  void SetChoices(std::vector<Choice> choices);
  int Count() const;
  const Choice& operator[](int index) const;
  /// Of all choices, with lines between them, in logical pixels.
  int ContentHeight() const;
  /// 0 and up, -1 for none.
  int Highlight() const;
  /// The choice comes into view.
  void SetHighlight(int index);

  /// The person has picked that choice, by a click or by Enter on the highlighted one.
  std::function<void(int Index)> OnPick;

 protected:
  bool ClicksByPointer() const override { return false; }

 private:
  class Rows;
  class Painter;
  class View;
  std::unique_ptr<Rows> rows_;
};

}  // namespace zelvane
