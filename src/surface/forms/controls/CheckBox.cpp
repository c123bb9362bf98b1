#include "surface/forms/controls/CheckBox.h"

#include <QCheckBox>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Events.h"

namespace zelvane {

CheckBox::CheckBox(Control& parent, const std::string& name, const std::string& caption)
    : Control(&parent, name, new QCheckBox(ToQt(caption), parent.Widget())) {
  width_ = NaturalWidth();
  height_ = NaturalHeight();
  QObject::connect(static_cast<QCheckBox*>(widget_), &QCheckBox::clicked, widget_,
                   [this] { FireEvent(OnClick); });
}

int16_t CheckBox::Value() const {
  return widget_ && static_cast<QCheckBox*>(widget_)->isChecked() ? 1 : 0;
}

void CheckBox::SetValue(int16_t value) {
  if (widget_) static_cast<QCheckBox*>(widget_)->setChecked(value == 1);
}

}  // namespace zelvane
