#include "surface/forms/controls/CheckBox.h"

#include <QCheckBox>

#include "surface/forms/controls/Conversions.h"

namespace zelvane {

CheckBox::CheckBox(Control& parent, const std::string& name, const std::string& caption)
    : Control(&parent, name, new QCheckBox(ToQt(caption), parent.Widget())) {
  width_ = NaturalWidth();
  height_ = NaturalHeight();
}

int16_t CheckBox::Value() const {
  return widget_ && static_cast<QCheckBox*>(widget_)->isChecked() ? 1 : 0;
}

void CheckBox::SetValue(int16_t value) {
  if (widget_) static_cast<QCheckBox*>(widget_)->setChecked(value == 1);
}

}  // namespace zelvane
