#include "ui/MsgBox.h"

#include "surface/forms/windows/Dialogs.h"

namespace zelvane {

int16_t MsgBox(const std::string& Prompt, int Buttons, const std::string& Title) {
  const int default_button = Buttons / 256;
  const int icon = Buttons % 256 / 16;
  return ShowMessage(Prompt, Buttons % 16, icon, default_button, Title.empty() ? "Zelvane" : Title);
}

}  // namespace zelvane
