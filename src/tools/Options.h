#pragma once

namespace zelvane {

/// Sets the numeric tool settings to what they are at start, and gives their boxes the same limits and
/// values.
void FillOptions();

/// Makes the controls of the option bars do what they are for.
void WireOptionBars();

}  // namespace zelvane
