#include "surface/raster/Canvas.h"

#include <cstring>
#include <utility>

namespace zelvane {

void Canvas::Resize(int width, int height) {
  const bool empty = width <= 0 || height <= 0;
  if (empty ? image_.IsEmpty() : width == ScaleWidth() && height == ScaleHeight()) return;
  const Bitmap& old = image_;
  Bitmap image = Bitmap::Uninitialised(width, height);
  const int kept_columns = std::min(image.Width(), old.Width()),
            kept_rows = std::min(image.Height(), old.Height());
  const Pixel background = ToPixel(back_color_);
  for (int y = 0; y < image.Height(); ++y) {
    Pixel* const row = image.WritableRow(y);
    const int kept = y < kept_rows ? kept_columns : 0;
    if (kept > 0) std::copy_n(old.Row(y), kept, row);
    std::fill(row + kept, row + image.Width(), background);
  }
  SetImage(std::move(image));
}

void Canvas::ResizeToOverwrite(int width, int height) {
  if (width == ScaleWidth() && height == ScaleHeight()) return;
  SetImage({});
  SetImage(Bitmap::Uninitialised(width, height));
}

void Canvas::SetImage(Bitmap image) {
  const bool resized = image.Width() != ScaleWidth() || image.Height() != ScaleHeight();
  image_ = std::move(image);
  damage_ = image_.Bounds();
  if (resized) SizeChanged();
}

void Canvas::ExchangePixels(Canvas& other) {
  if (&other == this) return;
  const Rect common = image_.Bounds().Intersected(other.image_.Bounds());
  if (common == image_.Bounds() && common == other.image_.Bounds()) {
    image_.Swap(other.image_);
  } else {
    for (int y = 0; y < common.bottom; ++y) {
      Pixel* const row = image_.WritableRow(y);
      std::swap_ranges(row, row + common.right, other.image_.WritableRow(y));
    }
  }
  AddDamage(common);
  other.AddDamage(common);
}

void Canvas::SetBackColor(Color color) {
  back_color_ = color;
  Clear();
}

void Canvas::Cls() {
  Clear();
  current_x_ = current_y_ = 0;
}

void Canvas::Clear() {
  const Pixel background = ToPixel(back_color_);
  image_.DetachToOverwrite();
  for (int y = 0; y < ScaleHeight(); ++y) std::fill_n(image_.WritableRow(y), ScaleWidth(), background);
  AddDamage(image_.Bounds());
}

Color Canvas::Point(Single x, Single y) const {
  const auto column = ToInt32(x), row = ToInt32(y);
  return column && row ? GetPixel(*column, *row) : kNoColor;
}

Color Canvas::GetPixel(int32_t x, int32_t y) const {
  return Holds(x, y) ? ToColor(image_.Row(y)[x]) : kNoColor;
}

void Canvas::SetPixelV(int32_t x, int32_t y, Color color) {
  if (!Holds(x, y)) return;
  image_.WritableRow(y)[x] = ToPixel(color);
  AddDamage({x, y, x + 1, y + 1});
}

void Canvas::InvertRect(int32_t left, int32_t top, int32_t right, int32_t bottom) {
  const Rect area = Rect{left, top, right, bottom}.Intersected(image_.Bounds());
  if (area.IsEmpty()) return;
  for (int y = area.top; y < area.bottom; ++y) {
    Pixel* const row = image_.WritableRow(y);
    for (int x = area.left; x < area.right; ++x) row[x] ^= 0x00FFFFFF;
  }
  AddDamage(area);
}

Rect Canvas::TakeDamage() {
  return std::exchange(damage_, Rect{});
}

void Canvas::AddDamage(const Rect& rect) {
  damage_ = damage_.United(rect.Intersected(image_.Bounds()));
}

bool Canvas::Holds(int32_t x, int32_t y) const {
  return x >= 0 && y >= 0 && x < ScaleWidth() && y < ScaleHeight();
}

int Canvas::PenWidth() const {
  if (!(draw_width_ >= 1)) return 1;
  return static_cast<int>(std::min(RoundHalfEven(draw_width_), 32767.0));
}

}  // namespace zelvane
