#include "surface/forms/controls/TileButton.h"

#include <QEvent>
#include <QToolButton>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Events.h"
#include "surface/forms/controls/IconArt.h"

namespace zelvane {
namespace {

class Tile : public QToolButton {
 public:
  Tile(QWidget* parent, std::string icon, int size) : QToolButton(parent), icon_(std::move(icon)) {
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    setIconSize(QSize(size, size));
    setAutoRaise(true);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
  }

 protected:
  /// Drawn when first seen, and anew for another palette.
  bool event(QEvent* event) override {
    if (event->type() == QEvent::Polish || event->type() == QEvent::PaletteChange)
      setIcon(IconArt(icon_, iconSize().width(), devicePixelRatioF()));
    return QToolButton::event(event);
  }
  /// Whoever hears of the click says what it shows next.
  void nextCheckState() override {}

 private:
  std::string icon_;
};

}  // namespace

TileButton::TileButton(Control& parent, const std::string& name, const std::string& caption,
                       const std::string& icon, int size)
    : Control(&parent, name, new Tile(parent.Widget(), icon, size)) {
  auto* tile = static_cast<Tile*>(widget_);
  tile->setText(ToQt(caption));
  QObject::connect(tile, &Tile::clicked, tile, [this] { FireEvent(OnClick); });
}

void TileButton::SetAppearance(int16_t appearance) {
  appearance_ = appearance;
  if (widget_) static_cast<Tile*>(widget_)->setChecked(appearance == kRaised);
}

}  // namespace zelvane
