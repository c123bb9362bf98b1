#include "surface/forms/controls/OptionButton.h"

#include <QRadioButton>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Events.h"

namespace zelvane {
namespace {

QRadioButton* Button(QWidget* widget) {
  return static_cast<QRadioButton*>(widget);
}

}  // namespace

OptionButton::OptionButton(Control& parent, const std::string& name, const std::string& caption)
    : Control(&parent, name, new QRadioButton(ToQt(caption), parent.Widget())) {
  width_ = NaturalWidth();
  height_ = NaturalHeight();
  QObject::connect(Button(widget_), &QRadioButton::toggled, widget_, [this](bool on) {
    if (on) FireEvent(OnClick);
  });
}

bool OptionButton::Value() const {
  return widget_ && Button(widget_)->isChecked();
}

void OptionButton::SetValue(bool value) {
  if (!widget_) return;
  // The toolkit keeps the mark of the last one that is set.
  Button(widget_)->setAutoExclusive(value);
  Button(widget_)->setChecked(value);
  Button(widget_)->setAutoExclusive(true);
}

}  // namespace zelvane
