#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QWidget>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>
#include <utility>
#include <vector>

#include "Ratio.h"
#include "RunInProgram.h"
#include "colour/ColorPanel.h"
#include "document/window/MakeDocument.h"
#include "imageops/Undo.h"
#include "selection/Selection.h"
#include "selection/SelectionCommands.h"
#include "shell/Main.h"
#include "shell/MainForm.h"
#include "surface/raster/Units.h"
#include "surface/system/desktop/Clipboard.h"
#include "tools/OptionBars.h"
#include "tools/SelectTool.h"
#include "tools/SimplePaints.h"

/// Steps of a user in the whole program, from the event to the finished painting, on the platform that the
/// environment names. Pointer events go to the view of a picture of 4000 x 3000 in a viewport of 1000 x 700.
///
/// `painted_ms` is real time until the display has what was painted, `cpu_ms` the processor time of the
/// program alone, `painted_px` how many pixels of the view were painted; a `ratio` is of processor times, as
/// others on the machine don't count in them. A step that painted nothing fails its benchmark.
namespace zelvane {
namespace {

constexpr int kWidth = 4000, kHeight = 3000, kSmallSide = 200;
constexpr int kViewWidth = 1000, kViewHeight = 700;
constexpr int kMainWidth = 1600, kMainHeight = 960;
constexpr size_t kBytes = size_t{kWidth} * kHeight * sizeof(Pixel);
constexpr Single kTwips = kTwipsPerPixel;

double WallSeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Counts what of a widget is painted.
class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
  int64_t Pixels() const { return pixels_; }

 private:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::Paint) return false;
    for (const QRect& part : static_cast<QPaintEvent*>(event)->region())
      pixels_ += int64_t{part.width()} * part.height();
    return false;
  }
  int64_t pixels_ = 0;
};

/// A document of its own that is on the screen.
class Sheet {
 public:
  Sheet(int width, int height, int view_width, int view_height, Single left = 0);

  frmPaint& Document() { return document_; }
  /// Pixels of the view that were painted so far.
  int64_t Painted() const { return counter_.Pixels(); }
  void ZoomTo(int multiple);
  bool IsInView(int view_width, int view_height);

  /// Pointer events, in units of the view.
  void Press(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
    Send(QEvent::MouseButtonPress, x, y, button, button);
  }
  void MoveTo(int x, int y) { Send(QEvent::MouseMove, x, y, Qt::NoButton, Qt::LeftButton); }
  void Release(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
    Send(QEvent::MouseButtonRelease, x, y, button, Qt::NoButton);
  }

 private:
  /// Units start behind the frame of the view.
  void Send(QEvent::Type type, int x, int y, Qt::MouseButton button, Qt::MouseButtons held) {
    QWidget* const widget = document_.PaintArea.Widget();
    const QPoint at(x + 1, y + 1);
    QMouseEvent event(type, at, widget->mapToGlobal(at), button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
  }

  frmPaint& document_;
  PaintCounter counter_;
  const ClosedAtEnd closed_{document_};
};

Sheet::Sheet(int width, int height, int view_width, int view_height, Single left)
    : document_(MakeDocument(width, height, kWhite, {"Sheet", ""})), counter_(*document_.PaintArea.Widget()) {
  document_.Move(left * kTwips, 0);
  document_.SetWidth((static_cast<Single>(view_width) + document_.VScroll1.Width()) * kTwips);
  document_.SetHeight((static_cast<Single>(view_height) + document_.HScroll1.Height()) * kTwips);
  document_.Form_Resize();
  RefreshPaintArea(document_.Buffer);
  ZoomTo(1);
}

/// Whether the view is on the screen in that size at least.
bool Sheet::IsInView(int view_width, int view_height) {
  const QRect seen = document_.PaintArea.Widget()->visibleRegion().boundingRect();
  return seen.width() >= view_width && seen.height() >= view_height;
}

void Sheet::ZoomTo(int multiple) {
  document_.Activate();
  frmControls->comboZoom.SetListIndex(multiple - 1);
  // The box tells nobody where it stood there already, perhaps for another document.
  document_.ChangeZoomFactor();
  QGuiApplication::sync();
}

/// The large picture at the left of the main window.
class LargeSheet : public Sheet {
 public:
  LargeSheet() : Sheet(kWidth, kHeight, kViewWidth, kViewHeight) {}
};

/// The small one beside it, which both are in full view.
class SmallSheet : public Sheet {
 public:
  SmallSheet() : Sheet(kSmallSide, kSmallSide, kSmallSide + 2, kSmallSide + 2, kViewWidth + 60) {}
};

/// Steps of one kind.
class Measured {
 public:
  /// Runs `step` and paints what it noted. Returns the real seconds.
  template <class Step>
  double Run(benchmark::State& state, Sheet& sheet, Step&& step) {
    QGuiApplication::sync();
    const int64_t painted = sheet.Painted();
    const double start = WallSeconds(), thread_start = ratio::ThreadSeconds();
    step();
    sheet.Document().PaintArea.Update();
    thread_.push_back(ratio::ThreadSeconds() - thread_start);
    QGuiApplication::sync();
    wall_.push_back(WallSeconds() - start);
    pixels_.push_back(static_cast<double>(sheet.Painted() - painted));
    if (pixels_.back() == 0) state.SkipWithError("nothing was painted");
    return wall_.back();
  }

