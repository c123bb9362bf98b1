#pragma once

#include <string>

#include "surface/forms/picture/PictureSurface.h"

namespace zelvane {

/// A small framed window that drops down over the main one; hidden until it's shown. It is a stop for keys as
/// a form is: it hears of those that its parts get, and nothing round it does.
class DropDown : public PictureSurface {
 public:
  DropDown(Control& main_window, const std::string& name) : PictureSurface(main_window, name, Frame::Yes) {
    SetVisible(false);
  }

 protected:
  bool PreviewsKeys() const override { return true; }
};

}  // namespace zelvane
