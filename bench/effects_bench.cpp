#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "Ratio.h"
#include "document/window/MakeDocument.h"
#include "imageops/effects/RunEffect.h"
#include "shell/Main.h"
#include "shell/state/Settings.h"
#include "shell/state/State.h"
#include "surface/forms/windows/Application.h"
#include "surface/system/files/Descriptor.h"
#include "surface/system/files/Files.h"

/// An effect's way there and back without its own work, against writing and reading the same bytes. By the
/// clock, since others work meanwhile.
namespace zelvane {
namespace {

constexpr int kWidth = 4000, kHeight = 3000;
constexpr size_t kFileSize = 54 + size_t{3} * kWidth * kHeight;
constexpr char kEffect[] = "nothing.exe";

template <class Step>
double ClockSeconds(Step&& step) {
  const auto start = std::chrono::steady_clock::now();
  step();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void WriteAndRead(std::vector<unsigned char>& bytes) {
  const std::string path = State.TempPath + "bench.bmp";
  {
    const Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600));
    WriteAll(file.Get(), bytes.data(), bytes.size());
  }
  const Descriptor file(::open(path.c_str(), O_RDONLY));
  size_t done = 0;
  for (ssize_t got = 1; got > 0; done += static_cast<size_t>(got))
    got = ::read(file.Get(), bytes.data() + done, bytes.size() - done);
  DeleteFile(path);
}

void BM_RoundTrip(benchmark::State& state) {
  MakeDocument(kWidth, kHeight, RGB(51, 102, 153), {"sheet", ""});
  std::vector<unsigned char> bytes(kFileSize, 0x5A);
  std::vector<double> trips, floors;
  for (auto _ : state) {
    trips.push_back(ClockSeconds([] { RunEffect(kEffect); }));
    floors.push_back(ClockSeconds([&] { WriteAndRead(bytes); }));
    state.SetIterationTime(trips.back());
  }
  state.counters["ratio"] = ratio::Median(trips) / ratio::Median(floors);
  ActiveDocument()->SetDirtyFalse();
  ActiveDocument()->Unload();
}
BENCHMARK(BM_RoundTrip)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zelvane

/// Settings that the program writes go to a folder of its own; the effect lies beside the benchmark.
int main(int argc, char** argv) {
  const QTemporaryDir settings;
  qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
  zelvane::WriteSetting("ShowSplashScreen", "0");
  benchmark::Initialize(&argc, argv);
  const zelvane::Application toolkit(argc, argv);
  const std::string folder = zelvane::JoinPath(zelvane::ApplicationFolder(), "Effects");
  std::filesystem::create_directory(folder);
  std::filesystem::copy_file("/bin/true", zelvane::JoinPath(folder, zelvane::kEffect),
                             std::filesystem::copy_options::overwrite_existing);
  zelvane::Main("");
  benchmark::RunSpecifiedBenchmarks();
  std::filesystem::remove_all(folder);
  return 0;
}
