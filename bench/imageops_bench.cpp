#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

#include "Ratio.h"
#include "RunInProgram.h"
#include "document/window/MakeDocument.h"
#include "imageops/Flip.h"
#include "imageops/Greyscale.h"
#include "imageops/InvertImage.h"
#include "imageops/frmPalette.h"
#include "imageops/frmSize.h"
#include "shell/Main.h"
#include "shell/MenuEvents.h"

/// Commands on a whole picture, each with its undo copy where it takes one, up to the call that shows it. The
/// floor is a copy of the picture's memory, where a benchmark doesn't tell another.
namespace zelvane {
namespace {

constexpr int kWidth = 4000, kHeight = 3000;
constexpr size_t kPixels = size_t{kWidth} * kHeight;

Bitmap Noise(uint32_t colors) {
  std::mt19937 random(1);
  Bitmap picture(kWidth, kHeight, 0);
  Pixel* const first = picture.WritableRow(0);
  std::generate_n(first, kPixels, [&] { return 0xFF000000 | random() % colors; });
  return picture;
}

/// A document of 4000 x 3000 of so many colours.
class Sheet {
 public:
  explicit Sheet(uint32_t colors = 1 << 24)
      : document_(MakeDocument(kWidth, kHeight, kWhite, {"Sheet", ""})) {
    document_.Buffer.SetImage(Noise(colors));
  }
  frmPaint* operator->() { return &document_; }

 private:
  frmPaint& document_;
  const ClosedAtEnd closed_{document_};
};

class Memcpy {
 public:
  void operator()() { std::memcpy(to_.WritableRow(0), from_.Row(0), kPixels * sizeof(Pixel)); }

 private:
  const Bitmap from_{kWidth, kHeight, 1};
  Bitmap to_{kWidth, kHeight, 2};
};

template <void Command()>
void BM_Command(benchmark::State& state) {
  const Sheet sheet;
  ratio::Compare(state, Command, Memcpy());
}

void Grey() {
  Greyscale_Click(0);
}

/// The formula as it is told, pixel by pixel.
void BM_GreyBesidePlainLoop(benchmark::State& state) {
  const Sheet sheet;
  Bitmap picture = Noise(1 << 24);
  ratio::Compare(state, Grey, [&] {
    Pixel* const pixels = picture.WritableRow(0);
    for (size_t i = 0; i < kPixels; ++i) {
      const Pixel pixel = pixels[i];
      const Pixel sum = (pixel >> 8 & 0xFF) * 150 + (pixel >> 16 & 0xFF) * 76 + (pixel & 0xFF) * 28;
      pixels[i] = 0xFF000000 | (sum + 127) / 255 * 0x010101;
    }
  });
}

/// To `state.range(0)` in a hundred. The picture is set back in between.
void BM_ScaleTo(benchmark::State& state) {
  Sheet sheet;
  const Bitmap picture = sheet->Buffer.Image();
  const auto percent = static_cast<double>(state.range(0)) / 100;
  Memcpy copy;
  std::vector<double> scalings, floors;
  for (auto _ : state) {
    sheet->Buffer.SetPicture(picture);
    ImageSize_Click();
    frmSize->txtWidth.SetValue(kWidth * percent);
    frmSize->txtHeight.SetValue(kHeight * percent);
    scalings.push_back(ratio::Seconds([] { frmSize->Command1[1].OnClick(); }));
    floors.push_back(ratio::Seconds(copy));
    state.SetIterationTime(scalings.back());
  }
  state.counters["ratio"] = ratio::Median(scalings) / ratio::Median(floors);
}

/// From the command to the shown window.
void BM_PaletteOf(benchmark::State& state) {
  const Sheet sheet(static_cast<uint32_t>(state.range(0)));
  for (auto _ : state) {
    state.SetIterationTime(ratio::Seconds(
        [] {
          ImagePalette_Click();
          DoEvents();
        },
        ratio::ClockSeconds));
    if (frmPalette.IsLoaded()) frmPalette->Unload();
  }
}

BENCHMARK(BM_Command<FlipVertical_Click>)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Command<FlipHorizontal_Click>)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Command<InvertImage_Click>)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Command<Grey>)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GreyBesidePlainLoop)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ScaleTo)->Arg(50)->Arg(200)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PaletteOf)
    ->ArgName("colors")
    ->Arg(1500)
    ->Arg(2000)
    ->Arg(1 << 24)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zelvane

int main(int argc, char** argv) {
  return zelvane::RunInProgram(argc, argv, [] {
    zelvane::Main("");
    return true;
  });
}
