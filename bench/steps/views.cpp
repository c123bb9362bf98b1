#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>

#include "steps/Sheet.h"
#include "tools/OptionBars.h"

namespace zelvane {
namespace {

/// From `state.range(0)` x 100 % to the next step.
void BM_ZoomStep(benchmark::State& state) {
  LargeSheet sheet;
  const int from = static_cast<int>(state.range(0));
  sheet.ZoomTo(from);
  MeasureSteps(
      state, sheet, [from] { frmControls->comboZoom.SetListIndex(from); }, [&] { sheet.ZoomTo(from); });
}

/// The toolkit's own scroll area with nothing but the picture in it, beside the main window.
class BareScrollArea {
 public:
  BareScrollArea(const Bitmap& picture, int multiple) {
    area_.setWidget(new Picture(picture, multiple));
    area_.setFrameShape(QFrame::NoFrame);
    area_.setGeometry(kMainWidth, 0, kViewWidth + area_.verticalScrollBar()->sizeHint().width(),
                      kViewHeight + area_.horizontalScrollBar()->sizeHint().height());
    area_.show();
    DoEvents();
  }
  QScrollBar& Bar() { return *area_.verticalScrollBar(); }
  void Update() {
    QEvent request(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&area_, &request);
  }

 private:
  class Picture : public QWidget {
   public:
    Picture(const Bitmap& picture, int multiple)
        : picture_(reinterpret_cast<const uchar*>(picture.Row(0)), picture.Width(), picture.Height(),
                   QImage::Format_RGB32),
          multiple_(multiple) {
      setAttribute(Qt::WA_OpaquePaintEvent);
      setFixedSize(picture_.size() * multiple);
    }

   private:
    void paintEvent(QPaintEvent* event) override {
      QPainter painter(this);
      painter.setClipRegion(event->region());
      painter.scale(multiple_, multiple_);
      painter.drawImage(0, 0, picture_);
    }
    QImage picture_;
    int multiple_;
  };
  QScrollArea area_;
};

/// A step down at `state.range(0)` x 100 %, against the same in a bare scroll area.
void BM_ScrollStep(benchmark::State& state) {
  LargeSheet sheet;
  const int multiple = static_cast<int>(state.range(0));
  sheet.ZoomTo(multiple);
  ScrollBar& bar = sheet.Document().VScroll1;
  BareScrollArea bare(sheet.Document().Buffer.Image(), multiple);
  constexpr int16_t kStep = 24;
  Measured steps;
  std::vector<double> walls, bare_walls, bare_threads;
  for (auto _ : state) {
    walls.push_back(
        steps.Run(state, sheet, [&] { bar.SetValue(static_cast<int16_t>(bar.Value() + kStep)); }));
    state.SetIterationTime(walls.back());
    QGuiApplication::sync();
    const double start = WallSeconds(), thread_start = ratio::ThreadSeconds();
    bare.Bar().setValue(bar.Value());
    bare.Update();
    bare_threads.push_back(ratio::ThreadSeconds() - thread_start);
    QGuiApplication::sync();
    bare_walls.push_back(WallSeconds() - start);
    if (bar.Value() + kStep > bar.Max()) bar.SetValue(0), bare.Bar().setValue(0), bare.Update();
  }
  steps.Show(state);
  state.counters["floor_ms"] = ratio::Median(bare_threads) * 1e3;
  state.counters["ratio"] = steps.Thread() / ratio::Median(bare_threads);
  state.counters["painted_ratio"] = ratio::Median(walls) / ratio::Median(bare_walls);
}

BENCHMARK(BM_ZoomStep)->Arg(1)->Arg(3)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ScrollStep)->Arg(1)->Arg(3)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zelvane
