#include "shell/Logo.h"

#include <chrono>
#include <thread>

#include "shell/Build.h"
#include "shell/state/State.h"
#include "surface/forms/windows/EventLoop.h"
#include "surface/raster/Units.h"
#include "surface/system/desktop/Screen.h"

namespace zelvane {
namespace {

constexpr int kWidth = 480, kHeight = 280;  // pixels, those of the artwork
constexpr int kLeft = 32;
constexpr Single kNameSize = 33, kMottoAbove = 2;  // points; the motto's above those of the desktop's font
constexpr Single kTop = 26, kBottom = 22, kGap = 8;
constexpr Color kPale = RGB(198, 214, 245);
constexpr int kLongestPaintMs = 500;

/// Across the window, as its texts differ in length. Yields where the next one below begins.
Single PlaceText(Label& label, Single top) {
  label.Move(kLeft, top, kWidth - 2 * kLeft, label.NaturalHeight());
  return top + label.Height() + kGap;
}

}  // namespace

LogoWindow::LogoWindow()
    : DialogForm("Logo"),
      Artwork(*this, "Artwork", kWidth, kHeight),
      Label(4, Artwork, "Label"),
      Message(Artwork, "Message") {
  Form_Load();
}

void LogoWindow::Form_Load() {
  SetCaption("Zelvane");
  SetWidth(kWidth * kTwipsPerPixel);
  SetHeight(kHeight * kTwipsPerPixel);
  Artwork.SetIcon("splash");
  Label[0].SetFontSize(kNameSize);
  Label[0].SetFontBold(true);
  Label[1].SetFontSize(Label[1].FontSize() + kMottoAbove);
  Label[1].SetCaption("Exact to the pixel");
  Label[2].SetCaption(VersionText());
  Label[3].SetCaption("Made by the Zelvane developers");
  Single top = kTop;
  for (int i : {0, 1, 2}) top = PlaceText(Label[i], top);
  top = kHeight - kBottom - Message.NaturalHeight() - kGap - Label[3].NaturalHeight();
  PlaceText(Message, PlaceText(Label[3], top));
  const auto hurry = [this](int16_t, int16_t, Single, Single) { is_hurried_ = true; };
  Artwork.OnMouseDown = hurry;
  for (int i = 0; i < Label.Count(); ++i) {
    Label[i].SetForeColor(i == 0 ? kWhite : kPale);
    Label[i].OnMouseDown = hurry;
  }
  Message.SetForeColor(kWhite);
  Message.OnMouseDown = hurry;
  RoundWindow(*this);
}

/// Nothing else may run meanwhile.
void LogoWindow::Form_Activate() {
  SetTopMost(*this, true);
  Update();
  std::this_thread::sleep_for(std::chrono::seconds(1));
}

void LogoWindow::ShowCentred() {
  Move(static_cast<Single>((Screen::Width() - Width()) / 2),
       static_cast<Single>((Screen::Height() - Height()) / 2));
  bool is_painted = false;
  OnPaint = [&] { is_painted = true; };
  ShowAside();
  RunEventsUntil([&] { return is_painted || !Logo.IsLoaded(); }, kLongestPaintMs);
  if (!Logo.IsLoaded()) return;
  OnPaint = nullptr;
  Form_Activate();
}

void SetSplashMessage(const std::string& text) {
  if (!State.ShowSplash || !Logo.IsLoaded()) return;
  Logo->Message.SetCaption(text);
  Logo->Message.Update();
  if (!Logo->IsHurried()) WaitSeconds(1);
}

std::string VersionText() {
  return "Version " + std::to_string(kMajorVersion) + "." + std::to_string(kMinorVersion);
}

}  // namespace zelvane