  double Thread() { return ratio::Median(thread_); }
  void Show(benchmark::State& state) {
    state.counters["painted_ms"] = ratio::Median(wall_) * 1e3;
    state.counters["cpu_ms"] = Thread() * 1e3;
    state.counters["painted_px"] = ratio::Median(pixels_);
  }

 private:
  std::vector<double> thread_, wall_, pixels_;
};

/// `step` in turn with `back`, which isn't measured, until the benchmark has enough.
template <class Step, class Back>
void MeasureSteps(benchmark::State& state, Sheet& sheet, Step step, Back back) {
  Measured steps;
  for (auto _ : state) {
    state.SetIterationTime(steps.Run(state, sheet, step));
    back();
  }
  steps.Show(state);
}

void UsePen(int width) {
  SelectTool(kPenTool);
  SelectOption3(0);
  frmControls->pixelSelector[4].SetValue(width);
}

/// Places eight units apart, to and fro over a square that is in view everywhere.
QPoint PenPlace(int step) {
  constexpr int kStride = 8, kColumns = 20, kMargin = 20;
  const int row = step / kColumns % kColumns, column = step % kColumns;
  return {kMargin + kStride * (row % 2 ? kColumns - 1 - column : column), kMargin + kStride * row};
}

/// A pen `state.range(0)` wide at `state.range(1)` x 100 %: the step against the same on a small picture. The
/// pointers are at different places, as a read-out that stands already isn't painted again.
void BM_PenStep(benchmark::State& state) {
  LargeSheet large;
  SmallSheet small;
  UsePen(static_cast<int>(state.range(0)));
  for (Sheet* sheet : {static_cast<Sheet*>(&large), static_cast<Sheet*>(&small)}) {
    sheet->ZoomTo(static_cast<int>(state.range(1)));
    sheet->Press(PenPlace(0).x(), PenPlace(0).y());
  }
  Measured steps, floors;
  const auto move = [](Sheet& sheet, QPoint place) { sheet.MoveTo(place.x(), place.y()); };
  constexpr int kApart = 45;
  for (int i = 0; i < kApart; ++i) move(small, PenPlace(i));
  int step = 1;
  for (auto _ : state) {
    state.SetIterationTime(steps.Run(state, large, [&] { move(large, PenPlace(step)); }));
    floors.Run(state, small, [&] { move(small, PenPlace(step + kApart)); });
    ++step;
  }
  steps.Show(state);
  state.counters["floor_ms"] = floors.Thread() * 1e3;
  state.counters["ratio"] = steps.Thread() / floors.Thread();
}

/// A step of a pen `state.range(0)` wide within a floating selection of the whole picture, against one
/// without.
void BM_PenStepInSelection(benchmark::State& state) {
  constexpr int kHalf = 500;
  Sheet plain(kWidth, kHeight, kHalf, kViewHeight), sheet(kWidth, kHeight, kHalf, kViewHeight, kHalf + 60);
  frmPaint& document = sheet.Document();
  document.BufferSelected.SetPicture(Bitmap(kWidth, kHeight, ToPixel(kWhite)));
  document.SelectArea.SetVisible(true);
  document.RealignZoom(-1, -1);
  RefreshPaintArea(document.Buffer);
  UsePen(static_cast<int>(state.range(0)));
  for (Sheet* one : {&plain, &sheet}) one->Press(PenPlace(0).x(), PenPlace(0).y());
  Measured steps, floors;
  int step = 1;
  for (auto _ : state) {
    const QPoint place = PenPlace(step++);
    state.SetIterationTime(steps.Run(state, sheet, [&] { sheet.MoveTo(place.x(), place.y()); }));
    floors.Run(state, plain, [&] { plain.MoveTo(place.x() + 1, place.y()); });
  }
  steps.Show(state);
  state.counters["floor_ms"] = floors.Thread() * 1e3;
  state.counters["ratio"] = steps.Thread() / floors.Thread();
}

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

enum Ground { kBlank, kQuarterWalls, kThreshold, kHalfWalls, kSerpentine };

/// How many in a hundred pixels are walls.
unsigned WallsOf(Ground ground) {
  constexpr std::array<unsigned, 4> kWalls{0, 25, 40, 50};
  return kWalls.at(static_cast<size_t>(ground));
}

bool IsWayThrough(int x, int y) {
  return y % 2 == 0 || x == (y % 4 == 1 ? kWidth - 1 : 0);
}

/// Puts black walls on the white picture; the pixel in the middle stays free.
void BuildWalls(Canvas& canvas, Ground ground) {
  std::mt19937 random(1);
  for (int y = 0; y < kHeight; ++y) {
    Pixel* const row = canvas.WritableRow(y);
    for (int x = 0; x < kWidth; ++x) {
      const bool is_wall = ground == kSerpentine ? !IsWayThrough(x, y) : random() % 100 < WallsOf(ground);
      if (is_wall) row[x] = ToPixel(kBlack);
    }
  }
  canvas.WritableRow(kHeight / 2)[kWidth / 2] = ToPixel(kWhite);
}

/// Fills in two colours, none of which the walls have.
void UseFill() {
  SelectTool(kFloodfillTool);
  ColorPanel->SelColor[0].SetBackColor(RGB(200, 30, 60));
  ColorPanel->SelColor[1].SetBackColor(RGB(20, 160, 90));
}

/// Press and release, in the middle of the picture; the buttons take turns, so that every click paints.
void BM_FillClick(benchmark::State& state) {
  LargeSheet sheet;
  BuildWalls(sheet.Document().Buffer, static_cast<Ground>(state.range(0)));
  sheet.Document().HScroll1.SetValue((kWidth - kViewWidth) / 2);
  sheet.Document().VScroll1.SetValue((kHeight - kViewHeight) / 2);
  UseFill();
  Qt::MouseButton button = Qt::LeftButton, next = Qt::RightButton;
  MeasureSteps(
      state, sheet,
      [&] {
        sheet.Press(kWidth / 2, kHeight / 2, button);
        sheet.Release(kWidth / 2, kHeight / 2, button);
      },
      [&] { std::swap(button, next); });
}

/// The call of the fill tool alone, in the other of two colours each time.
void FillAgain(Sheet& sheet) {
  State.PointerButton = State.PointerButton == kLeftButton ? kRightButton : kLeftButton;
  ApplyTool(sheet.Document().Buffer, kWidth / 2, kHeight / 2, 100, true);
}

double PixelsOf(const Canvas& canvas, Pixel pixel) {
  ptrdiff_t count = 0;
  for (int y = 0; y < kHeight; ++y) {
    count += std::count(canvas.Image().Row(y), canvas.Image().Row(y) + kWidth, pixel);
  }
  return static_cast<double>(count);
}

/// What a fill between walls takes for each pixel that it paints, against the fill of a blank picture.
void BM_FillPerPixel(benchmark::State& state) {
  LargeSheet sheet;
  Sheet blank(kWidth, kHeight, kViewWidth, kViewHeight);
  Canvas& canvas = sheet.Document().Buffer;
  BuildWalls(canvas, static_cast<Ground>(state.range(0)));
  UseFill();
  FillAgain(sheet);
  const double share = PixelsOf(canvas, canvas.Image().Row(kHeight / 2)[kWidth / 2]) / kWidth / kHeight;
  std::vector<double> fills, floors;
  for (auto _ : state) {
    fills.push_back(ratio::Seconds([&] { FillAgain(sheet); }));
    floors.push_back(ratio::Seconds([&] { FillAgain(blank); }));
    // Each has to change its colour, so the other's turn of the buttons is taken back.
    State.PointerButton = State.PointerButton == kLeftButton ? kRightButton : kLeftButton;
    state.SetIterationTime(fills.back());
  }
  state.counters["painted_share"] = share;
  state.counters["cpu_ms"] = ratio::Median(fills) * 1e3;
  state.counters["ratio"] = ratio::Median(fills) / (ratio::Median(floors) * share);
}

/// To and fro between the margins of an extent.
int Bounced(int at, int extent) {
  constexpr int kMargin = 50;
  const int room = extent - 2 * kMargin, place = at % (2 * room);
  return kMargin + (place < room ? place : 2 * room - place);
}

/// A tool and the entry of its size among the options.
constexpr std::array<std::pair<int16_t, int>, 3> kDabs{
    {{kAirbrushTool, 2}, {kBrightenTool, 3}, {kBlurTool, 8}}};

/// A drag of 200 events with the largest dab, each painted before the next one comes.
void BM_DabDrag(benchmark::State& state) {
  constexpr int kEvents = 200;
  LargeSheet sheet;
  BuildWalls(sheet.Document().Buffer, kHalfWalls);
  const auto [tool, option] = kDabs.at(static_cast<size_t>(state.range(0)));
  SelectTool(tool);
  frmControls->pixelSelector[option].SetValue(100);
  Measured steps;
  std::vector<double> drags;
  for (auto _ : state) {
    sheet.Press(Bounced(0, kViewWidth), Bounced(0, kViewHeight));
    double drag = 0;
    for (int i = 1; i <= kEvents; ++i) {
      drag += steps.Run(state, sheet,
                        [&] { sheet.MoveTo(Bounced(i * 17, kViewWidth), Bounced(i * 13, kViewHeight)); });
    }
    sheet.Release(Bounced(0, kViewWidth), Bounced(0, kViewHeight));
    drags.push_back(drag);
    state.SetIterationTime(drag);
  }
  steps.Show(state);
  state.counters["events_per_s"] = kEvents / ratio::Median(drags);
}

/// A drag over the whole diagonal, against setting every byte of the picture: `release_ratio` for the release
/// alone, `ratio` with the press and its copy for the undo.
void BM_GradientDrag(benchmark::State& state) {
  LargeSheet sheet;
  SelectTool(kGradientTool);
  Bitmap memory(kWidth, kHeight, 0);
  int value = 0;
  Measured drags, releases;
  std::vector<double> floors;
  for (auto _ : state) {
    const double drag = drags.Run(state, sheet, [&] {
      sheet.Press(0, 0);
      sheet.MoveTo(kWidth - 1, kHeight - 1);
      releases.Run(state, sheet, [&] { sheet.Release(kWidth - 1, kHeight - 1); });
    });
    floors.push_back(ratio::Seconds([&] { std::memset(memory.WritableRow(0), ++value, kBytes); }));
    state.SetIterationTime(drag);
  }
  drags.Show(state);
  const double floor = ratio::Median(floors);
  state.counters["floor_ms"] = floor * 1e3;
  state.counters["ratio"] = drags.Thread() / floor;
  state.counters["release_ratio"] = releases.Thread() / floor;
}

/// A floating selection of that size in the middle of the picture's view, with the Cursor pressed on it.
void PressOnSelection(Sheet& sheet, int width, int height) {
  LiftSelection(sheet.Document(), {40, 40, 40 + width, 40 + height});
  SelectTool(kCursorTool);
  sheet.Press(100, 100);
}

/// A step of a dragged selection, against the two copies of its area that put back what lay beneath it and
/// keep what lies beneath it now, and painting as much of the view.
void BM_DragSelection(benchmark::State& state) {
  constexpr int kSelectedWidth = 2000, kSelectedHeight = 1500;
  LargeSheet sheet;
  PressOnSelection(sheet, kSelectedWidth, kSelectedHeight);
  Canvas picture, piece;
  picture.SetImage(Bitmap(kWidth, kHeight, 1));
  piece.SetImage(Bitmap(kSelectedWidth, kSelectedHeight, 2));
  Measured steps, floors;
  int step = 0;
  for (auto _ : state) {
    const int way = 5 * (++step % 20);
    state.SetIterationTime(steps.Run(state, sheet, [&] { sheet.MoveTo(100 + way, 100 + way); }));
    floors.Run(state, sheet, [&] {
      picture.BitBlt(40 + way, 40 + way, kSelectedWidth, kSelectedHeight, piece, 0, 0);
      piece.BitBlt(0, 0, kSelectedWidth, kSelectedHeight, picture, 45 + way, 45 + way);
      sheet.Document().PaintArea.Refresh({35 + way, 35 + way, kViewWidth, kViewHeight});
    });
  }
  steps.Show(state);
  state.counters["floor_ms"] = floors.Thread() * 1e3;
  state.counters["ratio"] = steps.Thread() / floors.Thread();
  sheet.Release(100, 100);
}

/// How many events a second a small selection follows, each painted before the next one comes.
void BM_DragSmallSelection(benchmark::State& state) {
  LargeSheet sheet;
  PressOnSelection(sheet, 100, 100);
  Measured steps;
  int step = 0;
  for (auto _ : state) {
    const int way = ++step % 400;
    state.SetIterationTime(steps.Run(state, sheet, [&] { sheet.MoveTo(100 + way, 100 + way); }));
  }
  steps.Show(state);
  state.counters["events_per_s"] = benchmark::Counter(1, benchmark::Counter::kIsIterationInvariantRate);
  sheet.Release(100, 100);
}

/// Presses and lets go of a key, until what it changed is painted; the real seconds.
double SecondsToType(QWidget& field, int key, const QString& text, std::vector<double>& thread) {
  QGuiApplication::sync();
  const double start = WallSeconds(), thread_start = ratio::ThreadSeconds();
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&field, &event);
  }
  QEvent request(QEvent::UpdateRequest);
  QCoreApplication::sendEvent(field.window(), &request);
  thread.push_back(ratio::ThreadSeconds() - thread_start);
  QGuiApplication::sync();
  return WallSeconds() - start;
}

