#include "document/layers/ReadOuts.h"

namespace zelvane {
namespace {

constexpr int kReadOutWidth = 88, kReadOutHeight = 26;
constexpr int kRowHeight = 20, kNameWidth = 86, kInfoWidth = 146;

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

InfoFrameControls::InfoFrameControls(Control& RightBar)
    : Split(RightBar, "SplitH(6)"),
      InfoFrame(RightBar, "InfoFrame"),
      lblHeading(InfoFrame, "lblHeading", "Image Information"),
      IWidth(InfoFrame, "IWidth"),
      IHeight(InfoFrame, "IHeight"),
      IBits(InfoFrame, "IBits"),
      iType(InfoFrame, "iType") {
  InfoFrame.SetBackColor(SystemColor::ButtonFace);
  InfoFrame.Move(2, 132, kInfoWidth, 5 * kRowHeight);
  Split.Move(2, 126, kInfoWidth, 2);
  lblHeading.Move(8, 0, kInfoWidth - 8, kRowHeight);
  lblHeading.SetFontBold(true);
  Label* const values[] = {&IHeight, &IWidth, &IBits, &iType};
  const char* const names[] = {"Height:", "Width:", "Bits per pixel:", "Type:"};
  for (int row = 0; row < 4; ++row) {
    const auto top = static_cast<Single>((row + 1) * kRowHeight);
    lblNames.Add(InfoFrame, "lblName", names[row]).Move(8, top, kNameWidth, kRowHeight);
    values[row]->Move(8 + kNameWidth, top, kInfoWidth - 8 - kNameWidth, kRowHeight);
  }
  SetVisible(false);
}

void InfoFrameControls::SetVisible(bool visible) {
  InfoFrame.SetVisible(visible);
  Split.SetVisible(visible);
}

}  // namespace zelvane
