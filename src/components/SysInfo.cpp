#include "components/SysInfo.h"

#include <QGuiApplication>
#include <QObject>
#include <QRect>
#include <QScreen>

#include "surface/system/desktop/Screen.h"

namespace zelvane {

/// Follows the primary screen, whichever it is, and tells a change once, though several signals report it.
struct SysInfo::Watcher : QObject {
  explicit Watcher(SysInfo& info) : info_(info) {
    if (!qGuiApp) return;
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, [this](QScreen* screen) {
      Follow(screen);
      Look();
    });
    Follow(QGuiApplication::primaryScreen());
    seen_ = State::Now();
  }

 private:
  struct State {
    QRect whole, free;
    double dots = 0;

    static State Now() {
      const QScreen* screen = QGuiApplication::primaryScreen();
      if (!screen) return {};
      return {screen->geometry(), screen->availableGeometry(), screen->logicalDotsPerInch()};
    }
    friend bool operator==(const State&, const State&) = default;
  };

  void Follow(QScreen* screen) {
    if (screen_) screen_->disconnect(this);
    screen_ = screen;
    if (!screen) return;
    connect(screen, &QScreen::geometryChanged, this, &Watcher::Look);
    connect(screen, &QScreen::availableGeometryChanged, this, &Watcher::Look);
    connect(screen, &QScreen::logicalDotsPerInchChanged, this, &Watcher::Look);
    connect(screen, &QObject::destroyed, this, [this] { screen_ = nullptr; });
  }
  void Look() {
    const State now = State::Now();
    if (now == seen_) return;
    seen_ = now;
    if (info_.OnSettingChanged) info_.OnSettingChanged();
  }

  SysInfo& info_;
  QScreen* screen_ = nullptr;
  State seen_;
};

SysInfo::SysInfo() : watcher_(new Watcher(*this)) {}
SysInfo::~SysInfo() {
  delete watcher_;
}

double SysInfo::WorkAreaWidth() const {
  return Screen::WorkAreaWidth();
}
double SysInfo::WorkAreaHeight() const {
  return Screen::WorkAreaHeight();
}

}  // namespace zelvane
