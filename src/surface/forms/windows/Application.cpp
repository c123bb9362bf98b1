#include "surface/forms/windows/Application.h"

#include <QApplication>
#include <QIcon>
#include <QPalette>
#include <QProxyStyle>
#include <QTimerEvent>
#include <deque>
#include <utility>

#include "surface/forms/controls/IconArt.h"
#include "surface/forms/controls/Toolkit.h"
#include "surface/raster/Color.h"

/// Outside of any namespace, as the toolkit's macro asks.
static void RegisterArt() {
  Q_INIT_RESOURCE(art);
}

namespace zelvane {
namespace {

/// How long after the start the program's icon is drawn, in milliseconds: the first window comes before it.
constexpr int kIconDelay = 150;

void FillSystemColors(const QPalette& palette) {
  const auto tell = [](Color color, const QColor& shade) { SetSystemPixel(color.value & 0x1F, shade.rgb()); };
  // The face of what is pressed: a shade off the buttons', to the side that has room for it.
  const QColor button = palette.color(QPalette::Button);
  tell(SystemColor::ScrollBar, button.lightness() < 128 ? button.lighter(150) : button.darker(108));
  tell(SystemColor::ActiveCaption, palette.color(QPalette::Highlight));
  tell(SystemColor::WindowBackground, palette.color(QPalette::Base));
  tell(SystemColor::WindowText, palette.color(QPalette::Text));
  tell(SystemColor::CaptionText, palette.color(QPalette::HighlightedText));
  SetSystemPixel(0x0E, palette.color(QPalette::HighlightedText).rgb());
  tell(SystemColor::ButtonFace, palette.color(QPalette::Window));
  tell(SystemColor::ButtonShadow, palette.color(QPalette::Dark));
  tell(SystemColor::ButtonText, palette.color(QPalette::ButtonText));
  tell(SystemColor::ButtonHighlight, palette.color(QPalette::Light));
}

QIcon ProgramIcon() {
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64, 128}) {
    const QPixmap drawing = IconArt("zelvane", size, 1);
    if (!drawing.isNull()) icon.addPixmap(drawing);
  }
  return icon;
}

/// The desktop's style, but for one icon: that of the button for what a menu bar has no room for. Every menu
/// bar asks for it when it's made, and the desktop's would have all readers of pictures loaded at the start.
class Style : public QProxyStyle {
 public:
  QIcon standardIcon(StandardPixmap which, const QStyleOption* option, const QWidget* widget) const override {
    if (which == SP_ToolBarHorizontalExtensionButton) return QIcon(IconArt("dropdown", 16, 1));
    return QProxyStyle::standardIcon(which, option, widget);
  }
};

/// Steps that wait for their turn of the event loop. They come from a timer, as posted events would all be
/// run in one turn, even those that the running ones post.
class StepQueue : public QObject {
 public:
  void Add(std::function<void()> step) {
    steps_.push_back(std::move(step));
    if (!timer_) timer_ = startTimer(0);
  }

 private:
  void timerEvent(QTimerEvent*) override {
    for (size_t count = steps_.size(); count > 0 && !steps_.empty(); --count) {
      // Out of the queue first: the step may run an event loop of its own, where the rest has its turn.
      const std::function<void()> step = std::move(steps_.front());
      steps_.pop_front();
      step();
    }
    if (steps_.empty() && timer_) killTimer(std::exchange(timer_, 0));
  }

  std::deque<std::function<void()>> steps_;
  int timer_ = 0;
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
    FillSystemColors(palette());
  }
  ~Program() override { current = nullptr; }

  bool notify(QObject* receiver, QEvent* event) override {
    struct Level {
      Program& program;
      explicit Level(Program& of) : program(of) { ++program.depth; }
      ~Level() {
        if (--program.depth == 0) program.QueueHeldBack();
      }
    } level(*this);
    return QApplication::notify(receiver, event);
  }

  bool event(QEvent* event) override {
    if (event->type() == QEvent::ApplicationPaletteChange) FillSystemColors(palette());
    return QApplication::event(event);
  }

  void timerEvent(QTimerEvent* event) override {
    if (event->timerId() != icon_timer) return QApplication::timerEvent(event);
    killTimer(icon_timer);
    setWindowIcon(ProgramIcon());
  }

  void QueueHeldBack() {
    for (auto& step : std::exchange(held_back, {})) {
      queue.Add([this, step = std::move(step)] { depth == 1 ? step() : held_back.push_back(step); });
    }
  }

  /// Handlers of events that are running, one inside the other.
  int depth = 0;
  bool ended = false;
  int icon_timer = 0;
  StepQueue queue;
  std::deque<std::function<void()>> held_back;
  static inline Program* current = nullptr;
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

void DoEvents() {
  QCoreApplication::processEvents();
}

void Defer(std::function<void()> step) {
  if (Program::current) Program::current->queue.Add(std::move(step));
}

void DeferToOutermost(std::function<void()> step) {
  if (!Program::current) return;
  Program::current->held_back.push_back(std::move(step));
  if (Program::current->depth == 0) Program::current->QueueHeldBack();
}

}  // namespace zelvane
