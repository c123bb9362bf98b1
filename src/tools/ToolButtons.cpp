#include "tools/ToolButtons.h"

#include <array>
#include <vector>

namespace zelvane {
namespace {

constexpr int kButtonSize = 30, kIconSize = 24, kMargin = 3, kGap = 8;

constexpr std::array<ToolFacts, kToolCount> kFacts{{
    {"Cursor", "cursor"},
    {"Pen Tool", "pen"},
    {"Magnifying Tool", "magnify"},
    {"Floodfill Tool", "floodfill"},
    {"Gradient Tool", "gradient"},
    {"Select Area Tool", "selectarea"},
    {"Airbrush Tool", "airbrush"},
    {"Crop Tool", "crop"},
    {"Eyedropper Tool", "eyedropper"},
    {"Rectangle Tool", "rectangle"},
    {"Circle Tool", "circle"},
    {"Brighten Tool", "brighten"},
    {"Text Tool", "text"},
    {"Blur Tool", "blur"},
    {"Eraser Tool", "eraser"},
}};

/// The buttons as they stand, two a row, group by group.
const std::vector<std::vector<int>> kGroups = {
    {kCursorTool, kSelectAreaTool, kCropTool, kMagnifyingTool},
    {kPenTool, kEraserTool, kAirbrushTool, kFloodfillTool},
    {kBrightenTool, kBlurTool, kGradientTool, kEyedropperTool},
    {kRectangleTool, kCircleTool, kTextTool},
};

void DrawEdges(PictureSurface& button, Color top_left, Color bottom_right) {
  const auto right = static_cast<Single>(button.ScaleWidth() - 1);
  const auto bottom = static_cast<Single>(button.ScaleHeight() - 1);
  button.Line(0, 0, right, 0, top_left);
  button.Line(0, 0, 0, bottom, top_left);
  button.Line(right, 0, right, bottom, bottom_right);
  button.Line(0, bottom, right, bottom, bottom_right);
}

}  // namespace

const ToolFacts& FactsOf(int tool) {
  return kFacts.at(static_cast<size_t>(tool));
}

void DrawButtonLook(PictureSurface& button, ButtonLook look) {
  button.SetBackColor(look == ButtonLook::Pressed ? SystemColor::ScrollBar : SystemColor::ButtonFace);
  if (look == ButtonLook::Hover) DrawEdges(button, SystemColor::ButtonHighlight, SystemColor::ButtonShadow);
  if (look == ButtonLook::Pressed) DrawEdges(button, SystemColor::ButtonShadow, SystemColor::ButtonHighlight);
  button.Refresh();
}

void DrawEdgeAcross(PictureSurface& panel) {
  const auto right = static_cast<Single>(panel.ScaleWidth());
  panel.Line(0, 0, right, 0, SystemColor::ButtonShadow);
  panel.Line(0, 1, right, 1, SystemColor::ButtonHighlight);
  panel.Refresh();
}

ToolButtonControls::ToolButtonControls(Control& LeftBar)
    : ColorsBg(LeftBar, "ColorsBg"), Cmd(kToolCount, ColorsBg, "Cmd"), SplitH(3, ColorsBg, "SplitH") {
  ColorsBg.SetBackColor(SystemColor::ButtonFace);
  int top = kMargin + 2;
  for (size_t group = 0; group < kGroups.size(); ++group) {
    const std::vector<int>& tools = kGroups[group];
    for (size_t i = 0; i < tools.size(); ++i)
      Cmd[tools[i]].Move(static_cast<Single>(kMargin + static_cast<int>(i % 2) * kButtonSize),
                         static_cast<Single>(top + static_cast<int>(i / 2) * kButtonSize), kButtonSize,
                         kButtonSize);
    top += static_cast<int>(tools.size() + 1) / 2 * kButtonSize;
    if (group == kGroups.size() - 1) break;
    SplitH[static_cast<int>(group)].Move(kMargin, static_cast<Single>(top + kGap / 2 - 1), 2 * kButtonSize,
                                         2);
    top += kGap;
  }
  ColorsBg.Move(0, 0, 2 * (kButtonSize + kMargin), static_cast<Single>(top + kMargin));
  for (int tool = 0; tool < kToolCount; ++tool) {
    Cmd[tool].SetIcon(FactsOf(tool).icon, kIconSize);
    Cmd[tool].SetToolTip(FactsOf(tool).tooltip);
    Cmd[tool].SetAccessibleName(FactsOf(tool).tooltip);
    DrawButtonLook(Cmd[tool], ButtonLook::Idle);
  }
  for (int i = 0; i < SplitH.Count(); ++i) DrawEdgeAcross(SplitH[i]);
}

}  // namespace zelvane
