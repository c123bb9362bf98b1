#include <array>
#include <cstring>
#include <utility>

#include "shell/state/State.h"
#include "steps/Sheet.h"
#include "tools/OptionBars.h"
#include "tools/SelectTool.h"

namespace zelvane {
namespace {

/// Places eight units apart, to and fro over a square that is in view everywhere.
QPoint PenPlace(int step) {
  constexpr int kStride = 8, kColumns = 20, kMargin = 20;
  const int row = step / kColumns % kColumns, column = step % kColumns;
  return {kMargin + kStride * (row % 2 ? kColumns - 1 - column : column), kMargin + kStride * row};
}

/// A pen `state.range(0)` wide at `state.range(1)` x 100 %: the step against the same on a small picture. The
/// pointers are at different places, as a read-out that stands already isn't painted again.
void BM_PenStep(benchmark::State& state) {
  LargeSheet large;
  SmallSheet small;
  UsePen(static_cast<int>(state.range(0)));
  for (Sheet* sheet : {static_cast<Sheet*>(&large), static_cast<Sheet*>(&small)}) {
    sheet->ZoomTo(static_cast<int>(state.range(1)));
    sheet->Press(PenPlace(0).x(), PenPlace(0).y());
  }
  Measured steps, floors;
  const auto move = [](Sheet& sheet, QPoint place) { sheet.MoveTo(place.x(), place.y()); };
  constexpr int kApart = 45;
  for (int i = 0; i < kApart; ++i) move(small, PenPlace(i));
  int step = 1;
  for (auto _ : state) {
    state.SetIterationTime(steps.Run(state, large, [&] { move(large, PenPlace(step)); }));
    floors.Run(state, small, [&] { move(small, PenPlace(step + kApart)); });
    ++step;
  }
  steps.Show(state);
  state.counters["floor_ms"] = floors.Thread() * 1e3;
  state.counters["ratio"] = steps.Thread() / floors.Thread();
}

/// A step of a pen `state.range(0)` wide within a floating selection of the whole picture, against one
/// without.
void BM_PenStepInSelection(benchmark::State& state) {
  constexpr int kHalf = 500;
  Sheet plain(kWidth, kHeight, kHalf, kViewHeight), sheet(kWidth, kHeight, kHalf, kViewHeight, kHalf + 60);
  frmPaint& document = sheet.Document();
  document.BufferSelected.SetPicture(Bitmap(kWidth, kHeight, ToPixel(kWhite)));
  document.SelectArea.SetVisible(true);
  document.RealignZoom(-1, -1);
  RefreshPaintArea(document.Buffer);
  UsePen(static_cast<int>(state.range(0)));
  for (Sheet* one : {&plain, &sheet}) one->Press(PenPlace(0).x(), PenPlace(0).y());
  Measured steps, floors;
  int step = 1;
  for (auto _ : state) {
    const QPoint place = PenPlace(step++);
    state.SetIterationTime(steps.Run(state, sheet, [&] { sheet.MoveTo(place.x(), place.y()); }));
    floors.Run(state, plain, [&] { plain.MoveTo(place.x() + 1, place.y()); });
  }
  steps.Show(state);
  state.counters["floor_ms"] = floors.Thread() * 1e3;
  state.counters["ratio"] = steps.Thread() / floors.Thread();
}

/// To and fro between the margins of an extent.
int Bounced(int at, int extent) {
  constexpr int kMargin = 50;
  const int room = extent - 2 * kMargin, place = at % (2 * room);
  return kMargin + (place < room ? place : 2 * room - place);
}

/// A tool and the entry of its size among the options.
constexpr std::array<std::pair<int16_t, int>, 3> kDabs{
    {{kAirbrushTool, 2}, {kBrightenTool, 3}, {kBlurTool, 8}}};

/// A drag of 200 events with the largest dab, each painted before the next one comes.
void BM_DabDrag(benchmark::State& state) {
  constexpr int kEvents = 200;
  LargeSheet sheet;
  BuildWalls(sheet.Document().Buffer, kHalfWalls);
  const auto [tool, option] = kDabs.at(static_cast<size_t>(state.range(0)));
  SelectTool(tool);
  frmControls->pixelSelector[option].SetValue(100);
  Measured steps;
  std::vector<double> drags;
  for (auto _ : state) {
    sheet.Press(Bounced(0, kViewWidth), Bounced(0, kViewHeight));
    double drag = 0;
    for (int i = 1; i <= kEvents; ++i) {
      drag += steps.Run(state, sheet,
                        [&] { sheet.MoveTo(Bounced(i * 17, kViewWidth), Bounced(i * 13, kViewHeight)); });
    }
    sheet.Release(Bounced(0, kViewWidth), Bounced(0, kViewHeight));
    drags.push_back(drag);
    state.SetIterationTime(drag);
  }
  steps.Show(state);
  state.counters["events_per_s"] = kEvents / ratio::Median(drags);
}

/// A drag over the whole diagonal, against setting every byte of the picture: `release_ratio` for the release
/// alone, `ratio` with the press and its copy for the undo.
void BM_GradientDrag(benchmark::State& state) {
  LargeSheet sheet;
  SelectTool(kGradientTool);
  Bitmap memory(kWidth, kHeight, 0);
  int value = 0;
  Measured drags, releases;
  std::vector<double> floors;
  for (auto _ : state) {
    const double drag = drags.Run(state, sheet, [&] {
      sheet.Press(0, 0);
      sheet.MoveTo(kWidth - 1, kHeight - 1);
      releases.Run(state, sheet, [&] { sheet.Release(kWidth - 1, kHeight - 1); });
    });
    floors.push_back(ratio::Seconds([&] { std::memset(memory.WritableRow(0), ++value, kBytes); }));
    state.SetIterationTime(drag);
  }
  drags.Show(state);
  const double floor = ratio::Median(floors);
  state.counters["floor_ms"] = floor * 1e3;
  state.counters["ratio"] = drags.Thread() / floor;
  state.counters["release_ratio"] = releases.Thread() / floor;
}

BENCHMARK(BM_PenStep)->ArgsProduct({{1, 20}, {1, 3}})->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PenStepInSelection)->Arg(1)->Arg(20)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_DabDrag)->DenseRange(0, 2)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GradientDrag)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zelvane
