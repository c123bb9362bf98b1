#include <cstring>
#include <vector>

#include "surface/raster/Canvas.h"
#include "surface/raster/Spans.h"

namespace zelvane {
namespace {

/// What both surfaces hold of a transfer along one axis.
struct Overlap {
  int to = 0, from = 0, count = 0;
};

Overlap Clipped(int64_t to, int64_t from, int64_t count, int target_size, int source_size) {
  const int64_t before = std::max({-to, -from, int64_t{0}});
  const int64_t end = std::min({count, target_size - to, source_size - from});
  if (end <= before) return {};
  return {static_cast<int>(to + before), static_cast<int>(from + before), static_cast<int>(end - before)};
}

/// `row` may overlap `source`, hence the copy through `scratch`.
template <class Operation>
void CombineRow(Pixel* row, const Pixel* source, std::vector<Pixel>& scratch, Operation operation) {
  std::copy_n(source, scratch.size(), scratch.begin());
  for (size_t x = 0; x < scratch.size(); ++x) row[x] = operation(row[x], scratch[x]);
}

void CombineRow(Pixel* row, const Pixel* source, std::vector<Pixel>& scratch, RasterOp op) {
  constexpr Pixel kOpaque = 0xFF000000;
  switch (op) {
    case RasterOp::Copy:
      std::memmove(row, source, scratch.size() * sizeof(Pixel));
      break;
    case RasterOp::And:
      CombineRow(row, source, scratch, [](Pixel a, Pixel b) { return (a & b) | kOpaque; });
      break;
    case RasterOp::Xor:
      CombineRow(row, source, scratch, [](Pixel a, Pixel b) { return (a ^ b) | kOpaque; });
      break;
  }
}

/// All columns of both bitmaps are copied.
bool IsOneBlock(const Bitmap& target, const Bitmap& source, int columns) {
  return target.Width() == columns && source.Width() == columns;
}

}  // namespace

void Canvas::BitBlt(int32_t x, int32_t y, int32_t width, int32_t height, const Canvas& source,
                    int32_t source_x, int32_t source_y, RasterOp op) {
  const Overlap columns = Clipped(x, source_x, width, ScaleWidth(), source.ScaleWidth());
  const Overlap rows = Clipped(y, source_y, height, ScaleHeight(), source.ScaleHeight());
  if (columns.count == 0 || rows.count == 0) return;
  const Rect area{columns.to, rows.to, columns.to + columns.count, rows.to + rows.count};
  if (op == RasterOp::Copy && &source != this && area == image_.Bounds()) image_.DetachToOverwrite();
  Pixel* const to = image_.WritableRow(rows.to);
  const Pixel* const from = source.image_.Row(rows.from);
  AddDamage(area);
  if (op == RasterOp::Copy && IsOneBlock(image_, source.image_, columns.count)) {
    std::memmove(to, from,
                 sizeof(Pixel) * static_cast<size_t>(columns.count) * static_cast<size_t>(rows.count));
    return;
  }
  std::vector<Pixel> scratch(static_cast<size_t>(columns.count));
  const bool upwards = rows.to > rows.from;  // within one surface a row is read before it is written over
  for (int i = 0; i < rows.count; ++i) {
    const ptrdiff_t row = upwards ? rows.count - 1 - i : i;
    CombineRow(to + row * image_.Width() + columns.to, from + row * source.image_.Width() + columns.from,
               scratch, op);
  }
}

}  // namespace zelvane
