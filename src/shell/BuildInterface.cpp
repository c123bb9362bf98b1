#include "shell/BuildInterface.h"

#include "colour/ColorPanel.h"
#include "document/layers/ReadOuts.h"
#include "shell/MainForm.h"
#include "tools/OptionBars.h"
#include "tools/SimplePaints.h"
#include "tools/ToolButtons.h"

namespace zelvane {
namespace {

constexpr Single kBarLeft = 5, kBarTop = 3;

/// An edge down a panel: a line in shadow colour at `x` and one in highlight colour beside it.
void DrawEdgeDown(PictureSurface& panel, int x) {
  const auto left = static_cast<Single>(x), bottom = static_cast<Single>(panel.ScaleHeight());
  panel.Line(left, 0, left, bottom, SystemColor::ButtonShadow);
  panel.Line(left + 1, 0, left + 1, bottom, SystemColor::ButtonHighlight);
  panel.Refresh();
}

void MoveOptionBars(PictureSurface& top_bar) {
  for (int tool = 0; tool < frmControls->DrawToolbar.Count(); ++tool) {
    frmControls->DrawToolbar[tool].SetParent(top_bar);
    frmControls->DrawToolbar[tool].Move(kBarLeft, kBarTop);
    PictureSurface& icon = frmControls->ToolIcon[tool];
    DrawEdgeDown(icon, icon.ScaleWidth() - 2);
  }
}

}  // namespace

void BuildInterface(MainWindow& window) {
  DrawEdgeAcross(ToolButtons->ColorsBg);
  DrawEdgeAcross(window.TopBar);
  window.TopBar.OnResize = [&window] { DrawEdgeAcross(window.TopBar); };
  DrawEdgeDown(ReadOuts->CoordsInfo, 0);
  MoveOptionBars(window.TopBar);
  DrawEdgeAcross(InfoPanel->Split);
  FillOptionTable();
  DrawEdgeAcross(window.ProcessBg);
  window.ProcessBg.OnResize = [&window] { DrawEdgeAcross(window.ProcessBg); };
  ColorPanel->SelColor[0].SetBackColor(kBlack);
  ColorPanel->SelColor[1].SetBackColor(kWhite);
}

}  // namespace zelvane