/// A letter typed into a text of `state.range(0)` lines at 800 %, against the same in the toolkit's own field
/// of the same font and size.
void BM_TypeLetter(benchmark::State& state) {
  LargeSheet sheet;
  sheet.ZoomTo(8);
  SelectTool(kTextTool);
  sheet.Press(80, 80);
  sheet.Release(80, 80);
  std::string lines = "The quick brown fox";
  for (int64_t i = 1; i < state.range(0); ++i) lines += "\nThe quick brown fox";
  MultilineTextBox& box = sheet.Document().TextInput;
  box.SetText(lines);
  QPlainTextEdit bare(QString::fromStdString(lines));
  bare.setFont(box.Widget()->font());
  bare.resize(kViewWidth, kViewHeight);
  bare.show();
  DoEvents();
  std::vector<double> steps, floors, walls;
  bool erases = false;
  for (auto _ : state) {
    const int key = erases ? Qt::Key_Backspace : Qt::Key_X;
    const QString text = erases ? "\b" : "x";
    erases = !erases;
    walls.push_back(SecondsToType(*box.Widget(), key, text, steps));
    state.SetIterationTime(walls.back());
    SecondsToType(bare, key, text, floors);
  }
  if (box.Text().size() > lines.size() + 1) state.SkipWithError("not what was typed");
  state.counters["painted_ms"] = ratio::Median(walls) * 1e3;
  state.counters["cpu_ms"] = ratio::Median(steps) * 1e3;
  state.counters["ratio"] = ratio::Median(steps) / ratio::Median(floors);
}

