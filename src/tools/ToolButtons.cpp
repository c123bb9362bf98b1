#include "tools/ToolButtons.h"

#include <array>
#include <vector>

namespace zelvane {
namespace {

constexpr int kButtonSize = 30, kMargin = 3, kGap = 8;

constexpr std::array<ToolFacts, kToolCount> kFacts{{
    {"Cursor", "cursor", 0, 0},
    {"Pen Tool", "pen", 3, 28},
    {"Magnifying Tool", "magnify", 12, 12},
    {"Floodfill Tool", "floodfill", 4, 28},
    {"Gradient Tool", "gradient", 10, 10},
    {"Select Area Tool", "selectarea", 10, 10},
    {"Airbrush Tool", "airbrush", 3, 7},
    {"Crop Tool", "crop", 10, 10},
    {"Eyedropper Tool", "eyedropper", 3, 28},
    {"Rectangle Tool", "rectangle", 10, 10},
    {"Circle Tool", "circle", 10, 10},
    {"Brighten Tool", "brighten", 8, 8},
    {"Text Tool", "text", 15, 15},
    {"Blur Tool", "blur", 8, 8},
    {"Eraser Tool", "eraser", 8, 8},
}};

/// The buttons as they stand, two a row, group by group.
const std::vector<std::vector<int>> kGroups = {
    {kCursorTool, kSelectAreaTool, kCropTool, kMagnifyingTool},
    {kPenTool, kEraserTool, kAirbrushTool, kFloodfillTool},
    {kBrightenTool, kBlurTool, kGradientTool, kEyedropperTool},
    {kRectangleTool, kCircleTool, kTextTool},
};

Single Pixels(size_t count) {
  return static_cast<Single>(count);
}

}  // namespace

const ToolFacts& FactsOf(int tool) {
  return kFacts.at(static_cast<size_t>(tool));
}

ToolButtonControls::ToolButtonControls(Control& LeftBar)
    : ColorsBg(LeftBar, "ColorsBg"), Cmd(kToolCount, ColorsBg, "Cmd") {
  ColorsBg.SetBackColor(SystemColor::ButtonFace);
  PlaceButtons();
  for (int tool = 0; tool < kToolCount; ++tool) Cmd.SetFace(tool, FactsOf(tool).icon, FactsOf(tool).tooltip);
}

void ToolButtonControls::PlaceButtons() {
  size_t top = kMargin + 2;
  for (const std::vector<int>& group : kGroups) {
    if (&group != &kGroups.front()) {
      PictureSurface& line = SplitH.Add(ColorsBg, "SplitH");
      line.SetBackColor(SystemColor::ButtonFace);
      line.Move(kMargin, Pixels(top + kGap / 2 - 1), 2 * kButtonSize, 2);
      top += kGap;
    }
    for (size_t i = 0; i < group.size(); ++i)
      Cmd[group[i]].Move(Pixels(kMargin + i % 2 * kButtonSize), Pixels(top + i / 2 * kButtonSize),
                         kButtonSize, kButtonSize);
    top += (group.size() + 1) / 2 * kButtonSize;
  }
  ColorsBg.Move(0, 0, 2 * (kButtonSize + kMargin), Pixels(top + kMargin));
}

}  // namespace zelvane
