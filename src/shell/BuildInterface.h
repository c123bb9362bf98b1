#pragma once

namespace zelvane {

class MainWindow;

/// Makes the interface whole: option bars into the top bar, edges of the panels, tool settings, first
/// colours.
void BuildInterface(MainWindow& window);

}  // namespace zelvane
