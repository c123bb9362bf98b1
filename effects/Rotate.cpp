#include <cmath>
#include <numbers>

#include "effects/pixels/Effect.h"
#include "effects/pixels/Pixels.h"

namespace zelvane {
namespace {

/// Clockwise, by so many right angles, 0 to 3.
Bitmap Turned(const Bitmap& picture, int turns, Work& work) {
  const int width = picture.Width(), height = picture.Height();
  const bool is_upright = turns % 2 == 0;
  Bitmap result = is_upright ? Bitmap::Uninitialised(width, height) : Bitmap::Uninitialised(height, width);
  const Bitmap::Rows rows = result.WritableRows();
  const Pixel* const pixels = picture.Row(0);
  // From one target pixel to its right neighbour the source goes this far.
  const ptrdiff_t step = std::array<ptrdiff_t, 4>{1, -width, -1, width}[static_cast<size_t>(turns)];
  constexpr int kTile = 32;  // what a column of it touches stays in the cache
  ForBands(result.Height(), work, [&](int first, int end) {
    for (int left = 0; left < result.Width(); left += kTile) {
      const int right = std::min(left + kTile, result.Width());
      for (int y = first; y < end; ++y) {
        const std::array<ptrdiff_t, 4> starts{ptrdiff_t{y} * width, ptrdiff_t{height - 1} * width + y,
                                              ptrdiff_t{height - 1 - y} * width + width - 1, width - 1 - y};
        const Pixel* from = pixels + starts[static_cast<size_t>(turns)] + left * step;
        for (int x = left; x < right; ++x, from += step) rows[y][x] = *from;
      }
    }
  });
  return result;
}

/// Weights of four neighbouring samples for a place `t` behind the second (Catmull and Rom's spline).
std::array<float, 4> Weights(float t) {
  return {((2 - t) * t - 1) * t / 2, ((3 * t - 5) * t * t + 2) / 2, ((4 - 3 * t) * t + 1) * t / 2,
          (t - 1) * t * t / 2};
}

/// The picture on an endless ground.
class Ground {
 public:
  Ground(const Bitmap& picture, Pixel colour) : picture_(picture), colour_(colour) {}

  /// The colour at a place between pixels, whose middles lie at whole numbers.
  Pixel At(float x, float y) const {
    const float left = std::floor(x), top = std::floor(y);
    const int column = static_cast<int>(left) - 1, row = static_cast<int>(top) - 1;
    if (column <= -4 || row <= -4 || column >= picture_.Width() || row >= picture_.Height()) return colour_;
    const std::array<float, 4> across = Weights(x - left), down = Weights(y - top);
    std::array<float, 4> sum{};
    Pixel edge[4];
    for (int j = 0; j < 4; ++j) {
      const auto* const bytes = BytesOf(RowOf(column, row + j, edge));
      std::array<float, 4> blend{};
      for (size_t i = 0; i < 4; ++i) {
        for (size_t c = 0; c < 4; ++c) blend[c] += across[i] * static_cast<float>(bytes[4 * i + c]);
      }
      for (size_t c = 0; c < 4; ++c) sum[c] += down[static_cast<size_t>(j)] * blend[c];
    }
    return Packed(sum[2], sum[1], sum[0]);
  }

 private:
  /// Four pixels of a row, put together in `edge` where some lie beyond the picture.
  const Pixel* RowOf(int column, int row, Pixel* edge) const {
    const bool is_beyond = row < 0 || row >= picture_.Height();
    if (!is_beyond && column >= 0 && column + 4 <= picture_.Width()) return picture_.Row(row) + column;
    for (int i = 0; i < 4; ++i) {
      const int x = column + i;
      edge[i] = is_beyond || x < 0 || x >= picture_.Width() ? colour_ : picture_.Row(row)[x];
    }
    return edge;
  }

  const Bitmap& picture_;
  Pixel colour_;
};

/// Clockwise round the middle, onto a picture that holds all of it.
Bitmap Slanted(const Bitmap& picture, double degrees, Pixel colour, Work& work) {
  const double angle = degrees * std::numbers::pi / 180, sine = std::sin(angle), cosine = std::cos(angle);
  // A hair less than a whole pixel isn't worth one more.
  const auto extent = [&](double a, double b) {
    return static_cast<int>(std::ceil(picture.Width() * std::abs(a) + picture.Height() * std::abs(b) - 1e-6));
  };
  Bitmap result = Bitmap::Uninitialised(extent(cosine, sine), extent(sine, cosine));
  const Bitmap::Rows rows = result.WritableRows();
  const Ground ground(picture, colour);
  const double middle_x = (picture.Width() - 1) / 2.0, middle_y = (picture.Height() - 1) / 2.0;
  ForBands(result.Height(), work, [&](int first, int end) {
    for (int y = first; y < end; ++y) {
      const double down = y - (result.Height() - 1) / 2.0;
      for (int x = 0; x < result.Width(); ++x) {
        const double across = x - (result.Width() - 1) / 2.0;
        rows[y][x] = ground.At(static_cast<float>(middle_x + across * cosine + down * sine),
                               static_cast<float>(middle_y - across * sine + down * cosine));
      }
    }
  });
  return result;
}

Bitmap Apply(const Bitmap& picture, const Values& values, Work& work) {
  const double degrees = values[0] * 90 + values[1], turns = std::round(degrees / 90);
  if (degrees != turns * 90) return Slanted(picture, degrees, kOpaque | static_cast<Pixel>(values[2]), work);
  return Turned(picture, (static_cast<int>(turns) + 8) % 4, work);
}

}  // namespace

Effect Rotate() {
  return {"Rotate",
          {Setting::Choice("Turn", {"None", "Right", "Half", "Left"}),
           Setting::Slider("Angle", -180, 180, 0, "°", 0.1), Setting::Colour("Background", 0xFFFFFF)},
          Apply};
}

}  // namespace zelvane
