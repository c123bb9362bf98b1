#include "surface/forms/controls/ComboBox.h"

#include <QComboBox>
#include <QLineEdit>
#include <QWheelEvent>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Events.h"

namespace zelvane {
namespace {

class BoxWithList : public QComboBox {
 public:
  explicit BoxWithList(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setCompleter(nullptr);
    setInsertPolicy(NoInsert);
    // The toolkit would take a typed text that stands in the list as a choice when the keyboard leaves.
    disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
  }

 protected:
  /// A notch in passing puts no entry in the place of what was typed.
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

QComboBox* List(QWidget* widget) {
  return static_cast<QComboBox*>(widget);
}

QWidget* NewBox(QWidget* parent, ComboBox::Style style) {
  return style == ComboBox::Style::DropDown ? new BoxWithList(parent) : new QComboBox(parent);
}

}  // namespace

ComboBox::ComboBox(Control& parent, const std::string& name, Style style)
    : Control(&parent, name, NewBox(parent.Widget(), style)) {
  // With a text for no choice the toolkit doesn't choose the first entry of itself.
  List(widget_)->setPlaceholderText(" ");
  QObject::connect(List(widget_), &QComboBox::activated, widget_, [this] { FireEvent(OnClick); });
  QObject::connect(List(widget_), &QComboBox::editTextChanged, widget_, [this] { FireEvent(OnChange); });
}

void ComboBox::AddItem(const std::string& text) {
  if (widget_) List(widget_)->addItem(ToQt(text));
}

void ComboBox::Clear() {
  if (!widget_) return;
  List(widget_)->clear();
  List(widget_)->clearEditText();
}

int ComboBox::ListCount() const {
  return widget_ ? List(widget_)->count() : 0;
}

int ComboBox::ListIndex() const {
  if (!widget_) return -1;
  const QComboBox& list = *List(widget_);
  const int chosen = list.currentIndex();
  return list.currentText() == list.itemText(chosen) ? chosen : -1;
}

void ComboBox::SetListIndex(int index) {
  if (index < -1 || index >= ListCount() || index == ListIndex()) return;
  List(widget_)->setCurrentIndex(index);
  FireEvent(OnClick);
}

std::string ComboBox::Text() const {
  return widget_ ? FromQt(List(widget_)->currentText()) : std::string();
}

void ComboBox::SetText(const std::string& text) {
  if (widget_) List(widget_)->setEditText(ToQt(text));
}

void ComboBox::SelectAll() {
  if (QLineEdit* box = widget_ ? List(widget_)->lineEdit() : nullptr) box->selectAll();
}

void ComboBox::SetAccessibleName(const std::string& name) {
  Control::SetAccessibleName(name);
  // The box itself bears the name as well: it's what has the keyboard.
  if (QLineEdit* box = widget_ ? List(widget_)->lineEdit() : nullptr) box->setAccessibleName(ToQt(name));
}

}  // namespace zelvane
