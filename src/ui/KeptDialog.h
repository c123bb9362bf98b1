#pragma once

#include "surface/forms/windows/Form.h"

/// What dialogs have in common that disable the main window while they are shown, and are hidden rather than
/// unloaded, so that they keep what they hold.
namespace zelvane {

/// Takes the main window's corner.
void PlaceAtMain(Form& dialog);
/// Hides the dialog; the main window takes input again and has the keyboard.
void ReturnToMain(Form& dialog);

}  // namespace zelvane
