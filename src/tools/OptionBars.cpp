#include "tools/OptionBars.h"

#include "tools/ToolButtons.h"

namespace zelvane {
namespace {

constexpr int kBarHeight = 26, kIconWidth = 34, kIconSize = 24;

/// The pixel that points in the drawn pointers, by tool.
struct HotSpot {
  int x, y;
};
constexpr std::array<HotSpot, kToolCount> kHotSpots{{{0, 0},
                                                     {3, 28},
                                                     {12, 12},
                                                     {4, 28},
                                                     {10, 10},
                                                     {10, 10},
                                                     {3, 7},
                                                     {10, 10},
                                                     {3, 28},
                                                     {10, 10},
                                                     {10, 10},
                                                     {8, 8},
                                                     {15, 15},
                                                     {8, 8},
                                                     {8, 8}}};

}  // namespace

OptionBarsWindow::OptionBarsWindow()
    : Form("frmControls"),
      DrawToolbar(kToolCount, *this, "DrawToolbar"),
      lblZoom(DrawToolbar[kMagnifyingTool], "lblZoom", "Zoom:"),
      comboZoom(DrawToolbar[kMagnifyingTool], "comboZoom") {
  for (int tool = 0; tool < kToolCount; ++tool) {
    PictureSurface& bar = DrawToolbar[tool];
    bar.SetBackColor(SystemColor::ButtonFace);
    bar.Move(0, 0, tool == kMagnifyingTool ? kIconWidth + 140 : kIconWidth, kBarHeight);
    bar.SetVisible(false);
    PictureSurface& icon = ToolIcon.Add(bar, "ToolIcon");
    icon.SetBackColor(SystemColor::ButtonFace);
    icon.Move(0, 0, kIconWidth, kBarHeight);
    icon.SetIcon(FactsOf(tool).icon, kIconSize);
    const auto [x, y] = kHotSpots[static_cast<size_t>(tool)];
    MyCursor[static_cast<size_t>(tool)] = {FactsOf(tool).icon, x, y};
  }
  lblZoom.Move(kIconWidth + 8, 0, 44, kBarHeight);
  comboZoom.Move(kIconWidth + 54, 1, 84, kBarHeight - 2);
  comboZoom.SetAccessibleName("Zoom:");
  for (int percent = 100; percent <= 800; percent += 100) comboZoom.AddItem(std::to_string(percent) + "%");
  comboZoom.SetListIndex(0);
}

}  // namespace zelvane
