#include "surface/forms/picture/OutlineMark.h"

#include <QPainter>
#include <QWidget>

#include "surface/forms/controls/Conversions.h"

namespace zelvane {

class OutlineMark::View : public QWidget {
 public:
  explicit View(QWidget* parent) : QWidget(parent) { setAttribute(Qt::WA_TransparentForMouseEvents); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawRect(0, 0, width() - 1, height() - 1);
  }
};

OutlineMark::OutlineMark(Control& ground, const std::string& name)
    : Control(&ground, name, new View(ground.Widget())) {}

void OutlineMark::SetForeColor(Color color) {
  if (widget_) Tint(*widget_, QPalette::WindowText, color);
}

}  // namespace zelvane
