#include "surface/forms/controls/Image.h"

#include <QPainter>
#include <QWidget>

#include "surface/forms/controls/IconArt.h"

namespace zelvane {

class Image::View : public QWidget {
 public:
  using QWidget::QWidget;
  std::string icon;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.drawPixmap(0, 0, IconArt(icon, size(), devicePixelRatioF()));
  }
};

Image::Image(Control& parent, const std::string& name, int width, int height)
    : Control(&parent, name, new View(parent.Widget())) {
  width_ = static_cast<Single>(width * UnitsPerPixel());
  height_ = static_cast<Single>(height * UnitsPerPixel());
  Place();
}

void Image::SetIcon(const std::string& icon) {
  icon_ = icon;
  if (!widget_) return;
  static_cast<View*>(widget_)->icon = icon;
  widget_->update();
}

}  // namespace zelvane
