#include "colour/Swatches.h"

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

constexpr int kPitch = kSwatchSide - 1;  // borders of neighbours overlap
constexpr int kRowsInView = 7;

int RowWidth() {
  return static_cast<int>(SwatchPanel->SwatchScroll.Width());
}

void GrowDisplay() {
  SwatchPanel->Display.SetHeight(SwatchPanel->Display.Height() + kPitch);
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
  const double most = ColorPanel->SwatchesBg.ScaleHeight();
  if (whole > most) {
    bar.SetMin(0);
    With(ToInt16(whole - most), [&](int16_t max) { bar.SetMax(max); });
    With(ToInt16(whole / kPitch), [&](int16_t change) { bar.SetSmallChange(change); });
    With(ToInt16(whole), [&](int16_t change) { bar.SetLargeChange(change); });
  }
  bar.SetEnabled(whole > most);
}

void OpenNewSwatch() {
  if (MdiForm* main = MdiForm::Main()) main->SetEnabled(false);
  frmNewSwatch.Load().Show();
}

}  // namespace

void WireSwatchPanel() {
  SwatchPanel->Background.OnClick = SwatchPanel->SwatchScroll.OnClick = OpenNewSwatch;
  SwatchPanel->ScrollSwatch.OnChange = SwatchPanel->ScrollSwatch.OnScroll = ScrollSwatchPanel;
  SwatchPanel->ScrollSwatch.OnGotFocus = [] { SwatchPanel->SwatchScroll.SetFocus(); };
  SwatchPanel->OnTileMade = [](SwatchTile& tile) {
    tile.OnMouseDown = [&tile](int16_t Button, auto...) { Swatch_MouseDown(tile.Index(), Button); };
  };
}

void LoadSwatches() {
  int x = 0, y = 0;
  int rows = 0;
  for (const std::string& row : State.DataConnection->Texts(kSwatchTable, kSwatchField)) {
    const auto swatch = ReadSwatchRow(row);
    if (!swatch) continue;
    SwatchPanel->Swatch.push_back({x, y, swatch->color, swatch->name});
    x += kPitch;
    if (x + kPitch >= RowWidth()) {
      GrowDisplay();
      ++rows;
      x = 0;
      y += kPitch;
    }
    PlaceFreeSpace(y);
  }
  ScrollBar& bar = SwatchPanel->ScrollSwatch;
  if (rows > kRowsInView) {
    With(ToInt16(rows - kRowsInView), [&](int16_t max) { bar.SetMax(max); });
    bar.SetLargeChange(kRowsInView);
  }
  bar.SetEnabled(rows > kRowsInView);
  SwatchPanel->ShowTiles();
}

void AddSwatch(const std::string& name) {
  SwatchEntry added{0, 0, ColorPanel->SelColor[0].BackColor(), name};
  if (!SwatchPanel->Swatch.empty()) {
    const SwatchEntry& last = SwatchPanel->Swatch.back();
    added.Left = last.Left + kPitch;
    added.Top = last.Top;
    if (added.Left + kPitch > RowWidth()) {
      added.Left = 0;
      added.Top += kPitch;
      GrowDisplay();
    }
  }
  SwatchPanel->Swatch.push_back(std::move(added));
  PlaceFreeSpace(SwatchPanel->Swatch.back().Top);
  SetScrollFromHeights();
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
  SwatchPanel->Display.SetTop(value < 1 ? Single{0} : static_cast<Single>(-kPitch * value));
  SwatchPanel->ShowTiles();
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
