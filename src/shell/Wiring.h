#pragma once

namespace zelvane {

class MainWindow;

/// Makes the controls of the panels do what they are for: the one place where their events meet the routines
/// of higher floors.
void WirePanels(MainWindow& window);

}  // namespace zelvane
