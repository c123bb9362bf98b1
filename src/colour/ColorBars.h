#pragma once

#include <cstdint>

#include "colour/ColorPanel.h"

namespace zelvane {

/// Makes the panel's controls do what they are for. Called once the panel stands; the dialog of a higher
/// floor goes into `OnEditColor`.
void WireColorPanel();

/// Brings markers, numbers, the selected label and the bars in line after a change of a colour: from the
/// label's colour, or while a marker is dragged from the markers.
void SetColorBars();
/// Which label the bars and numbers edit: 0 foreground, 1 background.
int16_t GetSelectedColor();
/// Paints the strip from the foreground to the background colour.
void PaintGradient();
/// Paints a ramp where it isn't the one that stands on the surface.
void PaintColorBar(RampSurface& surface, const Color& left, const Color& right);
/// Takes the three numbers into the selected colour; those above 255 count as 255.
void ApplyColorNumbers();
/// Has the active document, if there is one, follow the current colours.
void SyncDocumentColors();

// Pointer positions are in pixels of what was pressed.
void ColorScroll_MouseDown(int16_t Index, Single X);
void MoveColorMarker(int16_t Index, Single X);
void ColorScroll_MouseUp();
void ColorBar_MouseDown(int16_t Index, Single X);
void ColorBar_MouseMove(int16_t Index, Single X);
void SelColor_Click(int16_t Index);
void Gradient_MouseDown(int16_t Button, Single X, Single Y);
/// Exchanges the two current colours.
void ShiftColors_Click();
/// Back to black on white.
void RestoreColors_Click();

}  // namespace zelvane
