#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <random>
#include <vector>

#include "surface/raster/Canvas.h"

/// Every operation runs in turn with the cheapest thing that moves as many bytes, and is shown as a multiple
/// of it in the counter `ratio` (medians of both, so that a busy machine tells little).
namespace zelvane {
namespace {

constexpr int kWidth = 4000, kHeight = 3000;
constexpr size_t kPixels = size_t{kWidth} * kHeight;

double Median(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

template <class Step>
double Seconds(Step&& step) {
  const auto start = std::chrono::steady_clock::now();
  step();
  benchmark::ClobberMemory();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// `share`: how much of the floor's work the operation has to do.
template <class Operation, class Floor>
void Compare(benchmark::State& state, Operation operation, Floor floor, double share = 1) {
  std::vector<double> operations, floors;
  for (auto _ : state) {
    operations.push_back(Seconds(operation));
    floors.push_back(Seconds(floor));
    state.SetIterationTime(operations.back());
  }
  state.counters["ratio"] = Median(operations) / (Median(floors) * share);
}

/// A floor: sets as many touched bytes as a surface of 4000 x 3000 has.
class Memset {
 public:
  explicit Memset(size_t pixels = kPixels) : bytes_(pixels * sizeof(Pixel)) {}
  void operator()() { std::memset(memory_.WritableRow(0), ++value_, bytes_); }

 private:
  Bitmap memory_{kWidth, kHeight, 0};
  size_t bytes_;
  int value_ = 0;
};

void Prepare(Canvas& canvas, Pixel fill = ToPixel(kWhite)) {
  canvas.SetImage(Bitmap(kWidth, kHeight, fill));
}

void BM_SnapshotIntoSurface(benchmark::State& state) {
  Canvas canvas, snapshot;
  Prepare(canvas);
  Prepare(snapshot);
  Bitmap from(kWidth, kHeight, 1), to(kWidth, kHeight, 2);
  Compare(
      state, [&] { snapshot.BitBlt(0, 0, kWidth, kHeight, canvas, 0, 0); },
      [&] { std::memcpy(to.WritableRow(0), from.Row(0), kPixels * sizeof(Pixel)); });
}

void BM_SnapshotIntoFreshMemory(benchmark::State& state) {
  Canvas canvas;
  Prepare(canvas);
  Bitmap from(kWidth, kHeight, 1), to(kWidth, kHeight, 2);
  Compare(
      state,
      [&] {
        Bitmap snapshot = canvas.Image();
        snapshot.Detach();
      },
      [&] { std::memcpy(to.WritableRow(0), from.Row(0), kPixels * sizeof(Pixel)); });
}

void BM_Cls(benchmark::State& state) {
  Canvas canvas;
  Prepare(canvas);
  Compare(
      state, [&] { canvas.Cls(); }, Memset());
}

/// Fills the area round (0, 0) in a new colour each time.
class Refill {
 public:
  explicit Refill(Canvas& canvas) : canvas_(canvas) {}
  void operator()() {
    const Color area = canvas_.GetPixel(0, 0);
    canvas_.SetFillColor(area == RGB(1, 2, 3) ? RGB(4, 5, 6) : RGB(1, 2, 3));
    canvas_.ExtFloodFill(0, 0, area);
  }
  /// The share of the surface that is painted.
  double Share() {
    (*this)();
    const Pixel painted = canvas_.Image().Row(0)[0];
    ptrdiff_t count = 0;
    for (int y = 0; y < kHeight; ++y) {
      count += std::count(canvas_.Image().Row(y), canvas_.Image().Row(y) + kWidth, painted);
    }
    return static_cast<double>(count) / static_cast<double>(kPixels);
  }

 private:
  Canvas& canvas_;
};

void BM_FloodFillBlank(benchmark::State& state) {
  Canvas canvas;
  Prepare(canvas);
  Compare(state, Refill(canvas), Memset());
}

/// Per painted pixel, against the fill of a blank surface.
void CompareWithBlank(benchmark::State& state, Canvas& canvas) {
  Canvas blank;
  Prepare(blank);
  Refill fill(canvas);
  const double share = fill.Share();
  state.counters["painted"] = share;
  Compare(state, fill, Refill(blank), share);
}

/// Walls at random places, `state.range(0)` in a hundred.
void BM_FloodFillNoise(benchmark::State& state) {
  Canvas canvas;
  Prepare(canvas);
  std::mt19937 random(1);
  for (int y = 0; y < kHeight; ++y) {
    Pixel* const row = canvas.WritableRow(y);
    for (int x = 0; x < kWidth; ++x) {
      if (x + y > 0 && random() % 100 < static_cast<unsigned>(state.range(0))) row[x] = ToPixel(kBlack);
    }
  }
  CompareWithBlank(state, canvas);
}

/// Corridors one pixel wide with walls between them, joined alternately at either end.
void BM_FloodFillSerpentineAcross(benchmark::State& state) {
  Canvas canvas;
  Prepare(canvas);
  for (int y = 1; y < kHeight; y += 2) {
    std::fill_n(canvas.WritableRow(y) + (y % 4 == 1 ? 0 : 1), kWidth - 1, ToPixel(kBlack));
  }
  CompareWithBlank(state, canvas);
}

void BM_FloodFillSerpentineDown(benchmark::State& state) {
  Canvas canvas;
  Prepare(canvas);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 1; x < kWidth; x += 2) {
      if (y != (x % 4 == 1 ? kHeight - 1 : 0)) canvas.WritableRow(y)[x] = ToPixel(kBlack);
    }
  }
  CompareWithBlank(state, canvas);
}

void BM_StretchEightTimes(benchmark::State& state) {
  Canvas canvas, source;
  Prepare(canvas);
  source.SetImage(Bitmap(kWidth / 8, kHeight / 8, ToPixel(kBlack)));
  Compare(
      state, [&] { canvas.StretchBlt(0, 0, kWidth, kHeight, source, 0, 0, kWidth / 8, kHeight / 8); },
      Memset());
}

/// Against a copy of the larger side.
void BM_StretchToAnEighth(benchmark::State& state) {
  Canvas canvas, source;
  Prepare(source);
  canvas.SetImage(Bitmap(kWidth / 8, kHeight / 8, ToPixel(kBlack)));
  Bitmap to(kWidth, kHeight, 2);
  Compare(
      state, [&] { canvas.StretchBlt(0, 0, kWidth / 8, kHeight / 8, source, 0, 0, kWidth, kHeight); },
      [&] { std::memcpy(to.WritableRow(0), source.Image().Row(0), kPixels * sizeof(Pixel)); });
}

/// Width 100 from corner to corner, against setting as many pixels in a box of that size.
void BM_WideLine(benchmark::State& state) {
  constexpr int kPen = 100, kLength = 5000;
  Canvas canvas, box;
  Prepare(canvas);
  Prepare(box);
  canvas.SetDrawWidth(kPen);
  Compare(
      state, [&] { canvas.Line(0, 0, kWidth - 1, kHeight - 1, RGB(10, 20, 30)); },
      [&] { box.FilledBox(0, 0, kPen * kLength / kHeight - 1, kHeight - 1, RGB(10, 20, 30)); });
}

BENCHMARK(BM_SnapshotIntoSurface)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SnapshotIntoFreshMemory)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Cls)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FloodFillBlank)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FloodFillNoise)->Arg(10)->Arg(25)->Arg(40)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FloodFillSerpentineAcross)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FloodFillSerpentineDown)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StretchEightTimes)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StretchToAnEighth)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WideLine)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zelvane
