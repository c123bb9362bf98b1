#include "surface/forms/controls/ComboBox.h"

#include <QComboBox>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Events.h"

namespace zelvane {
namespace {

QComboBox* List(QWidget* widget) {
  return static_cast<QComboBox*>(widget);
}

}  // namespace

ComboBox::ComboBox(Control& parent, const std::string& name)
    : Control(&parent, name, new QComboBox(parent.Widget())) {
  QObject::connect(List(widget_), &QComboBox::activated, widget_, [this] { FireEvent(OnClick); });
}

void ComboBox::AddItem(const std::string& text) {
  if (!widget_) return;
  // The toolkit chooses the first entry of itself; here nothing is chosen until somebody does.
  const int chosen = ListIndex();
  List(widget_)->addItem(ToQt(text));
  List(widget_)->setCurrentIndex(chosen);
}

int ComboBox::ListCount() const {
  return widget_ ? List(widget_)->count() : 0;
}

int ComboBox::ListIndex() const {
  return widget_ ? List(widget_)->currentIndex() : -1;
}

void ComboBox::SetListIndex(int index) {
  if (index < -1 || index >= ListCount() || index == ListIndex()) return;
  List(widget_)->setCurrentIndex(index);
  FireEvent(OnClick);
}

}  // namespace zelvane
