#include <QTimer>
#include <chrono>

#include "PaintWatch.h"
#include "Ratio.h"
#include "surface/forms/windows/Application.h"
#include "surface/forms/windows/EventLoop.h"
#include "ui/MessageBox.h"
#include "ui/MsgBoxEnhanced.h"

/// The message box: how long it takes from the call until it is painted, and what it costs while it is up.
namespace zelvane {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kWatchedMs = 5000;

void UseProgramLooks() {
  MessageObject.SetBackColorBody(kWhite);
  MessageObject.SetGradientPaint(true);
  MessageObject.SetHeadingType(1);
  MessageObject.SetTextAlignment(kAlignCentre);
  MessageObject.SetSoundBeep(false);
}

int16_t AskToSave() {
  return MsgBox("The image has been changed.\r\n\r\nDo you wish to save the changes?",
                kYesNoCancel + kQuestionIcon, "Changed Image");
}

void MessagePainted(benchmark::State& state) {
  UseProgramLooks();
  PaintWatch watch("MsgText");
  for (auto _ : state) {
    const auto start = Clock::now();
    watch.OnPainted = [&] {
      state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
      MessageBox->Unload();
    };
    AskToSave();
    DoEvents();
  }
}
BENCHMARK(MessagePainted)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

/// `percent`: of a core, on the program's thread, while nobody touches the box.
void MessageUpkeep(benchmark::State& state) {
  UseProgramLooks();
  for (auto _ : state) {
    double start = 0, spent = 0;
    QTimer::singleShot(500, [&] { start = ratio::ThreadSeconds(); });
    QTimer::singleShot(500 + kWatchedMs, [&] {
      spent = ratio::ThreadSeconds() - start;
      MessageBox->Unload();
    });
    AskToSave();
    state.counters["percent"] = spent * 1000 / kWatchedMs * 100;
  }
}
BENCHMARK(MessageUpkeep)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zelvane

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const zelvane::Application toolkit(argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
