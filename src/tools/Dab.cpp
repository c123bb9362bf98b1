#include "tools/Dab.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>
#include <vector>

#include "surface/raster/Numbers.h"
#include "surface/raster/Spans.h"
#include "tools/Ramp.h"

namespace zelvane {
namespace {

constexpr int32_t kLargestSize = 1000;

/// The pixel that a dab has in its middle.
struct Centre {
  int64_t x, y;
};

std::optional<Centre> CentreOf(Single X, Single Y) {
  const auto x = ToInt32(X), y = ToInt32(Y);
  if (!x || !y) return std::nullopt;
  return Centre{*x, *y};
}

/// Radii of the rings from the innermost outwards.
std::vector<int> RingsOf(DabSize size) {
  std::vector<int> rings;
  if (size.Size > kLargestSize) return rings;
  for (int i = 1; i <= size.Steps; ++i) {
    rings.push_back(*ToInt16(static_cast<double>(size.Size) / size.Steps * i));
  }
  return rings;
}

/// The index of the innermost ring that holds a pixel, by the square of its distance from the centre.
std::vector<uint16_t> RingBySquare(const std::vector<int>& rings) {
  std::vector<uint16_t> index;
  for (size_t ring = 0; ring < rings.size(); ++ring) {
    index.resize(static_cast<size_t>(rings[ring] * rings[ring]) + 1, static_cast<uint16_t>(ring));
  }
  return index;
}

ColorMap::Curve Unchanged() {
  ColorMap::Curve curve;
  for (size_t channel = 0; channel < curve.size(); ++channel) curve[channel] = static_cast<uint8_t>(channel);
  return curve;
}

/// The part of a disc's row or column that a surface of that extent has, from the centre.
Span Visible(int reach, int64_t centre, int extent) {
  return Span{-reach, reach}.Intersected({-centre, extent - 1 - centre});
}

Rect Bounds(const Centre& centre, int64_t left_and_up, int64_t right_and_down, const Canvas& Target) {
  const auto clipped = [](int64_t position, int extent) {
    return static_cast<int>(std::clamp<int64_t>(position, 0, extent));
  };
  return {clipped(centre.x - left_and_up, Target.ScaleWidth()),
          clipped(centre.y - left_and_up, Target.ScaleHeight()),
          clipped(centre.x + right_and_down + 1, Target.ScaleWidth()),
          clipped(centre.y + right_and_down + 1, Target.ScaleHeight())};
}

/// Pixels don't depend on each other here, so the disc is painted row by row, as memory lies.
void PaintDisc(Canvas& Target, const Centre& centre, const std::vector<int>& rings,
               const std::vector<ColorMap>& maps) {
  const std::vector<uint16_t> ring_of = RingBySquare(rings);
  const int radius = rings.back();
  const Span rows = Visible(radius, centre.y, Target.ScaleHeight());
  for (int64_t dy = rows.first; dy <= rows.last; ++dy) {
    Pixel* const row = Target.WritableRow(static_cast<int>(centre.y + dy));
    const auto reach = static_cast<int>(IntegerRoot(radius * radius - dy * dy));
    const Span columns = Visible(reach, centre.x, Target.ScaleWidth());
    for (int64_t dx = columns.first; dx <= columns.last; ++dx) {
      Pixel& pixel = row[centre.x + dx];
      pixel = maps[ring_of[static_cast<size_t>(dx * dx + dy * dy)]](pixel);
    }
  }
  Target.AddDamage(Bounds(centre, radius, radius, Target));
}

/// The innermost ring is one step beyond `start`, each further ring one more.
void SoftDab(Canvas& Target, Single X, Single Y, DabSize size, const SprayColor& color, double start) {
  const auto centre = CentreOf(X, Y);
  const std::vector<int> rings = RingsOf(size);
  if (!centre || rings.empty()) return;
  std::vector<ColorMap> maps;
  maps.reserve(rings.size());
  for (size_t i = 1; i <= rings.size(); ++i) {
    const auto Position = ToInt32(start + static_cast<double>(i));
    if (!Position) return;
    maps.push_back(color.At(*Position));
  }
  PaintDisc(Target, *centre, rings, maps);
}

/// Sums of up to four pixels, 16 bits a channel.
using ChannelSums = uint64_t;
constexpr Pixel kBlackPixel = 0xFF000000;

ChannelSums Spread(Pixel pixel) {
  return (pixel & 0x00FF00FF) | static_cast<uint64_t>(pixel >> 8 & 0x00FF00FF) << 32;
}

/// A quarter of each sum, rounded to nearest, halves to even: one more is added where the quarter is odd, so
/// that only a half above an odd quarter goes up.
ChannelSums Quarter(ChannelSums sums) {
  constexpr uint64_t kOnes = 0x0001000100010001;
  return (sums + kOnes + (sums >> 2 & kOnes)) >> 2 & 0x00FF00FF00FF00FF;
}

Pixel Packed(ChannelSums channels) {
  return static_cast<Pixel>(channels | channels >> 24);
}

/// Blocks one below the other, all inside the surface. The upper half of a block is the lower half of the one
/// before, which is what that one made of it; it needn't be written only to be read again.
class BlockRun {
 public:
  /// `lower`: the lower right pixel of the first block.
  BlockRun(Pixel* lower, ptrdiff_t stride)
      : lower_(lower), stride_(stride), upper_(Spread(lower[-stride]) + Spread(lower[-stride - 1])) {}

