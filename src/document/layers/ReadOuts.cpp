#include "document/layers/ReadOuts.h"

#include "surface/forms/controls/TextGrowth.h"

namespace zelvane {
namespace {

constexpr Single kReadOutWidth = 88, kReadOutHeight = 26;  // pixels, at a font of 10 points

}  // namespace

ReadOutControls::ReadOutControls(Control& TopBar)
    : CoordsInfo(TopBar, "CoordsInfo"),
      lblArea(CoordsInfo, "lblArea", "0 x 0"),
      lblCoords(CoordsInfo, "lblCoords", "0, 0") {
  CoordsInfo.SetBackColor(SystemColor::ButtonFace);
  const Single width = Widened(kReadOutWidth), height = kReadOutHeight + LineGrowth();
  CoordsInfo.Move(0, 3, 2 * width + 12, height);
  lblArea.Move(4, 0, width, height);
  lblCoords.Move(4 + width, 0, width, height);
  lblArea.SetAlignment(kAlignRight);
  lblCoords.SetAlignment(kAlignRight);
  lblArea.SetToolTip("Distance from the press");
  lblCoords.SetToolTip("Position of the pointer");
}

}  // namespace zelvane
