#pragma once

#include <algorithm>

namespace zelvane {

/// Whole pixels, left and top included, right and bottom not.
struct Rect {
  int left = 0, top = 0, right = 0, bottom = 0;

  bool IsEmpty() const { return right <= left || bottom <= top; }
  int Width() const { return right - left; }
  int Height() const { return bottom - top; }
  Rect Intersected(const Rect& other) const {
    return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
            std::min(bottom, other.bottom)};
  }
  /// The smallest rectangle round both; an empty one adds nothing.
  Rect United(const Rect& other) const {
    if (IsEmpty()) return other;
    if (other.IsEmpty()) return *this;
    return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
            std::max(bottom, other.bottom)};
  }
  friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace zelvane
