#pragma once

namespace zelvane {

/// Sets the numeric tool settings to what they are at start, and gives their boxes the same limits and
/// values.
void FillOptions();

/// Gives the keyboard to the active picture, or to the text that is being typed on it; where there's none, to
/// the option bar. A number that was being
/// typed is thereby taken.
void ReturnToPicture();

/// Makes the controls of the option bars do what they are for.
void WireOptionBars();

}  // namespace zelvane
