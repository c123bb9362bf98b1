#include <cmath>
#include <cstring>

#include "Ratio.h"
#include "surface/raster/Canvas.h"
#include "tools/Dab.h"
#include "tools/Sweep.h"

/// The painting tools on a picture of 4000 x 3000. Dabs have the largest size and run beside a plain loop
/// over the same disc, a gradient beside setting every byte of the picture.
namespace zelvane {
namespace {

using ratio::Compare;

constexpr int kWidth = 4000, kHeight = 3000, kSize = 100, kDragEvents = 200;
constexpr DabSize kLargestDab{kSize, kSize / 2};

/// A picture of many colours.
void Prepare(Canvas& canvas) {
  canvas.Resize(kWidth, kHeight);
  for (int y = 0; y < kHeight; ++y) {
    Pixel* const row = canvas.WritableRow(y);
    for (int x = 0; x < kWidth; ++x)
      row[x] = 0xFF000000 | static_cast<Pixel>(x * 2654435761U + y * 40503U) >> 8;
  }
}

Pixel Mixed(Pixel pixel, Pixel goal, unsigned share) {
  Pixel mixed = 0xFF000000;
  for (int shift = 0; shift < 24; shift += 8) {
    const unsigned from = pixel >> shift & 0xFF, to = goal >> shift & 0xFF;
    mixed |= (from * (256 - share) + to * share) >> 8 << shift;
  }
  return mixed;
}

/// Reads, mixes and writes each pixel of the disc once, all in one strength.
void PlainDab(Canvas& canvas, int x, int y) {
  for (int dy = -kSize; dy <= kSize; ++dy) {
    Pixel* const row = canvas.WritableRow(y + dy) + x;
    const int reach = static_cast<int>(std::sqrt(kSize * kSize - dy * dy));
    for (int dx = -reach; dx <= reach; ++dx) row[dx] = Mixed(row[dx], 0xFF2040C0, 77);
  }
}

/// Calls the dab with the places of a drag.
template <class Dab>
void Drag(int events, Dab dab) {
  for (int i = 0; i < events; ++i) dab(200 + i * 17, 200 + i * 13);
}

template <class Dab>
void CompareDab(benchmark::State& state, Dab dab) {
  Canvas canvas, plain;
  Prepare(canvas);
  Prepare(plain);
  const int events = static_cast<int>(state.range(0));
  Compare(
      state,
      [&] {
        Drag(events, [&](int x, int y) { dab(canvas, static_cast<Single>(x), static_cast<Single>(y)); });
      },
      [&] { Drag(events, [&](int x, int y) { PlainDab(plain, x, y); }); });
}

void BM_Spray(benchmark::State& state) {
  CompareDab(state, [](Canvas& canvas, Single x, Single y) {
    SprayDab(canvas, x, y, kLargestDab, RGB(192, 64, 32), 50);
  });
}

void BM_Brighten(benchmark::State& state) {
  CompareDab(state,
             [](Canvas& canvas, Single x, Single y) { BrightenDab(canvas, x, y, kLargestDab, false, 50); });
}

void BM_Blur(benchmark::State& state) {
  CompareDab(state, [](Canvas& canvas, Single x, Single y) { BlurDab(canvas, x, y, kLargestDab); });
}

/// A gradient `length` pixels long from the corner in the direction of `angle` degrees.
void BM_Gradient(benchmark::State& state) {
  const double angle = static_cast<double>(state.range(0)), turn = angle * 3.14159265358979 / 180;
  const double length = 5000, reach = 5000, across = std::sin(turn), along = std::cos(turn);
  const double x = along < 0 ? kWidth : 0, y = across > 0 ? kHeight : 0;
  const auto end_line = [&](double from_x, double from_y) {
    return EndLine{static_cast<Single>(from_x - across * reach), static_cast<Single>(from_y - along * reach),
                   static_cast<Single>(from_x + across * reach), static_cast<Single>(from_y + along * reach)};
  };
  Canvas canvas;
  Prepare(canvas);
  canvas.SetDrawWidth(3);
  Bitmap memory(kWidth, kHeight, 0);
  int value = 0;
  Compare(
      state,
      [&] {
        DrawCopies(canvas, SweptCopies(end_line(x, y), end_line(x + along * length, y - across * length),
                                       angle, kWidth, RGB(10, 20, 30), RGB(240, 120, 60)));
      },
      [&] { std::memset(memory.WritableRow(0), ++value, size_t{kWidth} * kHeight * sizeof(Pixel)); });
}

BENCHMARK(BM_Spray)->Arg(1)->Arg(kDragEvents)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Brighten)->Arg(1)->Arg(kDragEvents)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Blur)->Arg(1)->Arg(kDragEvents)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Gradient)
    ->Arg(0)
    ->Arg(10)
    ->Arg(37)
    ->Arg(45)
    ->Arg(80)
    ->Arg(270)
    ->Arg(323)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zelvane
