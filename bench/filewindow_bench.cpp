#include <QAbstractScrollArea>
#include <QDir>
#include <QFile>
#include <QScrollBar>
#include <QTemporaryDir>
#include <chrono>

#include "PaintWatch.h"
#include "Ratio.h"
#include "RunInProgram.h"
#include "files/FileDialog.h"
#include "files/SaveDialog.h"
#include "surface/forms/windows/EventLoop.h"

/// The file window: how long it takes from the command until its list is painted, and what scrolling costs.
namespace zelvane {
namespace {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

/// A folder of so many empty files.
class Folder {
 public:
  explicit Folder(int64_t files) {
    for (int64_t i = 0; i < files; ++i)
      QFile(folder_.filePath(QString("picture %1.png").arg(i))).open(QIODevice::WriteOnly);
  }
  std::string Path() const { return folder_.path().toStdString(); }

 private:
  QTemporaryDir folder_;
};

/// Opens the window on the folder, and does `step` once the list is painted.
void Ask(const Folder& folder, PaintWatch& watch, const std::function<void()>& step) {
  FileDialog dialog;
  dialog.SetDialogTitle("Open...");
  dialog.SetFilter("Pictures|*.png;*.bmp|");
  dialog.SetFilterIndex(0);
  dialog.SetInitDir(folder.Path());
  watch.OnPainted = [&] {
    step();
    SaveDialog->Hide();
  };
  dialog.ShowOpen();
}

void WindowPainted(benchmark::State& state) {
  const Folder folder(state.range(0));
  PaintWatch watch("File1");
  for (auto _ : state) {
    const auto start = Clock::now();
    Ask(folder, watch, [&] {
      RunEventsUntil([&] { return SaveDialog->File1.ListCount() == state.range(0); }, 10000);
      state.SetIterationTime(SecondsSince(start));
    });
    DoEvents();
  }
}
BENCHMARK(WindowPainted)->Arg(10)->Arg(20000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

/// A page of the long list, from the step to the finished painting.
void PageScrolled(benchmark::State& state) {
  const Folder folder(20000);
  PaintWatch watch("File1");
  Ask(folder, watch, [&] {
    RunEventsUntil([] { return SaveDialog->File1.ListCount() == 20000; }, 10000);
    auto* list = static_cast<QAbstractScrollArea*>(SaveDialog->File1.Widget());
    for (auto _ : state) {
      const auto start = Clock::now();
      QScrollBar& bar = *list->verticalScrollBar();
      bar.setValue(bar.value() == bar.maximum() ? 0 : bar.value() + bar.pageStep());
      list->viewport()->repaint();
      state.SetIterationTime(SecondsSince(start));
    }
  });
}
BENCHMARK(PageScrolled)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(500);

}  // namespace
}  // namespace zelvane

int main(int argc, char** argv) {
  return zelvane::RunInProgram(argc, argv);
}
