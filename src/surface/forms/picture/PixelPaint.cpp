#include "surface/forms/picture/PixelPaint.h"

#include <QImage>
#include <QRegion>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace zelvane {
namespace {

/// Pixels expanded at a time: 1 MB, which the processor's cache holds.
constexpr int kBandPixels = 1 << 18;

QImage Wrapped(const Pixel* pixels, int width, int height) {
  return QImage(reinterpret_cast<const uchar*>(pixels), width, height, QImage::Format_RGB32);
}

/// Expands pixels into bands of rows that are painted one after the other.
class Expander {
 public:
  Expander(const DeviceGrid& grid, const Bitmap& bitmap, int multiple, const Rect& part)
      : grid_(grid), bitmap_(bitmap), multiple_(multiple), part_(part), first_(part.left / multiple) {
    const int last = (part.right - 1) / multiple;
    for (int x = first_; x <= last + 1; ++x) {
      edges_.push_back(grid.X(std::clamp(x * multiple, part.left, part.right)));
    }
    left_ = edges_.front();
    width_ = edges_.back() - left_;
    top_ = next_ = grid.Y(part.top);
  }

  void Paint() {
    if (width_ <= 0) return;
    band_rows_ = std::min(std::max(1, kBandPixels / width_), grid_.Y(part_.bottom) - top_);
    if (band_rows_ <= 0) return;
    const size_t needed = static_cast<size_t>(width_) * static_cast<size_t>(band_rows_);
    if (Scratch().size() < needed) Scratch().resize(needed);
    line_.resize(static_cast<size_t>(width_));
    for (int y = part_.top / multiple_; y <= (part_.bottom - 1) / multiple_; ++y) {
      const int bottom = grid_.Y(std::clamp((y + 1) * multiple_, part_.top, part_.bottom));
      if (bottom == next_) continue;
      Expand(bitmap_.Row(y) + first_);
      for (; next_ < bottom; ++next_) Add();
    }
    Flush();
  }

 private:
  /// Kept from one painting to the next; the toolkit paints on one thread.
  static std::vector<Pixel>& Scratch() {
    static std::vector<Pixel> scratch;
    return scratch;
  }

  void Expand(const Pixel* source) {
    Pixel* target = line_.data();
    for (size_t i = 0; i + 1 < edges_.size(); ++i) {
      target = std::fill_n(target, edges_[i + 1] - edges_[i], source[i]);
    }
  }

  void Add() {
    if (next_ - top_ == band_rows_) Flush();
    std::copy(line_.begin(), line_.end(), Scratch().begin() + static_cast<ptrdiff_t>(next_ - top_) * width_);
  }

  void Flush() {
    grid_.Painter().drawImage(QPoint(left_, top_), Wrapped(Scratch().data(), width_, next_ - top_));
    top_ = next_;
  }

  const DeviceGrid& grid_;
  const Bitmap& bitmap_;
  int multiple_;
  Rect part_;
  int first_;
  /// Where each pixel's columns begin, and where the last one's end.
  std::vector<int> edges_;
  std::vector<Pixel> line_;
  int left_ = 0, width_ = 0, band_rows_ = 0;
  /// The first row of the band in work and the one to come.
  int top_ = 0, next_ = 0;
};

}  // namespace

DeviceGrid::Origin::Origin(double place, double scale, int inset)
    : whole(static_cast<int>(std::lround(place / scale))), rest(place - whole * scale) {
  constexpr double kNoise = 1e-6;
  if (std::abs(rest) < kNoise) rest = 0;
  whole += inset;
}

int DeviceGrid::Origin::Scaled(int unit, double scale) const {
  return static_cast<int>(std::floor(scale * (unit + whole) + rest + 0.5));
}

void NoteForPainting(QWidget& widget, const QRegion& part) {
  const double ratio = widget.devicePixelRatioF();
  if (ratio == std::floor(ratio)) return widget.update(part);
  QRegion wider;
  for (const QRect& piece : part) wider += piece.adjusted(-1, -1, 1, 1);
  widget.update(wider);
}

DeviceGrid::DeviceGrid(QPainter& painter, int inset)
    : painter_(painter),
      scale_(painter.deviceTransform().m11()),
      left_(painter.deviceTransform().dx(), scale_, inset),
      top_(painter.deviceTransform().dy(), scale_, inset) {
  painter.save();
  painter.setWorldTransform(painter.deviceTransform().inverted(), true);
}

void PaintPixels(const DeviceGrid& grid, const Bitmap& bitmap, int multiple, const Rect& part, Pixel beyond) {
  const Rect whole{0, 0, bitmap.Width() * multiple, bitmap.Height() * multiple};
  const Rect inside = part.Intersected(whole);
  const auto fill = [&](const Rect& rest) {
    if (!rest.IsEmpty()) grid.Painter().fillRect(grid.Covered(rest), QColor::fromRgb(beyond));
  };
  if (inside.IsEmpty()) return fill(part);
  fill({inside.right, part.top, part.right, inside.bottom});
  fill({part.left, inside.bottom, part.right, part.bottom});
  if (grid.Scale() == 1 && multiple == 1) {
    const QImage pixels = Wrapped(bitmap.Row(0), bitmap.Width(), bitmap.Height());
    grid.Painter().drawImage(grid.Covered(inside), pixels,
                             QRect(inside.left, inside.top, inside.Width(), inside.Height()));
  } else {
    Expander(grid, bitmap, multiple, inside).Paint();
  }
}

void PaintFrame(const DeviceGrid& grid, int inside_width, int inside_height) {
  const QColor shadow = QColor::fromRgb(ToPixel(SystemColor::ButtonShadow));
  const int right = inside_width, bottom = inside_height;
  for (const Rect& edge : {Rect{-1, -1, right + 1, 0}, Rect{-1, bottom, right + 1, bottom + 1},
                           Rect{-1, 0, 0, bottom}, Rect{right, 0, right + 1, bottom}}) {
    grid.Painter().fillRect(grid.Covered(edge), shadow);
  }
}

}  // namespace zelvane
