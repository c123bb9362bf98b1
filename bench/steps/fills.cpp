#include <algorithm>
#include <utility>

#include "colour/ColorPanel.h"
#include "shell/state/State.h"
#include "steps/Sheet.h"
#include "tools/SelectTool.h"
#include "tools/SimplePaints.h"

namespace zelvane {
namespace {

/// Fills in two colours, none of which the walls have.
void UseFill() {
  SelectTool(kFloodfillTool);
  ColorPanel->SelColor[0].SetBackColor(RGB(200, 30, 60));
  ColorPanel->SelColor[1].SetBackColor(RGB(20, 160, 90));
}

/// Press and release, in the middle of the picture; the buttons take turns, so that every click paints.
void BM_FillClick(benchmark::State& state) {
  LargeSheet sheet;
  BuildWalls(sheet.Document().Buffer, static_cast<Ground>(state.range(0)));
  sheet.Document().HScroll1.SetValue((kWidth - kViewWidth) / 2);
  sheet.Document().VScroll1.SetValue((kHeight - kViewHeight) / 2);
  UseFill();
  Qt::MouseButton button = Qt::LeftButton, next = Qt::RightButton;
  MeasureSteps(
      state, sheet,
      [&] {
        sheet.Press(kWidth / 2, kHeight / 2, button);
        sheet.Release(kWidth / 2, kHeight / 2, button);
      },
      [&] { std::swap(button, next); });
}

/// The call of the fill tool alone, in the other of two colours each time.
void FillAgain(Sheet& sheet) {
  State.PointerButton = State.PointerButton == kLeftButton ? kRightButton : kLeftButton;
  ApplyTool(sheet.Document().Buffer, kWidth / 2, kHeight / 2, 100, true);
}

double PixelsOf(const Canvas& canvas, Pixel pixel) {
  ptrdiff_t count = 0;
  for (int y = 0; y < kHeight; ++y) {
    count += std::count(canvas.Image().Row(y), canvas.Image().Row(y) + kWidth, pixel);
  }
  return static_cast<double>(count);
}

/// What a fill between walls takes for each pixel that it paints, against the fill of a blank picture.
void BM_FillPerPixel(benchmark::State& state) {
  LargeSheet sheet;
  Sheet blank(kWidth, kHeight, kViewWidth, kViewHeight);
  Canvas& canvas = sheet.Document().Buffer;
  BuildWalls(canvas, static_cast<Ground>(state.range(0)));
  UseFill();
  FillAgain(sheet);
  const double share = PixelsOf(canvas, canvas.Image().Row(kHeight / 2)[kWidth / 2]) / kWidth / kHeight;
  std::vector<double> fills, floors;
  for (auto _ : state) {
    fills.push_back(ratio::Seconds([&] { FillAgain(sheet); }));
    floors.push_back(ratio::Seconds([&] { FillAgain(blank); }));
    // Each has to change its colour, so the other's turn of the buttons is taken back.
    State.PointerButton = State.PointerButton == kLeftButton ? kRightButton : kLeftButton;
    state.SetIterationTime(fills.back());
  }
  state.counters["painted_share"] = share;
  state.counters["cpu_ms"] = ratio::Median(fills) * 1e3;
  state.counters["ratio"] = ratio::Median(fills) / (ratio::Median(floors) * share);
}

BENCHMARK(BM_FillClick)
    ->ArgName("ground")
    ->DenseRange(kBlank, kSerpentine)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FillPerPixel)
    ->ArgName("ground")
    ->Arg(kQuarterWalls)
    ->Arg(kThreshold)
    ->Arg(kSerpentine)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zelvane
