#include <benchmark/benchmark.h>

#include "effects/Effects.h"
#include "effects/frame/CommandLine.h"
#include "effects/pixels/Pixels.h"

/// The function of every effect on 4000 x 3000, as its settings start or as `kArguments` says, by the clock:
/// they use all processors. `effect_pack.py` sets ImageMagick beside it.
namespace zelvane {
namespace {

Bitmap Photograph() {
  Bitmap picture(4000, 3000, kOpaque);
  const Bitmap::Rows rows = picture.WritableRows();
  uint32_t grain = 1;
  for (int y = 0; y < picture.Height(); ++y) {
    for (int x = 0; x < picture.Width(); ++x) {
      grain = grain * 1664525 + 1013904223;
      const int noise = static_cast<int>(grain >> 28);
      rows[y][x] = Packed(x / 20 + noise, y / 15 + noise, (x + y) / 30 % 200 + noise);
    }
  }
  return picture;
}

void Run(benchmark::State& state, const Effect& effect, const std::vector<std::string>& arguments) {
  static const Bitmap picture = Photograph();
  std::vector<std::string> all{"picture"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  const Values values = ReadCommandLine(effect, all).values;
  for (auto _ : state) {
    Work work;
    benchmark::DoNotOptimize(effect.apply(picture, values, work));
  }
}

/// Settings under which an effect has something to do.
const std::vector<std::pair<std::string, std::vector<std::string>>> kArguments{
    {"Brightness and Contrast", {"--contrast=30"}},
    {"Hue and Saturation", {"--hue=40", "--saturation=20"}},
    {"Levels", {"--darkest=20", "--gamma=1.4"}},
    {"Rotate", {"--turn=right"}},
    {"Rotate", {"--angle=17"}},
    {"Rotate", {"--angle=45"}},
};

const bool kAreRegistered = [] {
  for (const auto make : kEffects) {
    const Effect effect = make();
    bool has_arguments = false;
    const auto add = [&](const std::vector<std::string>& arguments) {
      std::string name = effect.title;
      for (const std::string& argument : arguments) name += " " + argument;
      benchmark::RegisterBenchmark(name.c_str(),
                                   [=](benchmark::State& state) { Run(state, effect, arguments); })
          ->UseRealTime()
          ->Unit(benchmark::kMillisecond);
    };
    for (const auto& [title, arguments] : kArguments) {
      if (title != effect.title) continue;
      has_arguments = true;
      add(arguments);
    }
    if (!has_arguments) add({});
  }
  return true;
}();

}  // namespace
}  // namespace zelvane
