#include <cstring>
#include <vector>

#include "surface/raster/Canvas.h"
#include "surface/raster/Spans.h"

/// Scaling of rectangles. Which source pixels a target pixel shows follows from the whole rectangles,
/// wherever they lie; only then is clipped, so a cut-out of the result is the result of the cut-out.
namespace zelvane {
namespace {

/// The source pixels that one target pixel shows along one axis: `first` and `last` by the part of them that
/// it covers, those between whole. Parts are whole multiples of one target-th of a source pixel.
struct Cover {
  int first, last;
  double first_part, last_part;
};

/// The target pixels of one axis that are visible and have something to show.
struct Axis {
  int begin = 0;
  std::vector<Cover> covers;
  double whole_part = 1;

  int Count() const { return static_cast<int>(covers.size()); }
  int End() const { return begin + Count(); }
};

/// Target pixel d covers the source from d * source / target to (d + 1) * source / target. What lies beyond
/// the source surface takes no part.
bool Shrunk(int64_t d, int64_t source, int64_t target, Span available, int64_t origin, Cover& cover) {
  const int64_t begin = d * source, end = begin + source;
  const Span pixels = Span{begin / target, (end - 1) / target}.Intersected(available);
  if (pixels.IsEmpty()) return false;
  const auto part = [&](int64_t pixel) {
    return static_cast<double>(std::min(end, (pixel + 1) * target) - std::max(begin, pixel * target));
  };
  cover = {static_cast<int>(pixels.first + origin), static_cast<int>(pixels.last + origin),
           part(pixels.first), pixels.last > pixels.first ? part(pixels.last) : 0};
  return true;
}

bool Repeated(int64_t d, int64_t source, int64_t target, Span available, int64_t origin, Cover& cover) {
  const int64_t pixel = d * source / target;
  if (pixel < available.first || pixel > available.last) return false;
  const int place = static_cast<int>(pixel + origin);
  cover = {place, place, 1, 0};
  return true;
}

Axis MapAxis(int64_t to, int64_t target, int target_size, int64_t from, int64_t source, int source_size) {
  Axis axis;
  const bool shrinks = source > target;
  if (shrinks) axis.whole_part = static_cast<double>(target);
  const Span visible = Span{0, target - 1}.Intersected({-to, target_size - 1 - to});
  const Span available = Span{0, source - 1}.Intersected({-from, source_size - 1 - from});
  for (int64_t d = visible.first; d <= visible.last; ++d) {
    Cover cover;
    if (!(shrinks ? Shrunk : Repeated)(d, source, target, available, from, cover)) continue;
    if (axis.covers.empty()) axis.begin = static_cast<int>(to + d);
    axis.covers.push_back(cover);
  }
  return axis;
}

void RepeatPixels(Bitmap& target, const Bitmap& source, const Axis& columns, const Axis& rows) {
  const size_t bytes = columns.covers.size() * sizeof(Pixel);
  const Pixel* expanded = nullptr;
  int expanded_from = -1;
  for (int i = 0; i < rows.Count(); ++i) {
    Pixel* const row = target.WritableRow(rows.begin + i) + columns.begin;
    const int from = rows.covers[static_cast<size_t>(i)].first;
    if (from == expanded_from) {
      std::memcpy(row, expanded, bytes);
      continue;
    }
    const Pixel* const pixels = source.Row(from);
    std::transform(columns.covers.begin(), columns.covers.end(), row,
                   [pixels](const Cover& cover) { return pixels[cover.first]; });
    expanded = row;
    expanded_from = from;
  }
}

/// Weighted sums of the channels. They stay exact in doubles (below 2^53) as long as the rectangles are no
/// larger than a surface can be.
struct Sums {
  double red = 0, green = 0, blue = 0;

  void Add(Pixel pixel, double weight) {
    red += weight * (pixel >> 16 & 0xFF);
    green += weight * (pixel >> 8 & 0xFF);
    blue += weight * (pixel & 0xFF);
  }
  void Add(const Sums& sums, double weight) {
    red += weight * sums.red;
    green += weight * sums.green;
    blue += weight * sums.blue;
  }
  /// Rounded to nearest, halves up.
  Pixel Mean(double weight) const {
    const auto rounded = [weight](double sum) { return static_cast<Pixel>(sum / weight + 0.5); };
    return 0xFF000000 | rounded(red) << 16 | rounded(green) << 8 | rounded(blue);
  }
};

double Weight(const Cover& cover, double whole_part) {
  return cover.first_part + cover.last_part + whole_part * std::max(cover.last - cover.first - 1, 0);
}

Sums RowSums(const Pixel* row, const Cover& cover, double whole_part) {
  uint32_t red = 0, green = 0, blue = 0;
  for (int x = cover.first + 1; x < cover.last; ++x) {
    red += row[x] >> 16 & 0xFF;
    green += row[x] >> 8 & 0xFF;
    blue += row[x] & 0xFF;
  }
  Sums sums{red * whole_part, green * whole_part, blue * whole_part};
  sums.Add(row[cover.first], cover.first_part);
  if (cover.last > cover.first) sums.Add(row[cover.last], cover.last_part);
  return sums;
}

/// Averages row by row: each source row is summed up into the target's columns once for every target row that
/// it has a part in.
void AveragePixels(Bitmap& target, const Bitmap& source, const Axis& columns, const Axis& rows) {
  std::vector<Sums> sums(columns.covers.size());
  for (int i = 0; i < rows.Count(); ++i) {
    const Cover& lines = rows.covers[static_cast<size_t>(i)];
    std::fill(sums.begin(), sums.end(), Sums{});
    for (int y = lines.first; y <= lines.last; ++y) {
      const double part = y == lines.first  ? lines.first_part
                          : y == lines.last ? lines.last_part
                                            : rows.whole_part;
      for (size_t x = 0; x < sums.size(); ++x) {
        sums[x].Add(RowSums(source.Row(y), columns.covers[x], columns.whole_part), part);
      }
    }
    const double height = Weight(lines, rows.whole_part);
    Pixel* const row = target.WritableRow(rows.begin + i) + columns.begin;
    for (size_t x = 0; x < sums.size(); ++x) {
      row[x] = sums[x].Mean(height * Weight(columns.covers[x], columns.whole_part));
    }
  }
}

}  // namespace

void Canvas::StretchBlt(int32_t x, int32_t y, int32_t width, int32_t height, const Canvas& source,
                        int32_t source_x, int32_t source_y, int32_t source_width, int32_t source_height) {
  if (width <= 0 || height <= 0 || source_width <= 0 || source_height <= 0) return;
  if (width == source_width && height == source_height) {
    BitBlt(x, y, width, height, source, source_x, source_y);
    return;
  }
  const Axis columns = MapAxis(x, width, ScaleWidth(), source_x, source_width, source.ScaleWidth());
  const Axis rows = MapAxis(y, height, ScaleHeight(), source_y, source_height, source.ScaleHeight());
  if (columns.covers.empty() || rows.covers.empty()) return;
  const Bitmap from = source.image_;  // within one surface: what it held before, as writing parts the two
  if (source_width <= width && source_height <= height) {
    RepeatPixels(image_, from, columns, rows);
  } else {
    AveragePixels(image_, from, columns, rows);
  }
  AddDamage({columns.begin, rows.begin, columns.End(), rows.End()});
}

}  // namespace zelvane
