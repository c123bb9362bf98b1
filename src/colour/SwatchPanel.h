#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "surface/forms/controls/Label.h"
#include "surface/forms/controls/Panel.h"
#include "surface/forms/controls/ScrollBar.h"
#include "surface/forms/picture/OutlineMark.h"
#include "surface/forms/picture/PictureSurface.h"

namespace zelvane {

inline constexpr int kSwatchSide = 13;                ///< pixels of a swatch, its border included
inline constexpr int kSwatchPitch = kSwatchSide - 1;  ///< borders of neighbours overlap
inline constexpr int kSwatchRowsInView = 7, kSwatchesInRow = 10;

inline constexpr char kAddSwatch[] = "Add New Swatch";

/// A swatch of the grid, which is a control only while it's in view.
struct SwatchEntry {
  int Left = 0, Top = 0;  ///< pixels of `Display`
  Color BackColor;
  std::string ToolTipText;  ///< its name
};

/// A square of the grid as it's seen; which swatch it shows changes as the grid is scrolled.
class SwatchTile : public PictureSurface {
 public:
  SwatchTile(Control& parent, const std::string& name);
  void ShowEntry(int index, const SwatchEntry& entry);
  int Index() const { return index_; }

 private:
  int index_ = -1;
};

/// The swatch panel. The swatches live in `Swatch`, and nowhere else.
struct SwatchPanelControls {
  /// At `top` of the bar, in pixels.
  SwatchPanelControls(Control& RightBar, Single top);

  PictureSurface Picture3;
  Label lblHeading;
  PictureSurface Background;  ///< the window onto the grid
  Panel Display;              ///< carries the swatches, and is moved up and down under the window
  Panel SwatchScroll;         ///< what is free of swatches on it
  ScrollBar ScrollSwatch;
  ControlArray<SwatchTile> Tiles;
  OutlineMark FocusMark;  ///< in the swatch that keys act on, while the keyboard is here

  std::vector<SwatchEntry> Swatch;
  bool StoreFailed = false;  ///< not all of them are in the data file
  int Marked = 0;            ///< the swatch that keys act on; behind the last one is the free space

  /// Has tiles show the swatches that are in view; those made for it are handed to `OnTileMade`.
  void ShowTiles();
  /// Puts the mark on `Marked`, wherever the grid is scrolled to.
  void PlaceMark();
  std::function<void(SwatchTile& tile)> OnTileMade;
};

/// Stands while the main window does.
inline std::unique_ptr<SwatchPanelControls> SwatchPanel;

}  // namespace zelvane
