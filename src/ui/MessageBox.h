#pragma once

#include <string>

#include "surface/forms/controls/CommandButton.h"
#include "surface/forms/controls/Image.h"
#include "surface/forms/controls/Timer.h"
#include "surface/forms/picture/GroundLabel.h"
#include "surface/forms/picture/PictureSurface.h"
#include "surface/forms/windows/DialogForm.h"
#include "ui/MsgBox.h"
#include "ui/MsgBoxLayout.h"
#include "ui/MsgBoxProperties.h"

namespace zelvane {

/// The window of a message: a drawn heading in place of a title bar, a shaded body with icon and text, and up
/// to four buttons. It is made for each message and unloaded by whatever closes it.
class MessageWindow final : public DialogForm {
 public:
  MessageWindow();

  int16_t MsgResult = kNoAnswer;  ///< code of the button that closed the box
  int16_t IconIndex = -1;         ///< counts from the stop icon at 0; -1 for none
  int16_t ElapsedSeconds = 0;     ///< of the count-down
  int16_t FocusButton = 0;        ///< the button that has the keyboard while the box is active

  PictureSurface TopHeading;
  GroundLabel TopCaption;
  Image ControlBoxUp, ControlBoxDn;  ///< the close box; the second bears its pressed look
  PictureSurface Background;
  Image Icon;
  ControlArray<PictureSurface> HLine;
  GroundLabel MsgText;
  ControlArray<CommandButton> MsgButton;
  IntervalTimer Timer1, Timer2;  ///< the count-down; upkeep of heading and focus

  /// Takes the looks. They stay what they are while the box is up.
  void TakeLooks(const MsgBoxProperties& properties);
  /// Fills the box and gives it the size that its texts need.
  void SetTexts(const std::string& title, const std::string& prompt, const MsgBoxStyle& style);
  /// Shows the box and waits; the code that closed it.
  int16_t Ask();
  /// Somebody waits for the answer.
  bool IsAwaited() const { return is_awaited_; }

 private:
  /// What the heading was painted by last.
  struct HeadingLook {
    bool is_active = false;
    Pixel colour = 0;
    friend bool operator==(const HeadingLook&, const HeadingLook&) = default;
  };

  void WireEvents();
  void SetButtons(const MsgBoxStyle& style);
  void SetPlaces(const MsgBoxPlaces& places);
  void Form_Load();
  void Form_Activate();
  void ComeUp();
  void FocusDefault();
  void Form_KeyDown(int16_t KeyCode, int16_t Shift);
  void Form_KeyUp(int16_t KeyCode);
  void MsgButton_Click(int index);
  void Timer1_Timer();
  void Timer2_Timer();
  void PaintBackground();
  void PaintHeading(bool is_active);
  void Drag(int16_t Button);
  void Close(int16_t result);

  MsgBoxProperties Properties;
  HeadingLook heading_;
  bool is_awaited_ = false, escape_is_down_ = false;
};

inline SingleWindow<MessageWindow> MessageBox;

}  // namespace zelvane
