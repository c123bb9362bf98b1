#include <cstring>

#include "document/window/MakeDocument.h"
#include "imageops/Undo.h"
#include "steps/Sheet.h"

namespace zelvane {
namespace {

/// The thread's seconds until a document that `make` makes is painted; it is closed again afterwards.
template <class Make>
double SecondsToShow(Make&& make) {
  frmPaint* document = nullptr;
  const double shown = ratio::Seconds([&] {
    document = &make();
    document->PaintArea.Update();
    QGuiApplication::sync();
  });
  document->Unload();
  DoEvents();
  return shown;
}

/// A new image, against setting its bytes in memory that was touched before and showing a picture that is
/// there already.
void BM_NewImage(benchmark::State& state) {
  const Bitmap ready(kWidth, kHeight, ToPixel(kWhite));
  Bitmap memory(kWidth, kHeight, 0);
  const DocumentName name{"Untitled", ""};
  int value = 0;
  std::vector<double> news, fills, shows;
  for (auto _ : state) {
    news.push_back(SecondsToShow([&]() -> frmPaint& { return MakeDocument(kWidth, kHeight, kWhite, name); }));
    fills.push_back(ratio::Seconds([&] { std::memset(memory.WritableRow(0), ++value, kBytes); }));
    shows.push_back(SecondsToShow([&]() -> frmPaint& { return MakeDocument(ready, name); }));
    state.SetIterationTime(news.back());
  }
  const double fill = ratio::Median(fills), show = ratio::Median(shows);
  state.counters["fill_ms"] = fill * 1e3;
  state.counters["show_ms"] = show * 1e3;
  state.counters["ratio"] = ratio::Median(news) / (fill + show);
}

/// The copy that a press makes for the undo, against copying as many bytes within touched memory.
void BM_UndoCopy(benchmark::State& state) {
  LargeSheet sheet;
  TakeUndoSnapshot(sheet.Document());
  Bitmap from(kWidth, kHeight, 1), to(kWidth, kHeight, 2);
  ratio::Compare(
      state, [&] { TakeUndoSnapshot(sheet.Document()); },
      [&] { std::memcpy(to.WritableRow(0), from.Row(0), kBytes); });
}

/// The first one of a document, whose memory is new.
void BM_FirstUndoCopy(benchmark::State& state) {
  LargeSheet sheet;
  Bitmap from(kWidth, kHeight, 1), to(kWidth, kHeight, 2);
  std::vector<double> copies, floors;
  for (auto _ : state) {
    sheet.Document().Undo.SetImage(Bitmap());
    copies.push_back(ratio::Seconds([&] { TakeUndoSnapshot(sheet.Document()); }));
    floors.push_back(ratio::Seconds([&] { std::memcpy(to.WritableRow(0), from.Row(0), kBytes); }));
    state.SetIterationTime(copies.back());
  }
  state.counters["ratio"] = ratio::Median(copies) / ratio::Median(floors);
}

void BM_Undo(benchmark::State& state) {
  LargeSheet sheet;
  UsePen(20);
  sheet.Press(100, 100);
  sheet.MoveTo(800, 500);
  sheet.Release(800, 500);
  MeasureSteps(
      state, sheet, [] { Undo_Click(); }, [] {});
}

BENCHMARK(BM_NewImage)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UndoCopy)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FirstUndoCopy)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Undo)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zelvane
