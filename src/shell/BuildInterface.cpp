#include "shell/BuildInterface.h"

#include "colour/ColorBars.h"
#include "document/layers/InfoPanel.h"
#include "document/layers/ReadOuts.h"
#include "imageops/ProgressDisplay.h"
#include "imageops/effects/RunEffect.h"
#include "shell/Logo.h"
#include "shell/MainForm.h"
#include "tools/OptionBars.h"
#include "tools/Options.h"
#include "tools/Selector.h"
#include "tools/TextPickers.h"
#include "tools/ToolButtons.h"

namespace zelvane {
namespace {

constexpr Single kBarLeft = 5, kBarTop = 3;

void DrawRaisedEdge(PictureSurface& panel) {
  DrawButtonLook(panel, ButtonLook::Hover);
}

/// Panels that follow the window's width draw their edge anew.
void DrawPanelEdges(MainWindow& window) {
  DrawEdgeAcross(ToolButtons->ColorsBg);
  DrawEdgeAcross(window.TopBar);
  window.TopBar.OnResize = [&window] { DrawEdgeAcross(window.TopBar); };
  DrawEdgeDown(ReadOuts->CoordsInfo, 0);
}

void MoveOptionBars(PictureSurface& top_bar) {
  for (int tool = 0; tool < frmControls->DrawToolbar.Count(); ++tool) {
    frmControls->DrawToolbar[tool].Move(kBarLeft, kBarTop);
    frmControls->DrawToolbar[tool].SetParent(top_bar);
    PictureSurface& icon = frmControls->ToolIcon[tool];
    DrawEdgeDown(icon, icon.ScaleWidth() - 2);
  }
}

void DrawSplits() {
  for (int i = 0; i < ToolButtons->SplitH.Count(); ++i) DrawEdgeAcross(ToolButtons->SplitH[i]);
  DrawEdgeAcross(InfoPanel->Split);
}

/// The menu stays hidden without an effect program.
void LoadEffectsList(MainMenu& menus) {
  const std::vector<std::string> files = EffectPrograms();
  for (size_t i = 0; i < files.size(); ++i) {
    if (i > 0)
      menus.Effect.push_back(std::make_unique<Menu>(menus.Effects, "Effect(" + std::to_string(i) + ")", ""));
    menus.Effect[i]->SetTag(files[i]);
    menus.Effect[i]->SetCaption(CaptionOf(EffectName(files[i])));
    menus.Effects.SetVisible(true);
  }
}

void DrawRaisedButtons() {
  for (PictureSurface* button : {&frmControls->CmdFont, &frmControls->CmdFontStyle}) DrawRaisedEdge(*button);
}

void DrawProgressEdge() {
  DrawRaisedEdge(Progress->ProcessBg);
  // A panel that is hidden has no width yet.
  Progress->ProcessBg.OnResize = [] {
    DrawRaisedEdge(Progress->ProcessBg);
    Progress->Process.SetWidth(Progress->ProcessBg.Width() - Progress->Process.Left());
  };
}

}  // namespace

void BuildInterface(MainWindow& window) {
  DrawPanelEdges(window);
  MoveOptionBars(window.TopBar);
  DrawSplits();
  SetSplashMessage("Loading Colors...");
  frmSelector = std::make_unique<SelectorControls>(window);
  SetSplashMessage("Loading Fonts...");
  frmFonts = std::make_unique<PickerControls>(window, "frmFonts", "FontScroll");
  SetSplashMessage("Loading Fontstyles...");
  frmFontStyle = std::make_unique<PickerControls>(window, "frmFontStyle", "lblStyle");
  SetSplashMessage("Loading Effects...");
  LoadEffectsList(window.Menus);
  FillOptions();
  SetSplashMessage("Preparing GUI...");
  DrawRaisedButtons();
  DrawProgressEdge();
  ColorPanel->SelColor[0].SetBackColor(kBlack);
  ColorPanel->SelColor[1].SetBackColor(kWhite);
  PaintGradient();
}

}  // namespace zelvane
