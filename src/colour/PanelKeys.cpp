#include "colour/PanelKeys.h"

#include <algorithm>

#include "colour/ColorBars.h"
#include "colour/SwatchPanel.h"
#include "colour/Swatches.h"
#include "surface/forms/controls/Events.h"
#include "surface/raster/Contrast.h"

namespace zelvane {
namespace {

int SwatchCount() {
  return static_cast<int>(SwatchPanel->Swatch.size());
}

/// In the gap of the colour's frame. Of the background colour the other one hides a part.
void MarkColor(int16_t Index) {
  constexpr Single kReach = 2;
  const Label& color = ColorPanel->SelColor[Index];
  OutlineMark& mark = ColorPanel->FocusMark;
  mark.Move(color.Left() - kReach, color.Top() - kReach, color.Width() + 2 * kReach,
            color.Height() + 2 * kReach);
  mark.BringToFront();
  mark.SetVisible(true);
  if (Index == 0) return;
  ColorPanel->SelFrame[0].BringToFront();
  ColorPanel->SelColor[0].BringToFront();
}

/// Within its border, in the one of black and white that is seen on it.
void MarkSwatch(int index) {
  SwatchPanel->Marked = std::clamp(index, 0, SwatchCount());
  const auto marked = static_cast<size_t>(SwatchPanel->Marked);
  const bool is_free = marked == SwatchPanel->Swatch.size();
  BringIntoView(SwatchPanel->Marked);
  const Pixel ground = ToPixel(is_free ? SystemColor::ButtonFace : SwatchPanel->Swatch[marked].BackColor);
  OutlineMark& mark = SwatchPanel->FocusMark;
  mark.SetForeColor(ToColor(ReadableInk(ground, ground)));
  SwatchPanel->PlaceMark();
  mark.SetVisible(true);
  SwatchPanel->SwatchScroll.SetAccessibleName(is_free ? kAddSwatch : SwatchPanel->Swatch[marked].ToolTipText);
}

void UseSwatch(int16_t Shift) {
  if (SwatchPanel->Marked == SwatchCount()) return OpenNewSwatch();
  Swatch_MouseDown(SwatchPanel->Marked, Shift == kShift ? kRightButton : kLeftButton);
}

}  // namespace

void WirePanelKeys() {
  for (int16_t i = 0; i < ColorPanel->SelColor.Count(); ++i) {
    ColorPanel->SelColor[i].SetTakesTab();
    ColorPanel->SelColor[i].OnGotFocus = [i] { MarkColor(i); };
    ColorPanel->SelColor[i].OnLostFocus = [] {
      if (ColorPanel) ColorPanel->FocusMark.SetVisible(false);
    };
  }
  SwatchPanel->SwatchScroll.SetTakesTab();
  SwatchPanel->SwatchScroll.OnGotFocus = [] { MarkSwatch(SwatchPanel->Marked); };
  SwatchPanel->SwatchScroll.OnLostFocus = [] {
    if (!SwatchPanel) return;
    SwatchPanel->FocusMark.SetVisible(false);
    SwatchPanel->SwatchScroll.SetAccessibleName(kAddSwatch);
  };
}

void SelColor_KeyDown(int16_t Index, int16_t KeyCode, int16_t Shift) {
  if (Shift != 0) return;
  if (KeyCode == kKeySpace) SelColor_Click(Index);
  if (KeyCode == kKeyEnter) FireEvent(ColorPanel->OnEditColor, Index);
  if (KeyCode >= kKeyLeft && KeyCode <= kKeyDown) ColorPanel->SelColor[1 - Index].SetFocus();
}

void SwatchScroll_KeyDown(int16_t KeyCode, int16_t Shift) {
  const int marked = SwatchPanel->Marked;
  if ((KeyCode == kKeySpace || KeyCode == kKeyEnter) && (Shift == 0 || Shift == kShift)) UseSwatch(Shift);
  if (Shift != 0) return;
  if (KeyCode == kKeyLeft) MarkSwatch(marked - 1);
  if (KeyCode == kKeyRight) MarkSwatch(marked + 1);
  if (KeyCode == kKeyUp && marked >= kSwatchesInRow) MarkSwatch(marked - kSwatchesInRow);
  if (KeyCode == kKeyDown) MarkSwatch(marked + kSwatchesInRow);
  if (KeyCode == kKeyHome) MarkSwatch(0);
  if (KeyCode == kKeyEnd) MarkSwatch(SwatchCount());
}

}  // namespace zelvane
