#include "effects/pixels/Effect.h"
#include "effects/pixels/Pixels.h"

namespace zelvane {
namespace {

inline void Order(int& a, int& b) {
  const int lower = std::min(a, b);
  b = std::max(a, b);
  a = lower;
}

/// Orders three values.
inline void Order(int& a, int& b, int& c) {
  Order(b, c);
  Order(a, b);
  Order(b, c);
}

/// The middle one of nine values: that of the largest of the three least, the middle of the three middle ones
/// and the least of the three largest (J. L. Smith, 1996). Without a branch, so that many go at a time.
inline int Median(int a, int b, int c, int d, int e, int f, int g, int h, int i) {
  Order(a, b, c);
  Order(d, e, f);
  Order(g, h, i);
  int least = std::max(std::max(a, d), g), most = std::min(std::min(c, f), i);
  Order(b, e, h);
  Order(least, e, most);
  return e;
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
        to[m] = static_cast<uint8_t>(Median(a[l], a[m], a[r], b[l], b[m], b[r], c[l], c[m], c[r]));
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
