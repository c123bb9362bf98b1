#pragma once

#include "ui/MsgBox.h"
#include "ui/MsgBoxProperties.h"

namespace zelvane {

/// The message object: how messages look, and the way to show one.
///
/// There is never more than one box. A message that comes up while another is being answered, from a timer
/// say, waits until that has its answer; one that nobody waits for gives way.
class MsgBoxEnhanced : public MsgBoxProperties {
 public:
  /// See `zelvane::MsgBox`. `kNoAnswer`: the count-down ran out, the box isn't modal, couldn't be made, or
  /// went with the program. With nothing of the program on the screen to be centred on, `StartUpPosition`
  /// becomes `kCentredOnScreen` for good.
  int16_t MsgBox(const std::string& Prompt, int16_t Buttons, const std::string& Title = "");
};

/// The one that all messages of the program go through. What is told before it is set up, or after it has
/// been released, comes in the class's own looks.
inline MsgBoxEnhanced MessageObject;

}  // namespace zelvane
