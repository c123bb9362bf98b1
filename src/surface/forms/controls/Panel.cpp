#include "surface/forms/controls/Panel.h"

#include <QWidget>

namespace zelvane {

Panel::Panel(Control& parent, const std::string& name)
    : Control(&parent, name, new QWidget(parent.Widget())) {}

}  // namespace zelvane
