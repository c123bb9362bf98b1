#pragma once

#include <functional>
#include <string>

#include "surface/forms/controls/Control.h"
#include "surface/forms/controls/TextFont.h"
#include "surface/raster/Canvas.h"

namespace zelvane {

/// A surface that is drawn on, with a place in a window. Its pixels are logical ones.
///
/// A framed surface has `Width` = `ScaleWidth` + 2. Its place and size are whole: writing `Left`, `Top`,
/// `Width` or `Height` rounds, halves to even. Writing a size keeps the pixels that both sizes share.
class PictureSurface : public Control, public Canvas, public FontProperties {
 public:
  enum class Frame { No, Yes };
  /// A layer is never shown; it only has pixels.
  enum class Kind { Shown, Layer };

  PictureSurface(Control& parent, const std::string& name, Frame frame = Frame::No, Kind kind = Kind::Shown);
  ~PictureSurface() override;

  /// Throw `SurfaceTooLarge`, with the surface as it was.
  void SetWidth(Single width) override;
  void SetHeight(Single height) override;
  void SetLeft(Single left) override;
  void SetTop(Single top) override;
  using Control::Move;
  void Move(Single left, Single top) override;

  /// Takes the bitmap as `Picture`, with its size.
  void SetPicture(Bitmap picture) { SetImage(std::move(picture)); }

  /// Draws one line of text, its top left corner at the current point, in `ForeColor` and the surface's font;
  /// its edges are smooth. Moves the current point to the left edge, one line down.
  void Print(const std::string& text);

  /// Shows what has been drawn since the last call, and no more. A layer keeps its damage for whoever shows
  /// it.
  void Refresh();

  /// An SVG of the program's icons, drawn sharp over the pixels in a square of `size` in the middle.
  void SetIcon(const std::string& name, int size);

  /// Side of the main window at which the panel docks; its size across the side is its own.
  void SetAlign(Align align);
  /// The main window gave a docked panel another size; new area has `BackColor`.
  std::function<void()> OnResize;

 protected:
  void SizeChanged() override;
  void Place() override;
  int FrameWidth() const override { return frame_ == Frame::Yes ? 1 : 0; }

 private:
  class View;
  int ToPixels(Single units) const;
  void Take(int width, int height);
  void Follow(int width, int height);
  Frame frame_;
  Align align_ = Align::None;
  std::string icon_;
  int icon_size_ = 0;
  /// The canvas is being resized to the numbers, which therefore stay.
  bool taking_ = false;
};

}  // namespace zelvane
