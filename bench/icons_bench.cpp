#include <QTemporaryDir>
#include <chrono>
#include <fstream>

#include "PaintWatch.h"
#include "Ratio.h"
#include "RunInProgram.h"
#include "files/icons/IconExtractor.h"
#include "surface/codecs/LittleBytes.h"
#include "surface/forms/windows/EventLoop.h"
#include "surface/system/files/Files.h"

/// The icon window on a library of 100 MB: from the chosen file to the painted first icon, and from icon to
/// icon, beside reading as many bytes as one picture has.
namespace zelvane {
namespace {

constexpr uint32_t kIcons = 400, kSide = 256;
constexpr uint32_t kPicture = 40 + kSide * kSide * 4 + kSide * kSide / 8;
constexpr uint32_t kAddress = 0x1000, kTree = 0x400;  // of the tree, in memory and in the file

void Put(Bytes& bytes, std::initializer_list<uint32_t> values, int size = 4) {
  for (const uint32_t value : values) PutLittle(bytes, value, size);
}

/// Both types' directories, of one language each, then what tells where the data is, then the groups' data.
Bytes Tree() {
  constexpr uint32_t kTopBit = 0x80000000, kDirectory = 16, kEntry = 8, kLanguage = kDirectory + kEntry;
  constexpr uint32_t kNames = kDirectory + kIcons * kEntry, kLanguages = kDirectory + 2 * kEntry + 2 * kNames;
  constexpr uint32_t kLeaves = kLanguages + 2 * kIcons * kLanguage, kGroups = kLeaves + 2 * kIcons * 16;
  constexpr uint32_t kGroup = 20, kPictures = (kGroups + kIcons * kGroup + 15) / 16 * 16;
  Bytes tree;
  const uint32_t names = kDirectory + 2 * kEntry;
  Put(tree, {0, 0, 0, 2 << 16, 3, kTopBit | names, 14, kTopBit | (names + kNames)});
  for (uint32_t i = 0; i < 2 * kIcons; ++i) {
    if (i % kIcons == 0) Put(tree, {0, 0, 0, kIcons << 16});
    Put(tree, {i % kIcons + 1, kTopBit | (kLanguages + i * kLanguage)});
  }
  for (uint32_t i = 0; i < 2 * kIcons; ++i) Put(tree, {0, 0, 0, 1 << 16, 0x409, kLeaves + i * 16});
  for (uint32_t i = 0; i < kIcons; ++i) Put(tree, {kAddress + kPictures + i * kPicture, kPicture, 0, 0});
  for (uint32_t i = 0; i < kIcons; ++i) Put(tree, {kAddress + kGroups + i * kGroup, kGroup, 0, 0});
  for (uint32_t i = 0; i < kIcons; ++i) {
    Put(tree, {0, 1, 1, 0, 0, 1, 32}, 2);
    Put(tree, {kPicture, (i + 1)}, 4);
    tree.resize(tree.size() - 2);
  }
  tree.resize(kPictures);
  return tree;
}

void WriteLibrary(const std::string& path) {
  Bytes start{'M', 'Z'};
  start.resize(60);
  const Bytes tree = Tree();
  const auto size = static_cast<uint32_t>(tree.size()) + kIcons * kPicture;
  Put(start, {64, 0x4550, 1 << 16 | 0x8664, 0, 0, 0, 136, 0x20B});
  start.resize(64 + 24 + 108);
  Put(start, {3, 0, 0, 0, 0, kAddress, size});
  Put(start, {0x7273722E, 0x63, size, kAddress, size, kTree, 0, 0, 0, 0});
  start.resize(kTree);
  std::ofstream file(path, std::ios::binary);
  const auto write = [&](const Bytes& bytes) {
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  };
  write(start);
  write(tree);
  Bytes picture;
  Put(picture, {40, kSide, 2 * kSide, 32 << 16 | 1, 0, 0, 0, 0, 0, 0});
  picture.resize(kPicture, 0x7F);
  for (uint32_t i = 0; i < kIcons; ++i) write(picture);
}

void RunUntilPainted(PaintWatch& watch, const std::function<void()>& step) {
  bool is_painted = false;
  watch.OnPainted = [&] { is_painted = true; };
  step();
  RunEventsUntil([&] { return is_painted; }, 10000);
}

void CompareInWindow(benchmark::State& state, const std::function<void()>& step) {
  const QTemporaryDir folder;
  const std::string path = folder.filePath("large.dll").toStdString();
  WriteLibrary(path);
  IconExtractor->Show();
  IconExtractor->IconFile = path;
  IconExtractor->ListIcons();
  PaintWatch watch("IconPic");
  ratio::Compare(
      state, [&] { RunUntilPainted(watch, step); },
      [&] { benchmark::DoNotOptimize(FileStart(path, kPicture)); }, ratio::ClockSeconds);
  if (IconExtractor->IconCount != kIcons || IconExtractor->IconPic.Point(9, 9) == kNoColor)
    state.SkipWithError("icons are missing");
}

void LibraryListed(benchmark::State& state) {
  CompareInWindow(state, [] { IconExtractor->ListIcons(); });
}
BENCHMARK(LibraryListed)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

void NextIcon(benchmark::State& state) {
  CompareInWindow(state, [] {
    IconExtractor->IconScroll.SetValue(
        static_cast<int16_t>((IconExtractor->IconScroll.Value() + 1) % kIcons));
  });
}
BENCHMARK(NextIcon)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(200);

}  // namespace
}  // namespace zelvane

int main(int argc, char** argv) {
  return zelvane::RunInProgram(argc, argv);
}
