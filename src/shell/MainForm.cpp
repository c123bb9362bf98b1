#include "shell/MainForm.h"

#include <algorithm>

#include "colour/ColorPanel.h"
#include "colour/SwatchPanel.h"
#include "colour/Swatches.h"
#include "document/layers/InfoPanel.h"
#include "document/layers/ReadOuts.h"
#include "imageops/ProgressDisplay.h"
#include "shell/state/DataFile.h"
#include "shell/state/Settings.h"
#include "shell/state/State.h"
#include "surface/forms/controls/TextGrowth.h"
#include "surface/forms/windows/Application.h"
#include "surface/raster/Units.h"
#include "surface/system/desktop/Screen.h"
#include "tools/SelectTool.h"
#include "tools/Selector.h"
#include "tools/TextPickers.h"
#include "tools/ToolButtons.h"
#include "ui/MsgBoxEnhanced.h"

namespace zelvane {
namespace {

constexpr double kSmallestWidth = 9600, kSmallestHeight = 6780;                 // twips
constexpr int kHoverInterval = 50;                                              // milliseconds
constexpr Single kTopBarHeight = 32, kLeftBarWidth = 66, kRightBarWidth = 160;  // pixels
constexpr Single kBetweenPanels = 4, kBesideInfo = 12;                          // pixels

/// Of a side of the window that nothing is stored of: a large font takes room. In twips.
double FirstSize(double smallest, double work_area) {
  const double wanted = Widened(static_cast<Single>(smallest / kTwipsPerPixel)) * kTwipsPerPixel;
  return std::max(smallest, std::min(wanted, work_area - Screen::kTitleBar));
}

Single Below(const PictureSurface& panel) {
  return panel.Top() + panel.Height();
}

void DockPanel(PictureSurface& panel, Align align, Single size) {
  if (align == Align::Top || align == Align::Bottom)
    panel.SetHeight(size);
  else
    panel.SetWidth(size);
  panel.SetBackColor(SystemColor::ButtonFace);
  panel.SetAlign(align);
}

}  // namespace

MainWindow::MainWindow()
    : MdiForm("MainForm"),
      TopBar(*this, "TopBar"),
      LeftBar(*this, "LeftBar"),
      RightBar(*this, "RightBar"),
      Menus(*this),
      CmdTimer(kHoverInterval, IntervalTimer::Runs::WithPointer) {
  SetCaption(" Zelvane");
  SetMinimumSize(kSmallestWidth, kSmallestHeight);
  DockPanel(TopBar, Align::Top, kTopBarHeight + LineGrowth());
  DockPanel(LeftBar, Align::Left, kLeftBarWidth);
  DockPanel(RightBar, Align::Right, kRightBarWidth);
  Progress = std::make_unique<ProgressControls>(*this);
  ToolButtons = std::make_unique<ToolButtonControls>(LeftBar);
  ReadOuts = std::make_unique<ReadOutControls>(TopBar);
  ColorPanel = std::make_unique<ColorPanelControls>(RightBar);
  SwatchPanel =
      std::make_unique<SwatchPanelControls>(RightBar, Below(ColorPanel->SwatchesBg) + kBetweenPanels);
  InfoPanel = std::make_unique<InfoFrameControls>(RightBar, Below(SwatchPanel->Picture3));
  const PictureSurface& widest = InfoPanel->InfoFrame;
  RightBar.SetWidth(widest.Left() + widest.Width() + kBesideInfo);
}

MainWindow::~MainWindow() {
  frmFontStyle.reset();
  frmFonts.reset();
  frmSelector.reset();
  InfoPanel.reset();
  SwatchPanel.reset();
  ColorPanel.reset();
  ReadOuts.reset();
  ToolButtons.reset();
  Progress.reset();
}

void MainWindow::RestoreWindowPlace() {
  const double width = FirstSize(kSmallestWidth, Desktop.WorkAreaWidth());
  const double height = FirstSize(kSmallestHeight, Desktop.WorkAreaHeight());
  const double left = (Desktop.WorkAreaWidth() - width) / 2, top = (Desktop.WorkAreaHeight() - height) / 2;
  const auto restore = [](const char* key, double fallback, auto&& set) {
    set(static_cast<Single>(ReadNumber(key, fallback).value_or(fallback)));
  };
  restore("ZelvaneWidth", width, [this](Single wide) { SetWidth(wide); });
  restore("ZelvaneHeight", height, [this](Single high) { SetHeight(high); });
  restore("ZelvaneLeft", left, [this](Single x) { SetLeft(x); });
  restore("ZelvaneTop", top, [this](Single y) { SetTop(y); });
  PutOnScreen();
  RestoredHeight = Height();
  RestoredWidth = Width();
}

/// A screen may be smaller or gone since: all of the window comes back onto one that is there.
void MainWindow::PutOnScreen() {
  const Screen::Area window = {Left(), Top(), Width(), Height() + Screen::kTitleBar};
  const Screen::Area reached = Screen::BroughtOnto(Screen::WorkAreas(), window);
  SetLeft(static_cast<Single>(reached.left));
  SetTop(static_cast<Single>(reached.top));
}

/// Title bars belong to the window manager, outside of what a window measures.
void MainWindow::MeasureTitle() {
  State.TitleBarHeight = 0;
}

void MainWindow::MDIForm_Resize() {
  if (WindowState() != kMinimised && !NoteSize()) return;
  PlaceReadOuts();
  Progress->Process.SetWidth(Progress->ProcessBg.Width() - Progress->Process.Left());
}

/// False where the window was too small and has been set right, which comes here again.
bool MainWindow::NoteSize() {
  if (WindowState() != kMaximised) {
    // The panels stand in pixels, and so is the inside told.
    State.MainFrameHeight = static_cast<int32_t>(Height() - ScaleHeight() * kTwipsPerPixel);
    State.MainFrameWidth = static_cast<int32_t>(Width() - ScaleWidth() * kTwipsPerPixel);
    if (LastWindowState != kMaximised) {
      if (Width() < kSmallestWidth) return SetWidth(kSmallestWidth), false;
      if (Height() < kSmallestHeight) return SetHeight(kSmallestHeight), false;
      RestoredHeight = Height();
      RestoredWidth = Width();
    }
  }
  LastWindowState = WindowState();
  return true;
}

void MainWindow::Desktop_SettingsChanged() {
  if (WindowState() == kMaximised) return;
  if (WindowState() == kMinimised) SetWindowState(kNormal);
  const double height = Desktop.WorkAreaHeight(), width = Desktop.WorkAreaWidth();
  if (height < Height() && Height() > kSmallestHeight) SetHeight(static_cast<Single>(height));
  if (width < Width() && Width() > kSmallestWidth) SetWidth(static_cast<Single>(width));
}

void MainWindow::MDIForm_QueryUnload(bool& Cancel) {
  if (!CloseDocuments()) {
    Cancel = true;
    return;
  }
  State.Exiting = true;
  const std::vector<Form*> others = Forms();
  for (Form* form : others)
    if (form->Name() != Name()) form->Unload();
  KeepWindowPlace();
  MessageObject = {};
  State.PicFormatObject.reset();
  StoreLateSwatches();
  CloseDataFile();
  EndProgram();
}

/// Each document is asked; the first that refuses takes the focus.
bool MainWindow::CloseDocuments() {
  for (Form* form : Children()) {
    if (form->Name() != "frmPaint") continue;
    State.CloseCancelled = false;
    form->Unload();
    if (!State.CloseCancelled) continue;
    form->Activate();
    return false;
  }
  return true;
}

void MainWindow::KeepWindowPlace() {
  if (LastWindowState == kMaximised) {
    WriteSetting("ZelvaneMaximized", "Yes");
    return;
  }
  WriteSetting("ZelvaneMaximized", "No");
  if (WindowState() != kMinimised) {
    WriteSetting("ZelvaneLeft", PlainText(std::max<double>(Left(), 0)));
    WriteSetting("ZelvaneTop", PlainText(std::max<double>(Top(), 0)));
  }
  WriteSetting("ZelvaneWidth", PlainText(std::min(Desktop.WorkAreaWidth(), RestoredWidth)));
  WriteSetting("ZelvaneHeight", PlainText(std::min(Desktop.WorkAreaHeight(), RestoredHeight)));
}

}  // namespace zelvane
