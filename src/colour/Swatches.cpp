#include "colour/Swatches.h"

#include <algorithm>

#include "colour/ColorBars.h"
#include "colour/SwatchPanel.h"
#include "colour/SwatchRows.h"
#include "colour/frmNewSwatch.h"
#include "shell/state/State.h"
#include "surface/forms/windows/MdiForm.h"
#include "surface/raster/FailingStep.h"
#include "ui/MsgBox.h"

namespace zelvane {
namespace {

int RowWidth() {
  return static_cast<int>(SwatchPanel->SwatchScroll.Width());
}

void GrowDisplay() {
  SwatchPanel->Display.SetHeight(SwatchPanel->Display.Height() + kSwatchPitch);
}

void PlaceFreeSpace(int top) {
  SwatchPanel->SwatchScroll.SetHeight(static_cast<Single>(3 * kSwatchSide + top));
}

/// The reason where it failed, else empty.
std::string StoreSwatches() {
  if (!State.DataConnection) return "it isn't open";
  std::vector<NamedColor> swatches;
  for (const SwatchEntry& entry : SwatchPanel->Swatch)
    swatches.push_back({entry.BackColor, entry.ToolTipText});
  std::string reason = State.DataConnection->AddTexts(
      kSwatchTable, kSwatchField,
      [&](const DataStore::TextList& standing) { return MissingRows(standing, swatches); });
  SwatchPanel->StoreFailed = !reason.empty();
  return reason;
}

/// The bar's range from heights, as it is until the next start.
void SetScrollFromHeights() {
  ScrollBar& bar = SwatchPanel->ScrollSwatch;
  const double whole = SwatchPanel->SwatchScroll.Height();
  const double most = kColorPanelHeight;
  if (whole > most) {
    bar.SetMin(0);
    With(ToInt16(whole - most), [&](int16_t max) { bar.SetMax(max); });
    With(ToInt16(whole / kSwatchPitch), [&](int16_t change) { bar.SetSmallChange(change); });
    With(ToInt16(whole), [&](int16_t change) { bar.SetLargeChange(change); });
  }
  bar.SetEnabled(whole > most);
}

int TopRow() {
  return static_cast<int>(-SwatchPanel->Display.Top()) / kSwatchPitch;
}

/// The bar follows as far as it goes: it begins to when the row behind those in view is full.
void ScrollTo(int row) {
  const int rows = static_cast<int>(SwatchPanel->Swatch.size()) / kSwatchesInRow + 1;
  const int top = std::clamp(row, 0, std::max(0, rows - kSwatchRowsInView));
  With(ToInt16(top), [](int16_t value) { SwatchPanel->ScrollSwatch.SetValue(value); });
  SwatchPanel->Display.SetTop(static_cast<Single>(-kSwatchPitch * top));
  SwatchPanel->ShowTiles();
}

/// A notch is a row.
void Swatches_MouseWheel(int16_t, Single, Single, Single, Single down) {
  ScrollTo(TopRow() - static_cast<int>(RoundHalfEven(down)));
}

}  // namespace

void OpenNewSwatch() {
  if (MdiForm* main = MdiForm::Main()) main->SetEnabled(false);
  frmNewSwatch.Load().Show();
}

void WireSwatchPanel() {
  SwatchPanel->Background.OnClick = SwatchPanel->SwatchScroll.OnClick = OpenNewSwatch;
  SwatchPanel->Background.OnMouseWheel = SwatchPanel->SwatchScroll.OnMouseWheel = Swatches_MouseWheel;
  SwatchPanel->ScrollSwatch.OnChange = SwatchPanel->ScrollSwatch.OnScroll = ScrollSwatchPanel;
  SwatchPanel->ScrollSwatch.OnGotFocus = [] { SwatchPanel->SwatchScroll.SetFocus(); };
  SwatchPanel->OnTileMade = [](SwatchTile& tile) {
    tile.OnMouseDown = [&tile](int16_t Button, auto...) { Swatch_MouseDown(tile.Index(), Button); };
    tile.OnMouseWheel = Swatches_MouseWheel;
  };
}

void LoadSwatches() {
  int x = 0, y = 0;
  int rows = 0;
  for (const std::string& row : State.DataConnection->Texts(kSwatchTable, kSwatchField)) {
    const auto swatch = ReadSwatchRow(row);
    if (!swatch) continue;
    SwatchPanel->Swatch.push_back({x, y, swatch->color, swatch->name});
    x += kSwatchPitch;
    if (x + kSwatchPitch >= RowWidth()) {
      GrowDisplay();
      ++rows;
      x = 0;
      y += kSwatchPitch;
    }
    PlaceFreeSpace(y);
  }
  ScrollBar& bar = SwatchPanel->ScrollSwatch;
  if (rows > kSwatchRowsInView) {
    With(ToInt16(rows - kSwatchRowsInView), [&](int16_t max) { bar.SetMax(max); });
    bar.SetLargeChange(kSwatchRowsInView);
  }
  bar.SetEnabled(rows > kSwatchRowsInView);
  SwatchPanel->ShowTiles();
}

void AddSwatch(const std::string& name) {
  SwatchEntry added{0, 0, ColorPanel->SelColor[0].BackColor(), name};
  if (!SwatchPanel->Swatch.empty()) {
    const SwatchEntry& last = SwatchPanel->Swatch.back();
    added.Left = last.Left + kSwatchPitch;
    added.Top = last.Top;
    if (added.Left + kSwatchPitch > RowWidth()) {
      added.Left = 0;
      added.Top += kSwatchPitch;
      GrowDisplay();
    }
  }
  SwatchPanel->Swatch.push_back(std::move(added));
  PlaceFreeSpace(SwatchPanel->Swatch.back().Top);
  SetScrollFromHeights();
  BringIntoView(static_cast<int>(SwatchPanel->Swatch.size()) - 1);
  SwatchPanel->ShowTiles();
}

void SaveSwatches() {
  const std::string reason = StoreSwatches();
  if (reason.empty()) return;
  MsgBox("The swatch couldn't be stored in the Korvath data file: " + reason +
             ".\r\nIt stays in the panel, and is stored with the next one where that works.",
         kOkOnly + kExclamationIcon, "Swatches");
}

void StoreLateSwatches() {
  if (SwatchPanel && SwatchPanel->StoreFailed) StoreSwatches();
}

void ScrollSwatchPanel() {
  const int16_t value = SwatchPanel->ScrollSwatch.Value();
  SwatchPanel->Display.SetTop(value < 1 ? Single{0} : static_cast<Single>(-kSwatchPitch * value));
  SwatchPanel->ShowTiles();
}

void BringIntoView(int index) {
  const int top = TopRow(), row = index / kSwatchesInRow;
  if (row < top || row >= top + kSwatchRowsInView) ScrollTo(row < top ? row : row - kSwatchRowsInView + 1);
}

void Swatch_MouseDown(int Index, int16_t Button) {
  const int16_t target = Button == kLeftButton ? 0 : 1;
  ColorPanel->SelColor[target].SetBackColor(SwatchPanel->Swatch.at(static_cast<size_t>(Index)).BackColor);
  State.ColorDialogTarget = target;
  ColorPanel->SelectedColor = target;
  SetColorBars();
  PaintGradient();
  SyncDocumentColors();
}

}  // namespace zelvane
