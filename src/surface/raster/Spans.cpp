#include "surface/raster/Spans.h"

namespace zelvane {

void SpanPainter::Paint(int64_t y, const Span& span) {
  const Span visible = span.Intersected({0, Width() - 1});
  if (visible.IsEmpty() || y < 0 || y >= Height()) return;
  const int row = static_cast<int>(y), first = static_cast<int>(visible.first),
            last = static_cast<int>(visible.last);
  Pixel* const pixels = target_.WritableRow(row);
  if (inverts_) {
    for (int x = first; x <= last; ++x) pixels[x] ^= 0x00FFFFFF;
  } else {
    std::fill(pixels + first, pixels + last + 1, pixel_);
  }
  left_ = std::min(left_, first);
  right_ = std::max(right_, last + 1);
  top_ = std::min(top_, row);
  bottom_ = std::max(bottom_, row + 1);
}

Rect SpanPainter::Touched() const {
  if (right_ < 0) return {};
  return {left_, top_, right_, bottom_};
}

}  // namespace zelvane
