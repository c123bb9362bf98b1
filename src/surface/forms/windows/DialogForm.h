#pragma once

#include <optional>
#include <string>

#include "surface/forms/windows/Form.h"

namespace zelvane {

/// A window that asks: without a title bar of the desktop, above the window that it's raised from. Return
/// presses its default button. A held key counts once, and not at all where it was pressed elsewhere.
class DialogForm : public Form {
 public:
  explicit DialogForm(const std::string& name);

  /// Shows it, lets the program's other windows take no input, and returns once it is hidden or unloaded. The
  /// end of the program unloads it. On return the form may be gone.
  void ShowModal();
  /// The system's active window is this one.
  bool IsActive() const;

 private:
  class View;
};

/// The window that a dialog is raised from: the program's active one; while another program has the keyboard,
/// the main window. Null where nothing of the program is seen.
QWidget* OwnerOfDialogs();

/// The place of a window on the screen with its frame, in twips.
struct WindowPlace {
  double left = 0, top = 0, width = 0, height = 0;
  std::string caption;
};
/// That of `OwnerOfDialogs`.
std::optional<WindowPlace> ActiveWindowPlace();

/// Has the system drag the window, from a press on it on.
void DragWindow(Form& form);
/// Above all other windows of the screen, or no more so.
void SetTopMost(Form& form, bool on);

}  // namespace zelvane
