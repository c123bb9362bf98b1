#pragma once

#include "surface/forms/controls/CommandButton.h"
#include "surface/forms/controls/Image.h"
#include "surface/forms/picture/GroundLabel.h"
#include "surface/forms/windows/DialogForm.h"

namespace zelvane {

/// Shades a surface from the colour of the three components down to black, in 85 bands, each 3 darker than
/// the one before; the first is 3 darker than the colour. `direction`: `GradientDirections`.
void PaintFade(Canvas& surface, int red, int green, int blue, int16_t direction);

/// Tells of the program and leads to its makers. It goes as soon as another window has the keyboard.
class AboutWindow final : public DialogForm {
 public:
  AboutWindow();

  PictureSurface Background;
  Image Emblem;
  Label lblTitle, lblVersion;
  GroundLabel lblDescription, lblDisclaimer;
  GroundLabel EmailLink, WebLink;  ///< each opens what its caption tells
  CommandButton cmdOK, cmdSysInfo;

  void ShowCentred();

 private:
  void Form_Load();
  void WireEvents();
  void LayOut();
  void Form_Deactivate();
  void EmailLink_Click();
  void WebLink_Click();
  void StartSysInfo();
  void Tell(const char* message);
  bool tells_ = false;
};

inline SingleWindow<AboutWindow> frmAbout;

}  // namespace zelvane
