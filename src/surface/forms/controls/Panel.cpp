#include "surface/forms/controls/Panel.h"

#include <QPaintEvent>
#include <QPainter>
#include <QWidget>

#include "surface/forms/controls/SystemColors.h"

namespace zelvane {
namespace {

constexpr int kShade = 115;  // percent

/// Shaded as it's painted, so that it follows the palette.
class Ground : public QWidget {
 public:
  explicit Ground(QWidget* parent) : QWidget(parent) { setAttribute(Qt::WA_OpaquePaintEvent); }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QPainter(this).fillRect(event->rect(), GroundOf(palette(), kShade));
  }
};

}  // namespace

Panel::Panel(Control& parent, const std::string& name, Face face)
    : Control(&parent, name,
              face == Face::Ground ? new Ground(parent.Widget()) : new QWidget(parent.Widget())) {}

}  // namespace zelvane
