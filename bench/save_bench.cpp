#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "surface/system/files/Files.h"
#include "surface/system/files/PictureFile.h"

/// Saving a picture against writing and syncing the same bytes. TMPDIR tells the folder, which should be on a
/// real disk.
namespace zelvane {
namespace {

constexpr int kWidth = 4000, kHeight = 3000;
constexpr size_t kFileSize = 54 + size_t{3} * kWidth * kHeight;

std::string PathFor(const char* name) {
  return TemporaryFolder() + name;
}

void WriteAndSync(benchmark::State& state) {
  const std::string path = PathFor("zelvane-bench-raw.bmp");
  const std::vector<unsigned char> bytes(kFileSize, 0x5A);
  for (auto _ : state) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    size_t done = 0;
    while (done < bytes.size()) {
      const ssize_t count = ::write(file, bytes.data() + done, bytes.size() - done);
      if (count <= 0) break;
      done += static_cast<size_t>(count);
    }
    if (done < bytes.size() || ::fsync(file) != 0) state.SkipWithError("the disk took less");
    ::close(file);
  }
  DeleteFile(path);
}
BENCHMARK(WriteAndSync)->Unit(benchmark::kMillisecond)->UseRealTime();

void Save(benchmark::State& state) {
  const std::string path = PathFor("zelvane-bench-saved.bmp");
  const Bitmap picture(kWidth, kHeight, 0xFF336699u);
  for (auto _ : state) {
    if (!SavePicture(picture, path).Done()) state.SkipWithError("not saved");
  }
  DeleteFile(path);
}
BENCHMARK(Save)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace zelvane

BENCHMARK_MAIN();
