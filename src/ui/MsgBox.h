#pragma once

#include <cstdint>
#include <string>

namespace zelvane {

/// Answers of `MsgBox`; 0 where nobody has given one.
enum MsgResults : int16_t {
  kNoAnswer = 0,
  kAnswerOk = 1,
  kAnswerCancel = 2,
  kAnswerAbort = 3,
  kAnswerRetry = 4,
  kAnswerIgnore = 5,
  kAnswerYes = 6,
  kAnswerNo = 7,
};

/// `Buttons` of `MsgBox`: the sum of a set of buttons, an icon and which of the buttons is the default.
enum MsgStyles : int16_t {
  kOkOnly = 0,
  kOkCancel = 1,
  kAbortRetryIgnore = 2,
  kYesNoCancel = 3,
  kYesNo = 4,
  kRetryCancel = 5,

  kStopIcon = 16,
  kQuestionIcon = 32,
  kExclamationIcon = 48,
  kInformationIcon = 64,

  kSecondIsDefault = 256,
  kThirdIsDefault = 512,
};

/// Tells or asks the user, and waits for the answer: `MsgBox(text, kYesNo + kQuestionIcon)`. Lines end with
/// CR LF. Without a title the message bears that of the message object.
int16_t MsgBox(const std::string& Prompt, int Buttons, const std::string& Title = "");

}  // namespace zelvane