/// Select All and Copy, against the two fills of a layer that lift the picture. `put_us` is what putting it
/// on the clipboard takes.
void BM_CopyAll(benchmark::State& state) {
  LargeSheet sheet;
  Bitmap from(kWidth, kHeight, 1), to(kWidth, kHeight, 2), hole(kWidth, kHeight, 3);
  std::vector<double> copies, floors, puts;
  for (auto _ : state) {
    copies.push_back(ratio::Seconds([] { SelectAll_Click(), Copy_Click(); }));
    floors.push_back(ratio::Seconds([&] {
      std::memcpy(to.WritableRow(0), from.Row(0), kBytes);
      std::fill_n(hole.WritableRow(0), size_t{kWidth} * kHeight, Pixel{4});
    }));
    puts.push_back(ratio::Seconds([] { Copy_Click(); }));
    state.SetIterationTime(copies.back());
    if (state.range(0)) {
      Clipboard::Clear();
      DropSelection(sheet.Document());
    }
  }
  state.counters["ratio"] = ratio::Median(copies) / ratio::Median(floors);
  state.counters["put_us"] = ratio::Median(puts) * 1e6;
}

BENCHMARK(BM_TypeLetter)->Arg(1)->Arg(20)->Arg(5000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NewImage)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DragSelection)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DragSmallSelection)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_CopyAll)->ArgName("fresh")->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PenStep)->ArgsProduct({{1, 20}, {1, 3}})->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PenStepInSelection)->Arg(1)->Arg(20)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_UndoCopy)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FirstUndoCopy)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Undo)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ZoomStep)->Arg(1)->Arg(3)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ScrollStep)->Arg(1)->Arg(3)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FillClick)
    ->ArgName("ground")
    ->DenseRange(kBlank, kSerpentine)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FillPerPixel)
    ->ArgName("ground")
    ->Arg(kQuarterWalls)
    ->Arg(kThreshold)
    ->Arg(kSerpentine)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DabDrag)->DenseRange(0, 2)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GradientDrag)->UseManualTime()->Unit(benchmark::kMillisecond);

/// The main window, with room for both sheets and without the document that the start opened.
void StartProgram() {
  Main("");
  const std::vector<Form*> forms = Forms();
  for (Form* form : forms) {
    if (auto* document = dynamic_cast<ImageDocument*>(form)) document->Unload();
  }
  MainForm->SetWidth(kMainWidth * kTwips);
  MainForm->SetHeight(kMainHeight * kTwips);
  QGuiApplication::sync();
}

/// What isn't in view isn't painted either, and would make the steps look quicker.
bool HasRoom() {
  LargeSheet large;
  SmallSheet small;
  if (large.IsInView(kViewWidth, kViewHeight) && small.IsInView(kSmallSide, kSmallSide)) return true;
  std::fputs("The display is too small for the windows.\n", stderr);
  return false;
}

}  // namespace
}  // namespace zelvane

int main(int argc, char** argv) {
  return zelvane::RunInProgram(argc, argv, [] {
    zelvane::StartProgram();
    return zelvane::HasRoom();
  });
}
