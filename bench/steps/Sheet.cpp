#include "steps/Sheet.h"

#include <array>
#include <random>

#include "document/window/MakeDocument.h"
#include "shell/state/State.h"
#include "tools/OptionBars.h"
#include "tools/SelectTool.h"

namespace zelvane {
namespace {

/// How many in a hundred pixels are walls.
unsigned WallsOf(Ground ground) {
  constexpr std::array<unsigned, 4> kWalls{0, 25, 40, 50};
  return kWalls.at(static_cast<size_t>(ground));
}

bool IsWayThrough(int x, int y) {
  return y % 2 == 0 || x == (y % 4 == 1 ? kWidth - 1 : 0);
}

}  // namespace

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

void UsePen(int width) {
  SelectTool(kPenTool);
  SelectOption3(0);
  frmControls->pixelSelector[4].SetValue(width);
}

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

}  // namespace zelvane
