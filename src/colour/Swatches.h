#pragma once

#include <cstdint>
#include <string>

namespace zelvane {

/// Makes the panel's controls do what they are for. Called once the panel stands.
void WireSwatchPanel();

/// Fills the panel from the data file; rows that can't be read are passed over.
void LoadSwatches();
/// Adds a swatch of the foreground colour behind the others. It isn't stored yet.
void AddSwatch(const std::string& name);
/// Writes what the panel holds to the data file, in which rows that aren't of this panel stay as they are.
/// A failure is told, and the panel keeps its swatches for the next time.
void SaveSwatches();
/// Tries once more what `SaveSwatches` failed to do, without a word.
void StoreLateSwatches();

/// Disables the main window and asks for the name of a new swatch.
void OpenNewSwatch();

/// Places the grid from the scroll bar's value, which counts rows.
void ScrollSwatchPanel();
/// Scrolls no further than it takes to see that swatch, or the place behind the last one.
void BringIntoView(int index);
void Swatch_MouseDown(int Index, int16_t Button);

}  // namespace zelvane
