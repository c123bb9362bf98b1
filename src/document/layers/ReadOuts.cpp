#include "document/layers/ReadOuts.h"

namespace zelvane {
namespace {

constexpr int kReadOutWidth = 88, kReadOutHeight = 26;

}  // namespace

ReadOutControls::ReadOutControls(Control& TopBar)
    : CoordsInfo(TopBar, "CoordsInfo"),
      lblArea(CoordsInfo, "lblArea", "0 x 0"),
      lblCoords(CoordsInfo, "lblCoords", "0, 0") {
  CoordsInfo.SetBackColor(SystemColor::ButtonFace);
  CoordsInfo.Move(0, 3, 2 * kReadOutWidth + 12, kReadOutHeight);
  lblArea.Move(4, 0, kReadOutWidth, kReadOutHeight);
  lblCoords.Move(4 + kReadOutWidth, 0, kReadOutWidth, kReadOutHeight);
  lblArea.SetAlignment(kAlignRight);
  lblCoords.SetAlignment(kAlignRight);
  lblArea.SetToolTip("Distance from the press");
  lblCoords.SetToolTip("Position of the pointer");
}

}  // namespace zelvane
