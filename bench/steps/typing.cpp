#include <QKeyEvent>
#include <QPlainTextEdit>
#include <string>

#include "shell/state/State.h"
#include "steps/Sheet.h"
#include "tools/SelectTool.h"

namespace zelvane {
namespace {

/// Presses and lets go of a key, until what it changed is painted; the real seconds.
double SecondsToType(QWidget& field, int key, const QString& text, std::vector<double>& thread) {
  QGuiApplication::sync();
  const double start = WallSeconds(), thread_start = ratio::ThreadSeconds();
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&field, &event);
  }
  QEvent request(QEvent::UpdateRequest);
  QCoreApplication::sendEvent(field.window(), &request);
  thread.push_back(ratio::ThreadSeconds() - thread_start);
  QGuiApplication::sync();
  return WallSeconds() - start;
}

/// A letter typed into a text of `state.range(0)` lines at 800 %, against the same in the toolkit's own field
/// of the same font and size.
void BM_TypeLetter(benchmark::State& state) {
  LargeSheet sheet;
  sheet.ZoomTo(8);
  SelectTool(kTextTool);
  sheet.Press(80, 80);
  sheet.Release(80, 80);
  std::string lines = "The quick brown fox";
  for (int64_t i = 1; i < state.range(0); ++i) lines += "\nThe quick brown fox";
  MultilineTextBox& box = sheet.Document().TextInput;
  box.SetText(lines);
  QPlainTextEdit bare(QString::fromStdString(lines));
  bare.setFont(box.Widget()->font());
  bare.resize(kViewWidth, kViewHeight);
  bare.show();
  DoEvents();
  std::vector<double> steps, floors, walls;
  bool erases = false;
  for (auto _ : state) {
    const int key = erases ? Qt::Key_Backspace : Qt::Key_X;
    const QString text = erases ? "\b" : "x";
    erases = !erases;
    walls.push_back(SecondsToType(*box.Widget(), key, text, steps));
    state.SetIterationTime(walls.back());
    SecondsToType(bare, key, text, floors);
  }
  if (box.Text().size() > lines.size() + 1) state.SkipWithError("not what was typed");
  state.counters["painted_ms"] = ratio::Median(walls) * 1e3;
  state.counters["cpu_ms"] = ratio::Median(steps) * 1e3;
  state.counters["ratio"] = ratio::Median(steps) / ratio::Median(floors);
}

BENCHMARK(BM_TypeLetter)->Arg(1)->Arg(20)->Arg(5000)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zelvane