  void Blur() {
    const ChannelSums mean = Quarter(upper_ + Spread(lower_[-1]) + Spread(lower_[0]));
    WriteUpper(Packed(mean));
    upper_ = 2 * mean;
    lower_ += stride_;
  }
  void Finish() { WriteUpper(Packed(upper_ / 2)); }

 private:
  void WriteUpper(Pixel pixel) { lower_[-stride_] = lower_[-stride_ - 1] = pixel; }

  Pixel* lower_;
  ptrdiff_t stride_;
  ChannelSums upper_;  ///< of the block's upper half
};

/// The pixels of a surface for blocks of two by two that overlap.
class BlurSurface {
 public:
  BlurSurface(Canvas& Target, const Centre& centre, int radius)
      : rows_(Target.WritableRows()),
        width_(Target.ScaleWidth()),
        height_(Target.ScaleHeight()),
        holds_dab_(centre.x > radius && centre.x + radius < width_ && centre.y > radius &&
                   centre.y + radius < height_) {}

  /// Two runs of `count` blocks in column `x`, of which the second begins below the first. They share no
  /// pixel, so where nothing is clipped they go side by side: neither has to wait for the other.
  void BlurBoth(int64_t x, int64_t first, int64_t second, int64_t count) {
    if (!holds_dab_) {
      BlurColumn(x, first, first + count - 1);
      BlurColumn(x, second, second + count - 1);
      return;
    }
    BlockRun upper(At(x, first), rows_.stride), lower(At(x, second), rows_.stride);
    for (int64_t i = 0; i < count; ++i) upper.Blur(), lower.Blur();
    upper.Finish(), lower.Finish();
  }
  /// The blocks whose lower right pixels are in column `x`, from row `first` down to `last`.
  void BlurColumn(int64_t x, int64_t first, int64_t last) {
    if (x < 0 || x > width_) return;
    first = std::max<int64_t>(first, 0);
    last = std::min<int64_t>(last, height_);
    const int64_t inner_last = x == 0 || x == width_ ? first - 1 : std::min<int64_t>(last, height_ - 1);
    if (first == 0 && first <= last) BlurEdgeBlock(x, first++);
    if (first <= inner_last) BlurInside(x, first, inner_last);
    for (int64_t y = std::max(first, inner_last + 1); y <= last; ++y) BlurEdgeBlock(x, y);
  }

 private:
  Pixel* At(int64_t x, int64_t y) const { return rows_[y] + x; }
  bool Holds(int64_t x, int64_t y) const { return x >= 0 && y >= 0 && x < width_ && y < height_; }

  void BlurInside(int64_t x, int64_t first, int64_t last) {
    BlockRun run(At(x, first), rows_.stride);
    for (int64_t y = first; y <= last; ++y) run.Blur();
    run.Finish();
  }
  void BlurEdgeBlock(int64_t x, int64_t y) {
    const std::array<Centre, 4> block{{{x, y}, {x, y - 1}, {x - 1, y - 1}, {x - 1, y}}};
    ChannelSums sums = 0;
    for (const auto& [column, row] : block)
      sums += Spread(Holds(column, row) ? *At(column, row) : kBlackPixel);
    for (const auto& [column, row] : block) {
      if (Holds(column, row)) *At(column, row) = Packed(Quarter(sums));
    }
  }

