#pragma once

namespace zelvane {

/// Makes the controls of the panels do what they are for: the one place where their events meet the routines
/// of higher floors.
void WirePanels();

}  // namespace zelvane
