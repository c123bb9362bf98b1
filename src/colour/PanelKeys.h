#pragma once

#include <cstdint>

namespace zelvane {

/// Tab comes to the two current colours and to the swatches. Called once the panels stand.
void WirePanelKeys();

/// Space has the bars edit that colour, Enter opens the colour dialog for it, the arrows go to the other one.
void SelColor_KeyDown(int16_t Index, int16_t KeyCode, int16_t Shift);
/// The arrows, Home and End go from swatch to swatch, and to the free space behind the last one. Space and
/// Enter take the colour as the foreground one, with Shift as the background one; on the free space they add
/// a swatch.
void SwatchScroll_KeyDown(int16_t KeyCode, int16_t Shift);

}  // namespace zelvane
