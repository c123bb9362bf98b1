#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "surface/raster/Color.h"
#include "surface/raster/FailingStep.h"
#include "surface/raster/Rect.h"

namespace zelvane {

inline constexpr int kLargestSide = 32767;

/// Pixels in rows from the top, one behind the other without a gap. Copies share their pixels until one of
/// them is written to, so handing a picture on costs nothing.
class Bitmap {
 public:
  Bitmap() = default;
  Bitmap(const Bitmap&) = default;
  Bitmap& operator=(const Bitmap&) = default;
  /// Leaves `other` empty.
  Bitmap(Bitmap&& other) noexcept { Swap(other); }
  Bitmap& operator=(Bitmap&& other) noexcept {
    Bitmap(std::move(other)).Swap(*this);
    return *this;
  }
  /// Throws `SurfaceTooLarge`. Sides of 0 or less give an empty bitmap.
  Bitmap(int width, int height, Pixel fill);
  /// The same with whatever the memory holds, for a caller that writes every pixel (top byte 0xFF).
  static Bitmap Uninitialised(int width, int height);

  int Width() const { return width_; }
  int Height() const { return height_; }
  bool IsEmpty() const { return width_ == 0 || height_ == 0; }
  Rect Bounds() const { return {0, 0, width_, height_}; }

  /// `y` in 0 to Height() - 1.
  const Pixel* Row(int y) const { return pixels_ + static_cast<ptrdiff_t>(y) * width_; }
  /// For writing; gives this bitmap pixels of its own first where they are shared.
  Pixel* WritableRow(int y) {
    Detach();
    return pixels_ + static_cast<ptrdiff_t>(y) * width_;
  }
  /// All rows for writing.
  struct Rows {
    Pixel* first;
    ptrdiff_t stride;
    Pixel* operator[](int64_t y) const { return first + y * stride; }
  };
  Rows WritableRows() {
    Detach();
    return {pixels_, width_};
  }
  /// Throws `SurfaceTooLarge` where a copy is needed and memory doesn't hold it.
  void Detach() {
    if (owner_.use_count() > 1) CopyPixels();
  }
  /// `Detach` for a caller that writes every pixel next: what shared pixels hold isn't copied, only let go.
  void DetachToOverwrite();
  void Swap(Bitmap& other) noexcept;

 private:
  Bitmap(int width, int height);
  void CopyPixels();

  std::shared_ptr<void> owner_;
  Pixel* pixels_ = nullptr;
  int width_ = 0, height_ = 0;
};

/// The same size and the same pixels.
bool operator==(const Bitmap& a, const Bitmap& b);

}  // namespace zelvane
