#pragma once

#include <string>

#include "surface/forms/controls/Control.h"

namespace zelvane {

/// The outline of a box above a surface, one logical pixel wide. The pointer goes through it.
class OutlineMark : public Control {
 public:
  OutlineMark(Control& ground, const std::string& name);

  void SetForeColor(Color color);

 private:
  class View;
};

}  // namespace zelvane
