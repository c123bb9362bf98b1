#include "imageops/effects/frmStop.h"

#include <algorithm>
#include <utility>

#include "surface/forms/windows/MdiForm.h"

namespace zelvane {
namespace {

constexpr Single kMargin = 180, kLeastText = 3000;  // twips

}  // namespace

StopDialog::StopDialog()
    : DialogForm("frmStop", DialogLook::Titled),
      lblText(*this, "lblText"),
      Command1(*this, "Command1", "&Stop") {
  SetCaption(" Effect");
  SetScaleMode(Scale::Twips);
  SetKeyPreview(true);
  SetResizable(false);
  OnKeyDown = [this](int16_t KeyCode, int16_t) {
    if (KeyCode == kKeyEscape) Unload();
  };
}

void StopDialog::Offer(const std::string& name, std::function<void()> stop) {
  lblText.SetCaption("\"" + name + "\" is still running.");
  Command1.OnClick = std::move(stop);
  LayOut();
  ShowAside();
}

/// At the main window's corner.
void StopDialog::LayOut() {
  const Single text = std::max(lblText.NaturalWidth(), kLeastText), row = lblText.NaturalHeight();
  lblText.Move(kMargin, kMargin, text, row);
  const Single width = Command1.NaturalWidth(), top = kMargin + row + kMargin;
  Command1.Move(kMargin + text - width, top, width, Command1.NaturalHeight());
  SetWidth(kMargin + text + kMargin);
  SetHeight(top + Command1.Height() + kMargin);
  if (const MdiForm* main = MdiForm::Main()) Move(main->Left(), main->Top());
}

}  // namespace zelvane
