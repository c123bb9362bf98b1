#include "ui/Gradients.h"

#include <algorithm>

#include "surface/raster/Units.h"

namespace zelvane {
namespace {

constexpr int kBands = 85, kSteps = 256, kPace = 3, kSlowBands = 30;
constexpr double kBroadPen = 12;

/// System colours come down to plain ones.
Channels ChannelsOf(Color colour) {
  return Split(ToColor(ToPixel(colour)));
}

/// How much lighter the band after `band` is; below 0 for darker.
int Change(int band, bool brighten, bool fast) {
  if (!brighten) return -kPace;
  if (fast) return band < kSlowBands && band % 2 == 1 ? 0 : kPace;
  return band % kPace == 0 ? kPace : 0;
}

Channels Changed(const Channels& shade, int by) {
  const auto change = [by](int component) { return std::max(0, component) + by; };
  return {change(shade.red), change(shade.green), change(shade.blue)};
}

void PaintBand(Canvas& surface, bool is_row, int near, int far, const Channels& shade) {
  const auto pixels = [](int twips) { return static_cast<Single>(twips) / kTwipsPerPixel; };
  const auto width = static_cast<Single>(surface.ScaleWidth()),
             height = static_cast<Single>(surface.ScaleHeight());
  const Color colour = RGB(shade.red, shade.green, shade.blue);
  if (is_row)
    surface.FilledBox(0, pixels(near), width, pixels(far), colour);
  else
    surface.FilledBox(pixels(near), 0, pixels(far), height, colour);
}

/// A figure of the directional gradient on a scale of 256 by 256.
class Steps {
 public:
  Steps(Canvas& surface, int16_t direction)
      : surface_(surface),
        direction_(direction),
        across_(surface.ScaleWidth() / static_cast<double>(kSteps)),
        down_(surface.ScaleHeight() / static_cast<double>(kSteps)) {
    // Corners in the order of the directions; before them the middle.
    const int figure = (direction - 7) / 2;
    centre_x_ = figure <= 0 ? kSteps / 2 : figure % 2 == 0 ? kSteps : 0;
    centre_y_ = figure <= 0 ? kSteps / 2 : figure > 2 ? kSteps : 0;
  }

  void Paint(int k, Color colour) const {
    if (direction_ == 1 || direction_ == 3) return FilledBox(0, k, kSteps, k + 1, colour);
    if (direction_ == 2 || direction_ == 4) return FilledBox(k, 0, k + 1, kSteps, colour);
    if (direction_ <= 6) return PaintRectangle(k / 255.0, colour);
    surface_.Circle(X(centre_x_), Y(centre_y_), X(k), colour);
  }

 private:
  Single X(double x) const { return static_cast<Single>(x * across_); }
  Single Y(double y) const { return static_cast<Single>(y * down_); }
  void FilledBox(int x1, int y1, int x2, int y2, Color colour) const {
    surface_.FilledBox(X(x1), Y(y1), X(x2), Y(y2), colour);
  }
  void PaintRectangle(double t, Color colour) const {
    const Single left = X((1 - t) * centre_x_), right = X((1 + t) * centre_x_);
    const Single top = Y((1 - t) * centre_y_), bottom = Y((1 + t) * centre_y_);
    surface_.Line(left, top, right, top, colour);
    surface_.LineTo(right, bottom, colour);
    surface_.LineTo(left, bottom, colour);
    surface_.LineTo(left, top, colour);
  }

  Canvas& surface_;
  int direction_;
  double across_, down_;
  double centre_x_ = 0, centre_y_ = 0;
};

}  // namespace

void FillGradient(Canvas& surface, Color colour, int16_t Direction, bool Brighten, bool Fast) {
  if (colour == kNoColor) return;
  if (Direction < kTopDown || Direction > kRightToLeft) Direction = kTopDown;
  surface.Cls();
  const bool is_row = Direction <= kBottomUp, is_backward = Direction % 2 == 0;
  const int extent = (is_row ? surface.ScaleHeight() : surface.ScaleWidth()) * kTwipsPerPixel;
  const int band = static_cast<int>(RoundHalfEven(extent / static_cast<double>(kBands)));
  Channels shade = ChannelsOf(colour);
  for (int i = 1; i <= kBands; ++i) {
    const int near = is_backward ? extent - i * band : (i - 1) * band;
    PaintBand(surface, is_row, is_backward && i == kBands ? 0 : near, near + band, shade);
    shade = Changed(shade, Change(i, Brighten, Fast));
  }
}

bool FillGradientDirectional(Canvas& surface, Color colour, int16_t Direction) {
  if (colour == kNoColor) return false;
  const Channels full = ChannelsOf(colour);
  surface.SetDrawMode(kDrawCopy);
  surface.SetDrawWidth(kBroadPen);
  surface.SetFillStyle(kFillTransparent);
  const bool is_outward = Direction <= 4 ? Direction <= 2 : Direction % 2 == 1;
  if (Direction > 4) surface.SetBackColor(is_outward ? colour : kBlack);
  surface.Cls();
  const Steps figure(surface, Direction);
  for (int k = 0; k < kSteps; ++k) {
    const int i = is_outward ? k : kSteps - 1 - k;
    figure.Paint(k, RGB(std::min(i, full.red), std::min(i, full.green), std::min(i, full.blue)));
  }
  return true;
}

}  // namespace zelvane
