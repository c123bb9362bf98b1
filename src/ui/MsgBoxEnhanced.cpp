#include "ui/MsgBoxEnhanced.h"

#include <initializer_list>
#include <optional>

#include "surface/forms/windows/Application.h"
#include "surface/forms/windows/DialogForm.h"
#include "surface/forms/windows/EventLoop.h"
#include "surface/raster/FailingStep.h"
#include "surface/system/desktop/Screen.h"
#include "ui/MessageBox.h"

namespace zelvane {
namespace {

constexpr size_t kLongestOwnerTitle = 255;

/// There is one box at a time.
void AwaitOthers() {
  while (MessageBox.IsLoaded()) {
    if (!MessageBox->IsAwaited()) MessageBox->Unload();
    if (MessageBox.IsLoaded()) WaitForEvents();
  }
}

std::string FirstOf(std::initializer_list<std::string> titles) {
  for (const std::string& title : titles) {
    if (!title.empty()) return title;
  }
  return {};
}

std::string TitleOf(const std::optional<WindowPlace>& owner) {
  return owner ? owner->caption.substr(0, kLongestOwnerTitle) : "";
}

/// Top left corner of the box.
void Place(MessageWindow& box, const MsgBoxProperties& properties, const std::optional<WindowPlace>& owner) {
  double left = properties.Left(), top = properties.Top();
  if (properties.StartUpPosition() == kCentredOnScreen) {
    left = Centred(0, Screen::Width(), box.Width());
    top = Centred(0, Screen::Height(), box.Height());
  } else if (properties.StartUpPosition() == kCentredOnWindow && owner) {
    left = Centred(owner->left, owner->width, box.Width());
    top = Centred(owner->top, owner->height, box.Height());
  }
  box.Move(static_cast<Single>(left), static_cast<Single>(top));
}

}  // namespace

int16_t MsgBoxEnhanced::MsgBox(const std::string& Prompt, int16_t Buttons, const std::string& Title) {
  AwaitOthers();
  const auto owner = ActiveWindowPlace();
  if (StartUpPosition() == kCentredOnWindow && !owner) SetStartUpPosition(kCentredOnScreen);
  MessageWindow* box = nullptr;
  if (!Attempt([&] { box = &MessageBox.Load(); })) return kNoAnswer;
  Attempt([&] { box->TakeLooks(*this); });
  Attempt([&] {
    box->SetTexts(FirstOf({Title, DefaultTitle(), TitleOf(owner), "Message"}), Prompt, SplitStyle(Buttons));
  });
  Place(*box, *this, owner);
  if (SoundBeep()) Beep();
  return Modal() ? box->Ask() : (box->Show(), int16_t{kNoAnswer});
}

int16_t MsgBox(const std::string& Prompt, int Buttons, const std::string& Title) {
  return MessageObject.MsgBox(Prompt, static_cast<int16_t>(Buttons), Title);
}

}  // namespace zelvane
