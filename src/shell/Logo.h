#pragma once

#include <string>

#include "surface/forms/controls/Image.h"
#include "surface/forms/controls/Label.h"
#include "surface/forms/windows/DialogForm.h"

namespace zelvane {

/// The splash: stands above everything while the program starts, and tells how far that is. A click on it
/// asks for the start to hurry.
class LogoWindow final : public DialogForm {
 public:
  LogoWindow();

  Image Artwork;
  ControlArray<zelvane::Label> Label;  ///< the program's name, a motto, the version, a credit line
  zelvane::Label Message;              ///< what the start is doing

  /// Brings the window up in the middle of the screen and, once it is painted, holds everything for a second.
  void ShowCentred();
  bool IsHurried() const { return is_hurried_; }

 private:
  void Form_Load();
  void Form_Activate();
  bool is_hurried_ = false;
};

inline SingleWindow<LogoWindow> Logo;

/// While the splash is up, it says so for a second; one that was clicked doesn't wait.
void SetSplashMessage(const std::string& text);

/// "Version " with the major and the minor number.
std::string VersionText();

}  // namespace zelvane
