#include <algorithm>
#include <cstring>

#include "selection/Selection.h"
#include "selection/SelectionCommands.h"
#include "shell/state/State.h"
#include "steps/Sheet.h"
#include "surface/system/desktop/Clipboard.h"
#include "tools/SelectTool.h"

namespace zelvane {
namespace {

/// A floating selection of that size in the middle of the picture's view, with the Cursor pressed on it.
void PressOnSelection(Sheet& sheet, int width, int height) {
  LiftSelection(sheet.Document(), {40, 40, 40 + width, 40 + height});
  SelectTool(kCursorTool);
  sheet.Press(100, 100);
}

/// A step of a dragged selection, against the two copies of its area that put back what lay beneath it and
/// keep what lies beneath it now, and painting as much of the view.
void BM_DragSelection(benchmark::State& state) {
  constexpr int kSelectedWidth = 2000, kSelectedHeight = 1500;
  LargeSheet sheet;
  PressOnSelection(sheet, kSelectedWidth, kSelectedHeight);
  Canvas picture, piece;
  picture.SetImage(Bitmap(kWidth, kHeight, 1));
  piece.SetImage(Bitmap(kSelectedWidth, kSelectedHeight, 2));
  Measured steps, floors;
  int step = 0;
  for (auto _ : state) {
    const int way = 5 * (++step % 20);
    state.SetIterationTime(steps.Run(state, sheet, [&] { sheet.MoveTo(100 + way, 100 + way); }));
    floors.Run(state, sheet, [&] {
      picture.BitBlt(40 + way, 40 + way, kSelectedWidth, kSelectedHeight, piece, 0, 0);
      piece.BitBlt(0, 0, kSelectedWidth, kSelectedHeight, picture, 45 + way, 45 + way);
      sheet.Document().PaintArea.Refresh({35 + way, 35 + way, kViewWidth, kViewHeight});
    });
  }
  steps.Show(state);
  state.counters["floor_ms"] = floors.Thread() * 1e3;
  state.counters["ratio"] = steps.Thread() / floors.Thread();
  sheet.Release(100, 100);
}

/// How many events a second a small selection follows, each painted before the next one comes.
void BM_DragSmallSelection(benchmark::State& state) {
  LargeSheet sheet;
  PressOnSelection(sheet, 100, 100);
  Measured steps;
  int step = 0;
  for (auto _ : state) {
    const int way = ++step % 400;
    state.SetIterationTime(steps.Run(state, sheet, [&] { sheet.MoveTo(100 + way, 100 + way); }));
  }
  steps.Show(state);
  state.counters["events_per_s"] = benchmark::Counter(1, benchmark::Counter::kIsIterationInvariantRate);
  sheet.Release(100, 100);
}

/// Select All and Copy, against the two fills of a layer that lift the picture. `put_us` is what putting it
/// on the clipboard takes.
void BM_CopyAll(benchmark::State& state) {
  LargeSheet sheet;
  Bitmap from(kWidth, kHeight, 1), to(kWidth, kHeight, 2), hole(kWidth, kHeight, 3);
  std::vector<double> copies, floors, puts;
  for (auto _ : state) {
    copies.push_back(ratio::Seconds([] { SelectAll_Click(), Copy_Click(); }));
    floors.push_back(ratio::Seconds([&] {
      std::memcpy(to.WritableRow(0), from.Row(0), kBytes);
      std::fill_n(hole.WritableRow(0), size_t{kWidth} * kHeight, Pixel{4});
    }));
    puts.push_back(ratio::Seconds([] { Copy_Click(); }));
    state.SetIterationTime(copies.back());
    if (state.range(0)) {
      Clipboard::Clear();
      DropSelection(sheet.Document());
    }
  }
  state.counters["ratio"] = ratio::Median(copies) / ratio::Median(floors);
  state.counters["put_us"] = ratio::Median(puts) * 1e6;
}

BENCHMARK(BM_DragSelection)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DragSmallSelection)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_CopyAll)->ArgName("fresh")->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zelvane
