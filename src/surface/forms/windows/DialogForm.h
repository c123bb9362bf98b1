#pragma once

#include <functional>
#include <optional>
#include <string>

#include "surface/forms/windows/Form.h"

namespace zelvane {

/// How a dialog looks round its inside.
enum class DialogLook {
  Bare,   ///< nothing of the desktop's
  Titled  ///< the desktop's title bar with a close button
};

/// A window that asks, above the window that it's raised from. Return presses its default button; what Esc
/// does is the form's business. A held key counts once in a bare one, and not at all where it was pressed
/// elsewhere; in a titled one that goes for Return and Esc.
///
/// While the main window is disabled, it hands the keyboard on to the titled one that is shown.
class DialogForm : public Form {
 public:
  explicit DialogForm(const std::string& name, DialogLook look = DialogLook::Bare);

  void SetWidth(Single width) override;
  void SetHeight(Single height) override;
  /// Whether the user may size it, as at first. One that may not can't be maximised either.
  bool Resizable() const { return resizable_; }
  void SetResizable(bool resizable);

  /// Shows it, lets the program's other windows take no input, and returns once it is hidden or unloaded. The
  /// end of the program unloads it. On return the form may be gone.
  void ShowModal();
  /// Shows it and leaves the keyboard to the window that has it.
  void ShowAside();
  /// The system's active window is this one.
  bool IsActive() const;

 private:
  class View;
  void Size(const std::function<void()>& size);
  bool resizable_ = true;
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

/// Cuts the corners round: what is left of the window reaches from pixel (1, 1) to its size, its corners are
/// of ellipses of 40 by 40 pixels.
void RoundWindow(Form& form);
/// Has the system drag the window, from a press on it on.
void DragWindow(Form& form);
/// Above all other windows of the screen, or no more so.
void SetTopMost(Form& form, bool on);

}  // namespace zelvane
