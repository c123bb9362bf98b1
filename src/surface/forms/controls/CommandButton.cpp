#include "surface/forms/controls/CommandButton.h"

#include <QPushButton>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Events.h"
#include "surface/raster/Contrast.h"

namespace zelvane {
namespace {

QPushButton* Button(QWidget* widget) {
  return static_cast<QPushButton*>(widget);
}

}  // namespace

CommandButton::CommandButton(Control& parent, const std::string& name, const std::string& caption)
    : Control(&parent, name, new QPushButton(ToQt(caption), parent.Widget())), caption_(caption) {
  QObject::connect(Button(widget_), &QPushButton::clicked, widget_, [this] { FireEvent(OnClick); });
}

void CommandButton::SetCaption(const std::string& caption) {
  caption_ = caption;
  if (widget_) Button(widget_)->setText(ToQt(caption));
}

void CommandButton::SetDefault(bool is_default) {
  default_ = is_default;
  if (widget_) Button(widget_)->setDefault(is_default);
}

void CommandButton::SetBackColor(Color color) {
  back_color_ = color;
  // The desktop's face is what the button has by itself, and follows the desktop.
  if (!widget_ || color == SystemColor::ButtonFace) return;
  Tint(*widget_, QPalette::Button, color);
  Tint(*widget_, QPalette::ButtonText,
       ToColor(ReadableInk(ToPixel(color), ToPixel(SystemColor::ButtonText))));
}

}  // namespace zelvane
