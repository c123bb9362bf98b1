#pragma once

#include <string>
#include <vector>

#include "surface/forms/controls/Control.h"
#include "surface/raster/Canvas.h"

namespace zelvane {

class Overlay;

/// A picture seen at a whole zoom multiple, as a framed surface of the full zoomed size would show it: unit u
/// shows the picture's pixel floor(u / multiple). It holds no pixels of its own: what is in view is painted
/// from the picture, so its memory doesn't grow with the zoom.
///
/// `Width` = `ScaleWidth` + 2, likewise `Height`; a frame of one pixel runs round the picture. Overlays that
/// have it as parent are shown above the picture and never enter it.
class PictureView : public Control {
 public:
  PictureView(Control& parent, const std::string& name);
  ~PictureView() override;

  /// Whole numbers: a fraction is rounded, halves to even.
  void SetWidth(Single width) override { Control::SetWidth(Whole(width)); }
  void SetHeight(Single height) override { Control::SetHeight(Whole(height)); }
  Single ScaleWidth() const { return Width() - 2; }
  Single ScaleHeight() const { return Height() - 2; }

  /// The picture to show, which outlives the view, and the zoom multiple (1 and up). Refreshes nothing.
  void SetSource(const Canvas* source, int multiple);
  int Multiple() const { return multiple_; }

  /// Shows all that is in view anew.
  void Refresh();
  /// Shows the rectangle anew, in units.
  void Refresh(const Rect& units);

 private:
  friend class Overlay;
  class View;
  static Single Whole(Single size) { return static_cast<Single>(RoundHalfEven(size)); }
  const Canvas* source_ = nullptr;
  int multiple_ = 1;
  std::vector<Overlay*> overlays_;

 protected:
  int FrameWidth() const override { return 1; }
};

}  // namespace zelvane
