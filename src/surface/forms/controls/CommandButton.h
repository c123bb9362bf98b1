#pragma once

#include <string>

#include "surface/forms/controls/Control.h"

namespace zelvane {

/// A button with a caption; `OnClick` by pointer and by keyboard. The letter behind a "&" is underlined, and
/// presses the button with Alt.
class CommandButton : public Control {
 public:
  CommandButton(Control& parent, const std::string& name, const std::string& caption = "");

  const std::string& Caption() const { return caption_; }
  void SetCaption(const std::string& caption);
  /// The button that Return presses in a `DialogForm` while no other button has the keyboard.
  bool Default() const { return default_; }
  void SetDefault(bool is_default);
  /// The face. The caption reads on it, whichever colour the desktop has for captions.
  Color BackColor() const { return back_color_; }
  void SetBackColor(Color color);

 protected:
  bool ClicksByPointer() const override { return false; }

 private:
  std::string caption_;
  Color back_color_ = SystemColor::ButtonFace;
  bool default_ = false;
};

}  // namespace zelvane
