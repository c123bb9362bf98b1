#include <dirent.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QWidget>
#include <fstream>
#include <string>
#include <vector>

#include "Ratio.h"
#include "surface/forms/controls/ListBox.h"
#include "surface/forms/windows/Application.h"
#include "surface/system/files/Files.h"
#include "surface/system/text/ReadingOrder.h"

/// The file window's list of a large folder, beside reading that folder and keeping nothing.
namespace zelvane {
namespace {

constexpr int kFiles = 20000;
/// Few fit the first pattern.
constexpr const char* kPatterns = "*.bmp;*.dib;*.rle;*.xbm;*.gif;*.jpeg;*.png;*.mng;*.tif;*.pcx;*.ico;*.jpg";

/// As cameras, scanners and people name them.
class FullFolder {
 public:
  FullFolder() {
    constexpr const char* kStarts[] = {"IMG_", "Holiday in Österreich ", "scan", "DSC"};
    for (int i = 0; i < kFiles; ++i) {
      const std::string number = std::to_string(i * 7919 % kFiles);
      std::ofstream(JoinPath(Path(), kStarts[i % std::ssize(kStarts)] + number + ".jpg"));
    }
  }
  std::string Path() const { return folder_.path().toStdString(); }

 private:
  QTemporaryDir folder_;
};

struct Window : Control {
  Window() : Control(nullptr, "window", new QWidget) {}
};

void ListFolder(benchmark::State& state) {
  const FullFolder folder;
  Window window;
  ListBox box(window, "box");
  const auto list = [&] {
    std::vector<std::string> names = FilesIn(folder.Path(), kPatterns);
    SortForReading(names);
    box.SetItems(std::move(names));
  };
  const auto read = [&] {
    DIR* const entries = ::opendir(folder.Path().c_str());
    while (::readdir(entries)) continue;
    ::closedir(entries);
  };
  ratio::Compare(state, list, read);
  if (box.ListCount() != kFiles) state.SkipWithError("files are missing");
}
BENCHMARK(ListFolder)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zelvane

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const zelvane::Application toolkit(argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
