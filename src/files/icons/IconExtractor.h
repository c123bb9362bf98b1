#pragma once

#include <string>

#include "surface/codecs/IconLibrary.h"
#include "surface/forms/controls/CommandButton.h"
#include "surface/forms/controls/Label.h"
#include "surface/forms/controls/ScrollBar.h"
#include "surface/forms/picture/PictureSurface.h"
#include "surface/forms/windows/DialogForm.h"

namespace zelvane {

/// Shows the icons of a program file one at a time and makes documents of them. Hides when it loses the
/// keyboard, but for its own file window, and is only hidden until the program ends.
class IconExtractorWindow final : public DialogForm {
 public:
  IconExtractorWindow();

  Label Background;        ///< what the rest stands on
  PictureSurface IconPic;  ///< the icon, on the desktop's colour for windows
  Label lblDumb, lblNumIcons;
  ScrollBar IconScroll;  ///< which icon, from 0
  Label lblCurrentIcon;  ///< the same from 1
  CommandButton openButton, selectButton, closeButton;

  std::string IconFile;
  int32_t IconCount = 0;
  bool ChoosingFile = false;  ///< the file window is up

  /// Lists the icons of `IconFile` and shows the first.
  void ListIcons();

 private:
  void Form_Load();
  void WireEvents();
  void LayOut();
  std::string AskForFile();
  void openButton_Click();
  void selectButton_Click();
  void closeButton_Click();
  void IconScroll_Change();
  void ClearIcon();
  void Form_QueryUnload(bool& Cancel);

  IconLibrary Icons;
};

inline SingleWindow<IconExtractorWindow> IconExtractor;

}  // namespace zelvane
