#pragma once

#include <string>

#include "surface/forms/controls/Control.h"

namespace zelvane {

/// An icon of the program over whatever lies behind it, sharp at every scale of the screen.
class Image : public Control {
 public:
  /// `size`: its side in logical pixels.
  Image(Control& parent, const std::string& name, int size) : Image(parent, name, size, size) {}
  Image(Control& parent, const std::string& name, int width, int height);

  /// An SVG of the program's icons; empty for none.
  const std::string& Icon() const { return icon_; }
  void SetIcon(const std::string& icon);

 private:
  class View;
  std::string icon_;
};

}  // namespace zelvane
