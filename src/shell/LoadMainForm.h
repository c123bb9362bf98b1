#pragma once

namespace zelvane {

/// Builds the interface, shows the main window and, once it is on the screen, opens a picture that the start
/// was given.
void MDIForm_Load();

}  // namespace zelvane