  Bitmap::Rows rows_;
  int width_, height_;
  bool holds_dab_;  ///< with all that its blocks reach
};

/// How far a disc reaches up and down from its middle row, by the distance from its middle column.
std::vector<int> ReachesOf(int radius) {
  std::vector<int> reaches;
  reaches.reserve(static_cast<size_t>(radius) + 1);
  for (int dx = 0, reach = radius; dx <= radius; ++dx) {
    while (dx * dx + reach * reach > radius * radius) --reach;
    reaches.push_back(reach);
  }
  return reaches;
}

/// The columns of a ring from the left: of each what the disc within leaves of it.
void BlurRing(BlurSurface& surface, const Centre& centre, const std::vector<int>& reaches,
              const std::vector<int>& inner) {
  const int radius = static_cast<int>(reaches.size()) - 1;
  for (int dx = -radius; dx <= radius; ++dx) {
    const auto away = static_cast<size_t>(std::abs(dx));
    const int reach = reaches[away];
    const int64_t x = centre.x + dx;
    if (away >= inner.size()) {
      surface.BlurColumn(x, centre.y - reach, centre.y + reach);
    } else if (reach > inner[away]) {
      surface.BlurBoth(x, centre.y - reach, centre.y + inner[away] + 1, reach - inner[away]);
    }
  }
}

}  // namespace

DabSize DabSizeOf(double option) {
  const int32_t Size = ToInt32(option).value_or(0);
  return {Size, ToInt32(Size / 2.0).value_or(0)};
}

SprayColor::Ramp::Ramp(int goal_channel, int32_t Length) : goal(goal_channel) {
  for (int channel = 0; channel < 256; ++channel) {
    steps[static_cast<size_t>(channel)] = RampStep(goal, channel, std::max(Length, 1));
  }
}

ColorMap::Curve SprayColor::Ramp::At(int32_t Position) const {
  ColorMap::Curve curve;
  for (size_t i = 0; i < curve.size(); ++i) {
    curve[i] = static_cast<uint8_t>(RampChannel(goal, steps[i], Position));
  }
  return curve;
}

SprayColor::SprayColor(Color Goal, int32_t Length)
    : red_(Split(Goal).red, Length),
      green_(Split(Goal).green, Length),
      blue_(Split(Goal).blue, Length),
      moves_(Length > 0),
      grey_(red_.goal == green_.goal && red_.goal == blue_.goal) {}

ColorMap SprayColor::At(int32_t Position) const {
  if (!moves_) return {Unchanged(), Unchanged(), Unchanged()};
  const ColorMap::Curve red = red_.At(Position);
  return grey_ ? ColorMap{red, red, red} : ColorMap{red, green_.At(Position), blue_.At(Position)};
}

void SprayDab(Canvas& Target, Single X, Single Y, DabSize size, Color Goal, double Pressure) {
  const auto Length = ToInt32((11 - Pressure / 10) * size.Steps);
  if (!Length) return;
  SoftDab(Target, X, Y, size, SprayColor(Goal, *Length), (10 - Pressure / 10) * size.Steps);
}

void BrightenDab(Canvas& Target, Single X, Single Y, DabSize size, bool Darken, double Pressure) {
  const auto Length = ToInt32((101 - Pressure) * size.Steps);
  if (!Length) return;
  SoftDab(Target, X, Y, size, BrightenColor(*Length, Darken), (100 - Pressure) * size.Steps);
}

/// A block reads what the ones before it have written, so the order tells: from ring to ring, column by
/// column from the left, down each column.
void BlurDab(Canvas& Target, Single X, Single Y, DabSize size) {
  const auto centre = CentreOf(X, Y);
  const std::vector<int> rings = RingsOf(size);
  if (!centre || rings.empty() || Target.Image().IsEmpty()) return;
  BlurSurface surface(Target, *centre, rings.back());
  std::vector<int> inner;
  for (const int ring : rings) {
    std::vector<int> reaches = ReachesOf(ring);
    BlurRing(surface, *centre, reaches, inner);
    inner = std::move(reaches);
  }
  Target.AddDamage(Bounds(*centre, rings.back() + 1, rings.back(), Target));
}

}  // namespace zelvane
