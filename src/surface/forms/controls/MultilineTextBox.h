#pragma once

#include <functional>
#include <string>

#include "surface/forms/controls/Control.h"
#include "surface/forms/controls/TextFont.h"
#include "surface/raster/Rect.h"

namespace zelvane {

class LinesLayout;

/// A box for typing several lines, without a frame or a margin: its text begins in its corner. It never
/// scrolls or wraps; whoever placed it gives it the size of its text.
class MultilineTextBox : public Control, public FontProperties {
 public:
  MultilineTextBox(Control& parent, const std::string& name);

  /// Lines are parted by "\n".
  std::string Text() const;
  /// Fires `OnChange` where the text is another one. What was typed before can't be brought back by undoing.
  void SetText(const std::string& text);
  /// `Text`, with what an input method is still composing at the caret.
  std::string ShownText() const;
  void SetForeColor(Color color);
  void SetBackColor(Color color);

  /// Letters are shown that far to the left of the box's edge, its ground isn't.
  void SetOverhang(int units);

  /// Where the caret is, in units of the box.
  Rect Caret() const;

  /// What is shown has become another text.
  std::function<void()> OnChange;
  std::function<void()> OnCaretMove;

 protected:
  void FontChanged() override;
  int LeftReach() const override { return overhang_; }

 private:
  class Editor;
  Editor* Edit() const;
  LinesLayout* layout_;
  int overhang_ = 0;
};

}  // namespace zelvane
