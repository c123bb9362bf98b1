#pragma once

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QWidget>
#include <chrono>
#include <cstdint>
#include <vector>

#include "Ratio.h"
#include "RunInProgram.h"
#include "document/window/frmPaint.h"
#include "surface/raster/Units.h"

/// Steps of a user in the whole program, from the event to the finished painting, on the platform that the
/// environment names. Pointer events go to the view of a picture of 4000 x 3000 in a viewport of 1000 x 700.
///
/// `painted_ms` is real time until the display has what was painted, `cpu_ms` the processor time of the
/// program alone, `painted_px` how many pixels of the view were painted; a `ratio` is of processor times, as
/// others on the machine don't count in them. A step that painted nothing fails its benchmark.
namespace zelvane {

inline constexpr int kWidth = 4000, kHeight = 3000, kSmallSide = 200;
inline constexpr int kViewWidth = 1000, kViewHeight = 700;
inline constexpr int kMainWidth = 1600, kMainHeight = 960;
inline constexpr size_t kBytes = size_t{kWidth} * kHeight * sizeof(Pixel);
inline constexpr Single kTwips = kTwipsPerPixel;

inline double WallSeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Counts what of a widget is painted.
class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
  int64_t Pixels() const { return pixels_; }

 private:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::Paint) return false;
    for (const QRect& part : static_cast<QPaintEvent*>(event)->region())
      pixels_ += int64_t{part.width()} * part.height();
    return false;
  }
  int64_t pixels_ = 0;
};

/// A document of its own that is on the screen.
class Sheet {
 public:
  Sheet(int width, int height, int view_width, int view_height, Single left = 0);

  frmPaint& Document() { return document_; }
  /// Pixels of the view that were painted so far.
  int64_t Painted() const { return counter_.Pixels(); }
  void ZoomTo(int multiple);
  bool IsInView(int view_width, int view_height);

  /// Pointer events, in units of the view.
  void Press(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
    Send(QEvent::MouseButtonPress, x, y, button, button);
  }
  void MoveTo(int x, int y) { Send(QEvent::MouseMove, x, y, Qt::NoButton, Qt::LeftButton); }
  void Release(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
    Send(QEvent::MouseButtonRelease, x, y, button, Qt::NoButton);
  }

 private:
  /// Units start behind the frame of the view.
  void Send(QEvent::Type type, int x, int y, Qt::MouseButton button, Qt::MouseButtons held) {
    QWidget* const widget = document_.PaintArea.Widget();
    const QPoint at(x + 1, y + 1);
    QMouseEvent event(type, at, widget->mapToGlobal(at), button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
  }

  frmPaint& document_;
  PaintCounter counter_;
  const ClosedAtEnd closed_{document_};
};

/// The large picture at the left of the main window.
class LargeSheet : public Sheet {
 public:
  LargeSheet() : Sheet(kWidth, kHeight, kViewWidth, kViewHeight) {}
};

/// The small one beside it, which both are in full view.
class SmallSheet : public Sheet {
 public:
  SmallSheet() : Sheet(kSmallSide, kSmallSide, kSmallSide + 2, kSmallSide + 2, kViewWidth + 60) {}
};

/// Selects the pen and how wide it is, in pixels.
void UsePen(int width);

/// What stands on a picture: nothing, walls at random, or one long way between them.
enum Ground { kBlank, kQuarterWalls, kThreshold, kHalfWalls, kSerpentine };

/// Puts black walls on the white picture; the pixel in the middle stays free.
void BuildWalls(Canvas& canvas, Ground ground);

/// Steps of one kind.
class Measured {
 public:
  /// Runs `step` and paints what it noted. Returns the real seconds.
  template <class Step>
  double Run(benchmark::State& state, Sheet& sheet, Step&& step) {
    QGuiApplication::sync();
    const int64_t painted = sheet.Painted();
    const double start = WallSeconds(), thread_start = ratio::ThreadSeconds();
    step();
    sheet.Document().PaintArea.Update();
    thread_.push_back(ratio::ThreadSeconds() - thread_start);
    QGuiApplication::sync();
    wall_.push_back(WallSeconds() - start);
    pixels_.push_back(static_cast<double>(sheet.Painted() - painted));
    if (pixels_.back() == 0) state.SkipWithError("nothing was painted");
    return wall_.back();
  }

  double Thread() { return ratio::Median(thread_); }
  void Show(benchmark::State& state) {
    state.counters["painted_ms"] = ratio::Median(wall_) * 1e3;
    state.counters["cpu_ms"] = Thread() * 1e3;
    state.counters["painted_px"] = ratio::Median(pixels_);
  }

 private:
  std::vector<double> thread_, wall_, pixels_;
};

/// `step` in turn with `back`, which isn't measured, until the benchmark has enough.
template <class Step, class Back>
void MeasureSteps(benchmark::State& state, Sheet& sheet, Step step, Back back) {
  Measured steps;
  for (auto _ : state) {
    state.SetIterationTime(steps.Run(state, sheet, step));
    back();
  }
  steps.Show(state);
}

}  // namespace zelvane
