#include "ui/MessageBox.h"

#include <algorithm>
#include <memory>

#include "surface/raster/Units.h"
#include "surface/system/desktop/Clipboard.h"
#include "surface/system/desktop/Screen.h"
#include "ui/Gradients.h"

namespace zelvane {
namespace {

constexpr int kMostButtons = 4, kLines = 3;
constexpr int kSecond = 1000, kUpkeep = 100;                                            // milliseconds
constexpr int kIconSide = 32, kControlBoxSide = 14;                                     // logical pixels
constexpr Single kTitleLeft = 75, kTitleTop = 60, kControlBoxTop = 60, kLineStep = 15;  // twips
constexpr Color kLineColours[kLines] = {RGB(192, 192, 192), RGB(128, 128, 128), RGB(64, 64, 64)};

Single Twips(double value) {
  return static_cast<Single>(value);
}

const char* IconName(int index) {
  constexpr const char* kNames[] = {"stop", "question", "exclamation", "information"};
  return index >= 0 && index < 4 ? kNames[index] : "";
}

/// The key of the underlined letter; 0 for a caption without one.
int16_t KeyOf(const std::string& caption) {
  const size_t mark = caption.find('&');
  return mark == std::string::npos || mark + 1 == caption.size() ? int16_t{0} : int16_t{caption[mark + 1]};
}

}  // namespace

MessageWindow::MessageWindow()
    : DialogForm("MessageBox"),
      TopHeading(*this, "TopHeading"),
      TopCaption(TopHeading, "TopCaption"),
      ControlBoxUp(TopHeading, "ControlBoxUp", kControlBoxSide),
      ControlBoxDn(TopHeading, "ControlBoxDn", kControlBoxSide),
      Background(*this, "Background"),
      Icon(Background, "Icon", kIconSide),
      HLine(kLines, Background, "HLine"),
      MsgText(Background, "MsgText"),
      MsgButton(kMostButtons, Background, "MsgButton"),
      Timer1(kSecond),
      Timer2(kUpkeep) {
  for (Control* scale : {static_cast<Control*>(this), static_cast<Control*>(&TopHeading),
                         static_cast<Control*>(&Background)}) {
    scale->SetScaleMode(Scale::Twips);
  }
  Form_Load();
  WireEvents();
}

void MessageWindow::Form_Load() {
  TopCaption.SetFontBold(true);
  ControlBoxUp.SetIcon("close");
  ControlBoxUp.SetAccessibleName("Close");
  ControlBoxDn.SetIcon("closepressed");
  ControlBoxDn.SetVisible(false);
  for (Image* image : {&ControlBoxUp, &Icon}) {
    const auto side = static_cast<Single>((image == &Icon ? kIconSide : kControlBoxSide) * kTwipsPerPixel);
    image->SetWidth(side);
    image->SetHeight(side);
  }
  Icon.Move(kMsgIconLeft, kMsgIconTop);
  for (int i = 0; i < kLines; ++i) HLine[i].SetBackColor(kLineColours[i]);
  for (int i = 0; i < kMostButtons; ++i) {
    MsgButton[i].SetEnabled(false);
    MsgButton[i].SetVisible(false);
  }
  SetKeyPreview(true);
}

void MessageWindow::WireEvents() {
  OnActivate = [this] { Form_Activate(); };
  OnKeyDown = [this](int16_t KeyCode, int16_t Shift) { Form_KeyDown(KeyCode, Shift); };
  OnKeyUp = [this](int16_t KeyCode, int16_t) { Form_KeyUp(KeyCode); };
  OnQueryUnload = [this](bool&, UnloadModes mode) {
    if (mode == kUnloadByUser) MsgResult = kAnswerCancel;
  };
  for (int i = 0; i < kMostButtons; ++i) {
    MsgButton[i].OnClick = [this, i] { MsgButton_Click(i); };
    MsgButton[i].OnGotFocus = [this, i] { FocusButton = static_cast<int16_t>(i); };
  }
  ControlBoxUp.OnMouseDown = [this](auto...) { ControlBoxUp.SetIcon(ControlBoxDn.Icon()); };
  ControlBoxUp.OnMouseUp = [this](auto...) { Close(kAnswerCancel); };
  const auto drag = [this](int16_t Button, auto...) { Drag(Button); };
  TopCaption.OnMouseDown = Background.OnMouseDown = MsgText.OnMouseDown = Icon.OnMouseDown = drag;
  Timer1.OnTimer = [this] { Timer1_Timer(); };
  Timer2.OnTimer = [this] { Timer2_Timer(); };
}

void MessageWindow::TakeLooks(const MsgBoxProperties& properties) {
  Properties = properties;
  TopCaption.SetForeColor(Properties.ForeColorHeading());
  Background.SetBackColor(Properties.BackColorBody());
  MsgText.SetForeColor(Properties.ForeColorBody());
  MsgText.SetAlignment(Properties.TextAlignment());
  for (int i = 0; i < kMostButtons; ++i) MsgButton[i].SetBackColor(Properties.BackColorButtons());
}

void MessageWindow::SetTexts(const std::string& title, const std::string& prompt, const MsgBoxStyle& style) {
  const double screen_width = Screen::Width();
  IconIndex = static_cast<int16_t>(style.icon_index);
  const bool has_icon = IconIndex >= 0;
  Icon.SetIcon(IconName(IconIndex));
  SetCaption(title);
  TopCaption.SetRoom(WidestTitle(screen_width, Properties.ControlBox()), TopCaption.HeightOf(1));
  TopCaption.SetCaption(title);
  MsgText.SetRoom(WidestText(screen_width, has_icon), HighestText(Screen::WorkAreaHeight()));
  MsgText.SetCaption(prompt);
  SetButtons(style);
  const auto count = static_cast<int>(ButtonsOfSet(style.button_set).size());
  SetPlaces(LayOut({TopCaption.Width(), MsgText.Width(), MsgText.Height(), count, has_icon,
                    Properties.ControlBox(), Properties.TextAlignment(), screen_width}));
  ComeUp();
}

void MessageWindow::SetButtons(const MsgBoxStyle& style) {
  const std::vector<MsgBoxButton>& buttons = ButtonsOfSet(style.button_set);
  for (size_t i = 0; i < buttons.size(); ++i) {
    CommandButton& button = MsgButton[static_cast<int>(i)];
    button.SetCaption(buttons[i].caption);
    button.SetEnabled(true);
  }
  for (int i = 0; i < kMostButtons; ++i) {
    MsgButton[i].SetVisible(MsgButton[i].Enabled());
    MsgButton[i].SetTabStop(MsgButton[i].Enabled());
    MsgButton[i].SetDefault(MsgButton[i].Enabled() && i == style.default_button);
  }
}

void MessageWindow::SetPlaces(const MsgBoxPlaces& places) {
  const Single width = Twips(RoundHalfEven(places.width)), heading = Twips(kMsgHeadingHeight);
  SetWidth(width);
  SetHeight(Twips(places.height));
  TopHeading.Move(0, 0, width, heading);
  // A tall font needs the room above the told place as well.
  TopCaption.Move(kTitleLeft, std::min(kTitleTop, (heading - TopCaption.Height()) / 2));
  ControlBoxUp.Move(Twips(places.control_box_left), kControlBoxTop);
  ControlBoxUp.SetVisible(Properties.ControlBox());
  ControlBoxUp.SetEnabled(Properties.ControlBox());
  Background.Move(0, heading, width, Twips(places.height) - heading);
  for (int i = 0; i < kLines; ++i) {
    HLine[i].Move(0, static_cast<Single>(i) * kLineStep, width, kLineStep);
    HLine[i].SetVisible(Properties.HeadingType() == 1);
  }
  MsgText.Move(Twips(places.text_left), Twips(places.text_top));
  for (int i = 0; i < kMostButtons; ++i) {
    MsgButton[i].Move(Twips(places.first_button_left + i * kMsgButtonStep), Twips(places.button_top),
                      Twips(kMsgButtonWidth), Twips(kMsgButtonHeight));
  }
}

/// All that is seen stands before the window does.
void MessageWindow::ComeUp() {
  SetTopMost(*this, Properties.KeepOnTop());
  PaintBackground();
  PaintHeading(true);
  FocusDefault();
  Timer2.SetEnabled(true);
}

void MessageWindow::Form_Activate() {
  if (Properties.KeepOnTop()) SetTopMost(*this, true);
  PaintBackground();
  FocusDefault();
  if (Properties.TimerSeconds() > 0) {
    Timer1.SetEnabled(true);
    ElapsedSeconds = 0;
  }
  Timer2_Timer();
  Timer2.SetEnabled(true);
}

void MessageWindow::FocusDefault() {
  for (int i = kMostButtons - 1; i >= 0; --i) {
    if (MsgButton[i].Default()) FocusButton = static_cast<int16_t>(i);
  }
  if (MsgButton[FocusButton].Enabled()) MsgButton[FocusButton].SetFocus();
}

int16_t MessageWindow::Ask() {
  // The window may have gone when the answer is read.
  const auto answer = std::make_shared<int16_t>(kNoAnswer);
  OnUnload = [this, answer] { *answer = MsgResult; };
  is_awaited_ = true;
  ShowModal();
  return *answer;
}

void MessageWindow::Form_KeyDown(int16_t KeyCode, int16_t Shift) {
  if (KeyCode == kKeyEscape) escape_is_down_ = true;
  if (KeyCode == kKeyC && Shift == kCtrl) Clipboard::SetText(MsgText.Caption());
  if (Shift != 0) return;
  for (int i = 0; i < kMostButtons; ++i) {
    if (MsgButton[i].Enabled() && KeyOf(MsgButton[i].Caption()) == KeyCode) return MsgButton_Click(i);
  }
}

/// The Esc that brought the question up doesn't answer it.
void MessageWindow::Form_KeyUp(int16_t KeyCode) {
  if (KeyCode == kKeyEscape && escape_is_down_) Close(kAnswerCancel);
}

void MessageWindow::MsgButton_Click(int index) {
  for (int set = kOkOnly; set <= kRetryCancel; ++set) {
    for (const MsgBoxButton& button : ButtonsOfSet(set)) {
      if (MsgButton[index].Caption() == button.caption) return Close(button.code);
    }
  }
  Unload();
}

void MessageWindow::Timer1_Timer() {
  if (++ElapsedSeconds >= Properties.TimerSeconds()) Close(kNoAnswer);
}

/// Heading and focus follow the desktop. What looks as it did isn't painted again.
void MessageWindow::Timer2_Timer() {
  PaintHeading(IsActive());
  CommandButton& button = MsgButton[FocusButton];
  if (IsActive() && button.Enabled() && !button.HasFocus()) button.SetFocus();
}

void MessageWindow::PaintBackground() {
  if (!Properties.GradientPaint()) return;
  if (Properties.GradientDirection() <= kRightToLeft)
    FillGradient(Background, Properties.BackColorBody(), Properties.GradientDirection(), false, false);
  else
    FillGradientDirectional(Background, Properties.BackColorBody(), Properties.GradientDirection());
  Background.Refresh();
}

void MessageWindow::PaintHeading(bool is_active) {
  const Color colour = is_active ? Properties.BackColorHeading() : SystemColor::InactiveCaption;
  const HeadingLook look{is_active, ToPixel(colour)};
  if (look == heading_) return;
  heading_ = look;
  if (Properties.SolidColorHeading())
    TopHeading.SetBackColor(colour);
  else
    FillGradient(TopHeading, colour, kLeftToRight, true, is_active);
  TopHeading.Refresh();
}

void MessageWindow::Drag(int16_t Button) {
  if (Properties.Moveable() && Button == kLeftButton) DragWindow(*this);
}

void MessageWindow::Close(int16_t result) {
  MsgResult = result;
  Unload();
}

}  // namespace zelvane
