#include "surface/forms/windows/Application.h"

#include <QApplication>
#include <QFontMetrics>
#include <QIcon>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>
#include <QTimerEvent>
#include <algorithm>
#include <utility>

#include "surface/forms/controls/Events.h"
#include "surface/forms/controls/IconArt.h"
#include "surface/forms/controls/SystemColors.h"
#include "surface/forms/windows/ChildFrame.h"
#include "surface/forms/windows/Form.h"

/// Outside of any namespace, as the toolkit's macro asks.
static void RegisterArt() {
  Q_INIT_RESOURCE(art);
}

namespace zelvane {
namespace {

/// How long after the start the program's icon is drawn, in milliseconds: the first window comes before it.
constexpr int kIconDelay = 150;
/// Of the outline of boxes in dark palettes, of 255.
constexpr int kOutlineAlpha = 120;
constexpr int kTitlePadding = 2;  // logical pixels above and below the title of a child, together

QIcon ProgramIcon() {
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64, 128}) {
    const QPixmap drawing = IconArt("zelvane", size, 1);
    if (!drawing.isNull()) icon.addPixmap(drawing);
  }
  return icon;
}

/// The desktop's style, but for a few things that it lacks.
class Style : public QProxyStyle {
 public:
  /// The icon of the button for what a menu bar has no room for. Every menu bar asks for it when it's made,
  /// and the desktop's would have all readers of pictures loaded at the start.
  QIcon standardIcon(StandardPixmap which, const QStyleOption* option, const QWidget* widget) const override {
    if (which == SP_ToolBarHorizontalExtensionButton) return QIcon(IconArt("dropdown", 16, 1));
    return QProxyStyle::standardIcon(which, option, widget);
  }

  /// Styles give the title of a child a fixed height, whatever the font.
  int pixelMetric(PixelMetric which, const QStyleOption* option, const QWidget* widget) const override {
    const int styled = QProxyStyle::pixelMetric(which, option, widget);
    if (which != PM_TitleBarHeight) return styled;
    const QFontMetrics title(QApplication::font("QMdiSubWindowTitleBar"));
    return std::max(styled, title.height() + kTitlePadding);
  }

  /// In a dark palette the box or ring of a mark would be drawn in black on nearly black.
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool is_ring = element == PE_IndicatorRadioButton;
    if ((element != PE_IndicatorCheckBox && !is_ring) || !IsDark(option->palette)) return;
    QColor outline = option->palette.color(QPalette::WindowText);
    outline.setAlpha(kOutlineAlpha);
    painter->setPen(outline);
    painter->setBrush(Qt::NoBrush);
    if (!is_ring) return painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->drawEllipse(QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5));
    painter->restore();
  }
};

/// Tells of want of memory, but never again and again: the message itself, or what is painted anew when it
/// goes, may want some too.
class Shortage {
 public:
  void NewAct() {
    if (!is_telling_) is_told_ = false;
  }
  void Tell() {
    if (!LackedMemory.exchange(false) || std::exchange(is_told_, true)) return;
    Defer([this] {
      is_telling_ = true;
      FireEvent(OnMemoryShort);
      is_telling_ = false;
    });
  }

 private:
  bool is_told_ = false, is_telling_ = false;
};

class Program : public QApplication {
 public:
  Program(int& argc, char** argv) : QApplication(argc, argv) {
    current = this;
    RegisterArt();
    setApplicationName("Zelvane");
    setDesktopFileName("zelvane");
    setQuitOnLastWindowClosed(false);
    setStyle(new Style);
    TakeSystemColors();
    InstallChildNames();
  }
  ~Program() override { current = nullptr; }

  /// The net under every handler: what an event lets out ends there.
  bool notify(QObject* receiver, QEvent* event) override {
    const HandlerLevel level;
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress) shortage_.NewAct();
    bool taken = false;
    Attempt([&] { taken = QApplication::notify(receiver, event); });
    shortage_.Tell();
    return taken;
  }

  bool event(QEvent* event) override {
    if (event->type() == QEvent::ApplicationPaletteChange) TakeSystemColors();
    return QApplication::event(event);
  }

  void timerEvent(QTimerEvent* event) override {
    if (event->timerId() != icon_timer) return QApplication::timerEvent(event);
    killTimer(std::exchange(icon_timer, 0));
    setWindowIcon(ProgramIcon());
  }

  bool ended = false;
  int icon_timer = 0;
  static inline Program* current = nullptr;

 private:
  Shortage shortage_;
};

}  // namespace

struct Application::Toolkit {
  Program program;
};

Application::Application(int& argc, char** argv) : toolkit_(new Toolkit{{argc, argv}}) {}

Application::~Application() {
  DestroyForms();
}

int Application::Run() {
  toolkit_->program.icon_timer = toolkit_->program.startTimer(kIconDelay);
  return toolkit_->program.ended ? 0 : QApplication::exec();
}

void EndProgram() {
  if (Program::current) Program::current->ended = true;
  // Leaves the loops, those of dialogs too. Asking the toolkit to quit would close, and so ask, every window.
  QCoreApplication::exit(0);
}

void Beep() {
  QApplication::beep();
}

}  // namespace zelvane
