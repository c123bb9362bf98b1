#include "document/layers/InfoPanel.h"

#include <algorithm>

#include "surface/forms/controls/TextGrowth.h"

namespace zelvane {
namespace {

// Pixels, where text is concerned at a font of 10 points.
constexpr Single kRowHeight = 20, kNameWidth = 86, kValueWidth = 44, kInfoWidth = 146;
constexpr Single kMargin = 8, kBesideName = 3, kSplit = 8, kFrame = 14;

}  // namespace

InfoFrameControls::InfoFrameControls(Control& RightBar, Single top)
    : Split(RightBar, "SplitH(6)"),
      InfoFrame(RightBar, "InfoFrame"),
      lblHeading(InfoFrame, "lblHeading", "Image Information"),
      IWidth(InfoFrame, "IWidth"),
      IHeight(InfoFrame, "IHeight"),
      IBits(InfoFrame, "IBits"),
      iType(InfoFrame, "iType") {
  lblHeading.SetFontBold(true);
  Single names = kNameWidth;
  for (const char* name : {"Height:", "Width:", "Bits per pixel:", "Type:"})
    names = std::max(names, lblNames.Add(InfoFrame, "lblName", name).NaturalWidth() + Widened(kBesideName));
  const Single row = kRowHeight + LineGrowth();
  // The heading isn't measured, as that would load its bold face at the start.
  const Single width = kMargin + std::max(Widened(kInfoWidth - kMargin), names + Widened(kValueWidth));
  InfoFrame.SetBackColor(SystemColor::ButtonFace);
  InfoFrame.Move(2, top + kFrame, width, 5 * row);
  Split.SetBackColor(SystemColor::ButtonFace);
  Split.Move(2, top + kSplit, width, 2);
  lblHeading.Move(kMargin, 0, width - kMargin, row);
  Label* const values[] = {&IHeight, &IWidth, &IBits, &iType};
  for (int i = 0; i < lblNames.Count(); ++i) {
    const Single line = static_cast<Single>(i + 1) * row;
    lblNames[i].Move(kMargin, line, names, row);
    values[i]->Move(kMargin + names, line, width - kMargin - names, row);
  }
  SetVisible(false);
}

void InfoFrameControls::SetVisible(bool visible) {
  InfoFrame.SetVisible(visible);
  Split.SetVisible(visible);
}

}  // namespace zelvane
