#include <array>
#include <utility>

#include "effects/pixels/Effect.h"
#include "effects/pixels/Pixels.h"

namespace zelvane {
namespace {

/// The middle one of nine values, by the fewest exchanges that find it (J. L. Smith, 1996).
uint8_t Median(std::array<uint8_t, 9> v) {
  const auto order = [&v](size_t a, size_t b) {
    const uint8_t lower = std::min(v[a], v[b]), higher = std::max(v[a], v[b]);
    v[a] = lower;
    v[b] = higher;
  };
  order(1, 2), order(4, 5), order(7, 8), order(0, 1), order(3, 4), order(6, 7), order(1, 2);
  order(4, 5), order(7, 8), order(0, 3), order(5, 8), order(4, 7), order(3, 6), order(1, 4);
  order(2, 5), order(4, 7), order(4, 2), order(6, 4), order(4, 2);
  return v[4];
}

/// Each channel of each pixel becomes the median of the nine around it.
Bitmap Once(const Bitmap& picture, Work& work) {
  const int last = (picture.Width() - 1) * kBytesPerPixel;
  Bitmap result = Bitmap::Uninitialised(picture.Width(), picture.Height());
  const Bitmap::Rows rows = result.WritableRows();
  ForBands(picture.Height(), work, [&](int first, int end) {
    for (int y = first; y < end; ++y) {
      const auto bytes = [&](int row) { return BytesOf(picture.Row(Within(row, picture.Height()))); };
      const uint8_t *const a = bytes(y - 1), *const b = bytes(y), *const c = bytes(y + 1);
      uint8_t* const to = BytesOf(rows[y]);
      const auto put = [=](int l, int m, int r) {
        to[m] = Median({a[l], a[m], a[r], b[l], b[m], b[r], c[l], c[m], c[r]});
      };
      for (int i = kBytesPerPixel; i < last; ++i) put(i - kBytesPerPixel, i, i + kBytesPerPixel);
      for (int i = 0; i < kBytesPerPixel; ++i) {
        put(i, i, std::min(i + kBytesPerPixel, last + i));
        put(std::max(last - kBytesPerPixel, 0) + i, last + i, last + i);
      }
    }
  });
  return result;
}

Bitmap Apply(const Bitmap& picture, const Values& values, Work& work) {
  const int times = static_cast<int>(values[0]);
  work.SetPasses(std::max(times, 1));
  Bitmap result = picture;
  for (int i = 0; i < times && !work.IsStopped(); ++i) result = Once(result, work);
  return result;
}

}  // namespace

Effect Despeckle() {
  return {"Despeckle", {Setting::Slider("Strength", 0, 10, 1)}, Apply};
}

}  // namespace zelvane
