#pragma once

#include "shell/MainForm.h"

namespace zelvane {

/// Gives the main window's parts the keys that they have besides the menus', and every other window as it's
/// made.
void WireKeys(MainWindow& window);

}  // namespace zelvane
