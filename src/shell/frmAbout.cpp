#include "shell/frmAbout.h"

#include <algorithm>
#include <string>

#include "shell/Build.h"
#include "shell/Logo.h"
#include "shell/MainForm.h"
#include "shell/state/State.h"
#include "surface/raster/Units.h"
#include "surface/system/desktop/Openers.h"
#include "ui/Gradients.h"
#include "ui/MsgBox.h"

namespace zelvane {
namespace {

constexpr int kWidth = 440, kMargin = 20, kGap = 12, kMostText = 1000;  // pixels
constexpr int kEmblemSide = 64;
constexpr Single kTitleSize = 20;  // points
constexpr int kBandPace = 3;
constexpr Color kLinkColor = RGB(158, 203, 255);

constexpr char kProgram[] = "Zelvane";
constexpr char kTitle[] = "Korvath";
constexpr char kDescription[] =
    "The Korvath program is designed to provide a wide variety of functions related to media files (i.e., "
    "pictures, videos, audios, DVDs).  These functions include individual viewing and playing, slideshow "
    "presentations and playlists.  In addition, media files can be accessed in easy-to-use formats, such as "
    "thumbnails.";
constexpr char kDisclaimer[] = "Comments and suggestions are welcome. Send them to:";

}  // namespace

void PaintFade(Canvas& surface, int red, int green, int blue, int16_t direction) {
  const auto first = [](int component) { return std::max(0, component - kBandPace); };
  FillGradient(surface, RGB(first(red), first(green), first(blue)), direction, false, false);
}

AboutWindow::AboutWindow()
    : DialogForm("frmAbout", DialogLook::Titled),
      Background(*this, "Background"),
      Emblem(Background, "Emblem", kEmblemSide),
      lblTitle(Background, "lblTitle", kTitle),
      lblVersion(Background, "lblVersion", VersionText()),
      lblDescription(Background, "lblDescription"),
      lblDisclaimer(Background, "lblDisclaimer"),
      EmailLink(Background, "EmailLink"),
      WebLink(Background, "WebLink"),
      cmdOK(Background, "cmdOK", "&OK"),
      cmdSysInfo(Background, "cmdSysInfo", "&System Info...") {
  Form_Load();
}

void AboutWindow::Form_Load() {
  SetCaption(" About Korvath");
  SetKeyPreview(true);
  lblTitle.SetFontSize(kTitleSize);
  lblTitle.SetFontBold(true);
  for (Label* label : {&lblTitle, &lblVersion}) label->SetForeColor(kBlack);
  Emblem.SetIcon("zelvane");
  lblDescription.SetCaption(kDescription);
  lblDisclaimer.SetCaption(kDisclaimer);
  EmailLink.SetCaption(kEmailAddress);
  WebLink.SetCaption(kWebAddress);
  for (GroundLabel* link : {&EmailLink, &WebLink}) link->SetForeColor(kLinkColor), link->SetLink();
  LayOut();
  Background.SetBackColor(kBlack);  // of what the bands leave over below
  PaintFade(Background, 255, 255, 255, kTopDown);
  for (CommandButton* button : {&cmdOK, &cmdSysInfo}) button->SetBackColor(State.AccentColor);
  cmdOK.SetDefault(true);
  cmdOK.SetFocus();
  WireEvents();
}

void AboutWindow::LayOut() {
  constexpr int kInside = kWidth - 2 * kMargin;
  Emblem.Move(kMargin, kMargin);
  const Single beside = Emblem.Left() + kEmblemSide + kGap;
  lblTitle.Move(beside, kMargin, kWidth - beside - kMargin, lblTitle.NaturalHeight());
  lblVersion.Move(beside, lblTitle.Top() + lblTitle.Height(), lblTitle.Width(), lblVersion.NaturalHeight());
  Single top = kMargin + kEmblemSide + kGap;
  for (GroundLabel* text : {&lblDescription, &lblDisclaimer, &EmailLink, &WebLink}) {
    text->SetRoom(kInside, kMostText);
    text->Move(kMargin, top);
    top += text->Height() + (text == &lblDescription || text == &WebLink ? kMargin : kGap / 2);
  }
  const Single height = cmdOK.NaturalHeight(), width = cmdSysInfo.NaturalWidth();
  cmdSysInfo.Move(kMargin, top, width, height);
  cmdOK.Move(kWidth - kMargin - width, top, width, height);
  SetWidth(kWidth * kTwipsPerPixel);
  SetHeight((top + height + kMargin) * kTwipsPerPixel);
  SetResizable(false);
  Background.Move(0, 0, kWidth, top + height + kMargin);
}

void AboutWindow::WireEvents() {
  OnDeactivate = [this] { Form_Deactivate(); };
  OnKeyDown = [this](int16_t KeyCode, int16_t) {
    if (KeyCode == kKeyEscape) Unload();
  };
  EmailLink.OnClick = [this] { EmailLink_Click(); };
  WebLink.OnClick = [this] { WebLink_Click(); };
  cmdOK.OnClick = [this] { Unload(); };
  cmdSysInfo.OnClick = [this] { StartSysInfo(); };
}

void AboutWindow::ShowCentred() {
  Move(MainForm->Left() + (MainForm->Width() - Width()) / 2,
       MainForm->Top() + (MainForm->Height() - Height()) / 2);
  Show();
}

void AboutWindow::Form_Deactivate() {
  if (!tells_) Unload();
}

void AboutWindow::EmailLink_Click() {
  if (!ComposeMail(EmailLink.Caption(), std::string(kProgram) + ", " + lblVersion.Caption()))
    Tell("A problem has occurred while trying to send an e-mail.");
}

void AboutWindow::WebLink_Click() {
  OpenWebAddress(WebLink.Caption());
}

void AboutWindow::StartSysInfo() {
  if (!ShowSystemInformation()) Tell("System Information Is Unavailable At This Time");
}

/// The window stays while its message has the keyboard.
void AboutWindow::Tell(const char* message) {
  tells_ = true;
  MsgBox(message, 0);
  if (!frmAbout.IsLoaded()) return;
  tells_ = false;
  Activate();
}

}  // namespace zelvane
