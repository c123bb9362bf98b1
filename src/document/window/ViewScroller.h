#pragma once

#include <optional>

#include "document/layers/ImageDocument.h"

namespace zelvane {

/// How a person moves the picture in its window: by keys, by dragging the view, by a tool dragged beyond the
/// edge. Places are units of the view.
class ViewScroller {
 public:
  explicit ViewScroller(ImageDocument& document) : document_(document) {}

  /// Where the pointer is. On the screen it stays there while the picture moves beneath it.
  void PutPointer(Single X, Single Y);
  /// The unit that is under the pointer now.
  Single PointerX() const { return pointer_.x - kFrame - document_.PaintArea.Left(); }
  Single PointerY() const { return pointer_.y - kFrame - document_.PaintArea.Top(); }

  /// Right and down. False where there was no picture left that way.
  bool ScrollBy(Single across, Single down);
  /// Arrows go a small step, Page Up and Page Down a whole view, Home and End to the first and to the last
  /// corner. False for other keys too.
  bool ScrollByKey(int16_t KeyCode);
  /// As little as brings the place into view, its left and its top before all.
  void ScrollInto(const Rect& units);
  bool IsPointerBeyondView() const;
  /// Scrolls towards a pointer beyond the edge of the view, the quicker the farther it is. False where no
  /// picture is left that way.
  bool ScrollToPointer();
  /// After a change of zoom: puts the pixel that (X, Y) showed before it under the pointer.
  void KeepPixel(int multiple_before, Single X, Single Y);

  /// From `Grab` to `LetGo` the picture goes where the pointer goes.
  void Grab();
  void LetGo() { grabbed_.reset(); }
  void Drag();

 private:
  static constexpr Single kFrame = 1;
  struct Place {
    Single x = 0, y = 0;
  };
  ImageDocument& document_;
  Place pointer_;                 ///< in the viewport
  std::optional<Place> grabbed_;  ///< the unit that the pointer holds
};

}  // namespace zelvane
