#pragma once

#include <functional>
#include <string>

#include "surface/forms/controls/CommandButton.h"
#include "surface/forms/controls/Label.h"
#include "surface/forms/windows/DialogForm.h"

namespace zelvane {

/// Offers to stop a program that the main window waits for. It leaves the keyboard to that program; closing
/// it waits on.
class StopDialog final : public DialogForm {
 public:
  StopDialog();

  /// Shows it for the program of that name; `stop` is called where the person wants that.
  void Offer(const std::string& name, std::function<void()> stop);

  Label lblText;
  CommandButton Command1;

 private:
  void LayOut();
};

inline SingleWindow<StopDialog> frmStop;

}  // namespace zelvane
