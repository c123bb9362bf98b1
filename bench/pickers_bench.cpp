#include <QAbstractScrollArea>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>

#include "PaintWatch.h"
#include "Ratio.h"
#include "RunInProgram.h"
#include "shell/Main.h"
#include "surface/forms/windows/EventLoop.h"
#include "tools/OptionBars.h"
#include "tools/SelectTool.h"
#include "tools/TextPickers.h"

/// The list of fonts with `BENCH_FONTS` of them, at first 500: how long it takes from the click until it is
/// painted with the names in view in their own faces, and what a page of it costs when it's scrolled.
namespace zelvane {
namespace {

/// The fonts of this machine under so many names, in place of its own.
class ManyFonts {
 public:
  explicit ManyFonts(int count) {
    QStringList files;
    for (QDirIterator each("/usr/share/fonts", {"*.ttf", "*.otf"}, QDir::Files, QDirIterator::Subdirectories);
         each.hasNext();)
      files.push_back(each.next());
    QFile settings(folder_.filePath("fonts.conf"));
    settings.open(QIODevice::WriteOnly);
    QTextStream text(&settings);
    text << "<fontconfig><dir>" << folder_.path() << "</dir><cachedir>" << folder_.filePath("cache")
         << "</cachedir>";
    for (int i = 0; i < count && !files.isEmpty(); ++i) {
      const QString& file = files[i % files.size()];
      const QString name = QString("Face %1").arg(i);
      const QString link = folder_.filePath(name + "." + QFileInfo(file).suffix());
      QFile::link(file, link);
      text << "<match target=\"scan\"><test name=\"file\"><string>" << link << "</string></test>"
           << "<edit name=\"family\" mode=\"assign\"><string>" << name << "</string></edit></match>";
    }
    text << "</fontconfig>";
    qputenv("FONTCONFIG_FILE", settings.fileName().toUtf8());
  }

 private:
  QTemporaryDir folder_;
};

QAbstractScrollArea& List() {
  return *static_cast<QAbstractScrollArea*>(frmFonts->List.Widget());
}

/// Nothing is loaded before: the first time that the list shows.
void FirstShown(benchmark::State& state) {
  PaintWatch watch("FontScroll");
  bool is_painted = false;
  watch.OnPainted = [&] { is_painted = true; };
  for (auto _ : state) {
    const double start = ratio::ClockSeconds();
    SelectTool(kTextTool);
    const double shown = ratio::ClockSeconds();
    state.counters["bar_ms"] = (shown - start) * 1e3;
    frmControls->CmdFont.OnClick();
    RunEventsUntil([&] { return is_painted; }, 10000);
    state.SetIterationTime(ratio::ClockSeconds() - shown);
  }
  state.counters["fonts"] = frmFonts->List.Count();
}
BENCHMARK(FirstShown)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);

/// Anywhere in the list, so that hardly a face of the page is loaded.
void PageScrolled(benchmark::State& state) {
  QScrollBar& bar = *List().verticalScrollBar();
  std::vector<double> frames;
  int page = 0;
  for (auto _ : state) {
    const double start = ratio::ClockSeconds();
    bar.setValue(static_cast<int>(int64_t{++page} * 7919 * 13 % (bar.maximum() + 1)));
    List().viewport()->repaint();
    frames.push_back(ratio::ClockSeconds() - start);
    state.SetIterationTime(frames.back());
  }
  std::sort(frames.begin(), frames.end());
  state.counters["nine_in_ten_ms"] = frames[frames.size() * 9 / 10] * 1e3;
}
BENCHMARK(PageScrolled)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(300);

}  // namespace
}  // namespace zelvane

int main(int argc, char** argv) {
  const int asked = qEnvironmentVariableIntValue("BENCH_FONTS");
  const zelvane::ManyFonts fonts(asked > 0 ? asked : 500);
  return zelvane::RunInProgram(argc, argv, [] {
    zelvane::Main("");
    return true;
  });
}
