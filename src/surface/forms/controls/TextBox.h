#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "surface/forms/controls/Control.h"

namespace zelvane {

/// A box for typing one line.
class TextBox : public Control {
 public:
  TextBox(Control& parent, const std::string& name);

  std::string Text() const;
  /// Fires `OnChange` where the text is another one.
  void SetText(const std::string& text);
  void SelectAll();
  void SetForeColor(Color color);
  void SetBackColor(Color color);

  /// The caret, or where the selection begins, in characters from 0.
  int SelStart() const;
  int SelLength() const;
  /// Puts the caret there and selects nothing.
  void SetSelStart(int start);
  void SetSelLength(int length);
  int16_t Alignment() const { return alignment_; }
  void SetAlignment(int16_t alignment);
  /// How many characters the user can type.
  void SetMaxLength(int length);
  /// A locked box shows its text and takes no changes by the user.
  bool Locked() const { return locked_; }
  void SetLocked(bool locked);
  /// A press that brings the keyboard leaves all of the text selected, unless it drags out a selection.
  void SetSelectsOnEntry(bool selects) { selects_on_entry_ = selects; }
  bool SelectsOnEntry() const { return selects_on_entry_; }
  /// Makes the font as small as `text` needs to be seen whole beside the caret. The box has its size.
  void FitFont(const std::string& text);

  std::function<void()> OnChange;
  /// A key that makes a character is about to work, after its `OnKeyDown`: the character's code, 8 for
  /// Backspace, 13 for Enter, 27 for Esc, 1 to 26 for Ctrl with a letter. Another code puts that character in
  /// its place, 0 drops the key. Selecting all by keys is the desktop's own and makes no character. What an
  /// input method, Shift+Insert, the middle button or a drop brings comes here character by character.
  std::function<void(int16_t& KeyAscii)> OnKeyPress;

 private:
  int16_t alignment_ = 0;
  bool locked_ = false, selects_on_entry_ = false;
};

}  // namespace zelvane
