#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "Ratio.h"
#include "RunInProgram.h"
#include "document/window/MakeDocument.h"
#include "imageops/effects/RunEffect.h"
#include "shell/Main.h"
#include "shell/state/State.h"
#include "surface/system/files/Descriptor.h"
#include "surface/system/files/Files.h"

/// An effect's way there and back without its own work, against writing and reading the same bytes. By the
/// clock, since others work meanwhile.
namespace zelvane {
namespace {

constexpr int kWidth = 4000, kHeight = 3000;
constexpr size_t kFileSize = 54 + size_t{3} * kWidth * kHeight;
constexpr char kEffect[] = "nothing.exe";

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
  ratio::Compare(
      state, [] { RunEffect(kEffect); }, [&] { WriteAndRead(bytes); }, ratio::ClockSeconds);
  ActiveDocument()->SetDirtyFalse();
  ActiveDocument()->Unload();
}
BENCHMARK(BM_RoundTrip)->UseManualTime()->Unit(benchmark::kMillisecond);

std::string EffectsFolder() {
  return JoinPath(ApplicationFolder(), "Effects");
}

/// The effect lies beside the benchmark.
bool StartWithEffect() {
  std::filesystem::create_directory(EffectsFolder());
  std::filesystem::copy_file("/bin/true", JoinPath(EffectsFolder(), kEffect),
                             std::filesystem::copy_options::overwrite_existing);
  Main("");
  return true;
}

}  // namespace
}  // namespace zelvane

int main(int argc, char** argv) {
  const int status = zelvane::RunInProgram(argc, argv, zelvane::StartWithEffect);
  std::filesystem::remove_all(zelvane::EffectsFolder());
  return status;
}
