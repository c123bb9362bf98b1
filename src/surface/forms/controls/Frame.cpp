#include "surface/forms/controls/Frame.h"

#include <QGroupBox>

#include "surface/forms/controls/Conversions.h"

namespace zelvane {

Frame::Frame(Control& parent, const std::string& name, const std::string& caption)
    : Control(&parent, name, new QGroupBox(ToQt(caption), parent.Widget())) {}

Single Frame::CaptionHeight() const {
  return widget_ ? static_cast<Single>(widget_->contentsMargins().top() * UnitsPerPixel()) : 0;
}

}  // namespace zelvane
