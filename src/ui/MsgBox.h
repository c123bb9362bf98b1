#pragma once

#include <cstdint>
#include <string>

namespace zelvane {

/// Answers of `MsgBox`.
enum MsgResults : int16_t {
  kAnswerOk = 1,
  kAnswerCancel = 2,
  kAnswerAbort = 3,
  kAnswerRetry = 4,
  kAnswerIgnore = 5,
  kAnswerYes = 6,
  kAnswerNo = 7,
};

/// Tells or asks the user, and waits. `Buttons` = button set + 16 x icon + 256 x default button
/// (`ShowMessage` tells the sets and icons). Without a title the message bears the program's name.
int16_t MsgBox(const std::string& Prompt, int Buttons, const std::string& Title = "");

}  // namespace zelvane
