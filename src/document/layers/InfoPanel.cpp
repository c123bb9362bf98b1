#include "document/layers/InfoPanel.h"

namespace zelvane {
namespace {

constexpr int kRowHeight = 20, kNameWidth = 86, kInfoWidth = 146;

}  // namespace

InfoFrameControls::InfoFrameControls(Control& RightBar)
    : Split(RightBar, "SplitH(6)"),
      InfoFrame(RightBar, "InfoFrame"),
      lblHeading(InfoFrame, "lblHeading", "Image Information"),
      IWidth(InfoFrame, "IWidth"),
      IHeight(InfoFrame, "IHeight"),
      IBits(InfoFrame, "IBits"),
      iType(InfoFrame, "iType") {
  InfoFrame.SetBackColor(SystemColor::ButtonFace);
  InfoFrame.Move(2, 245, kInfoWidth, 5 * kRowHeight);
  Split.SetBackColor(SystemColor::ButtonFace);
  Split.Move(2, 239, kInfoWidth, 2);
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
