#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "surface/forms/controls/Label.h"
#include "surface/forms/picture/OutlineMark.h"
#include "surface/forms/picture/PictureSurface.h"
#include "ui/NumberBox.h"

namespace zelvane {

inline constexpr int kChannelCount = 3;        ///< red, green, blue, in this order
inline constexpr int kColorPanelHeight = 124;  ///< pixels, at a font of 10 points

/// A surface that shows a ramp from one colour to another.
class RampSurface : public PictureSurface {
 public:
  using PictureSurface::PictureSurface;
  struct Ends {
    Color left, right;
    friend bool operator==(const Ends&, const Ends&) = default;
  };
  std::optional<Ends> Painted;  ///< the ramp that stands on the surface; none before the first
};

/// The pointer under a bar, 9 by 5 pixels. Unlike other surfaces it keeps the fraction of its place.
class MarkerSurface : public PictureSurface {
 public:
  MarkerSurface(Control& parent, const std::string& name);
  void SetLeft(Single left) { Control::SetLeft(left); }
};

/// The colour panel. The two current colours live in the `BackColor` of `SelColor[0]` (foreground) and
/// `SelColor[1]` (background), and nowhere else.
struct ColorPanelControls {
  explicit ColorPanelControls(Control& parent);

  PictureSurface SwatchesBg;
  Label lblHeading;
  ControlArray<PictureSurface> SelFrame;
  ControlArray<Label> SelColor;
  PictureSurface ShiftColors, RestoreColors;
  RampSurface Gradient;  ///< from the foreground to the background colour
  ControlArray<Label> lblChannel;
  ControlArray<RampSurface> ColorBar;
  ControlArray<MarkerSurface> ColorScroll;
  ControlArray<NumberBox> lblColor;
  OutlineMark FocusMark;  ///< round the one of `SelColor` that has the keyboard

  int16_t SelectedColor = 0;   ///< the index in `SelColor` that bars and numbers edit
  bool ColorDragging = false;  ///< a marker is being dragged
  int16_t ColorDragX = 0;      ///< pixels from the corner of what was pressed

  /// The user wants to edit `SelColor[Index]` in the colour dialog.
  std::function<void(int16_t Index)> OnEditColor;

 private:
  void PlaceColor(int index, Single left, Single top, const char* name);
  void PlaceChannel(int channel);
  void FrameRamp(const RampSurface& ramp);
};

/// Stands while the main window does.
inline std::unique_ptr<ColorPanelControls> ColorPanel;

}  // namespace zelvane
