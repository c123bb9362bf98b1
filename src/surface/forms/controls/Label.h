#pragma once

#include <string>

#include "surface/forms/controls/Control.h"

namespace zelvane {

enum Alignments : int16_t { kAlignLeft = 0, kAlignRight = 1, kAlignCentre = 2 };

/// A line of text, or a plain coloured field.
class Label : public Control {
 public:
  Label(Control& parent, const std::string& name, const std::string& caption = "");

  const std::string& Caption() const { return caption_; }
  void SetCaption(const std::string& caption);
  int16_t Alignment() const { return alignment_; }
  void SetAlignment(int16_t alignment);
  /// The colour behind the text; until it is set the parent shows through.
  Color BackColor() const { return back_color_; }
  void SetBackColor(Color color);
  void SetForeColor(Color color);
  /// A thin border round the label.
  void SetBorder(bool border);
  /// The label takes the size of its text, now and with each new caption.
  void SetAutoSize(bool auto_size);
  /// A caption that is too long for the label ends in dots, and shows whole as its tooltip.
  void SetShortens(bool shortens);
  void SetWidth(Single width) override;
  /// How wide `text` is in the label's font, in the label's unit.
  Single TextWidth(const std::string& text) const;
  bool FontBold() const;
  void SetFontBold(bool bold);
  void SetFontItalic(bool italic);
  /// In points, 72 to the inch, at 96 logical pixels to the inch.
  Single FontSize() const;
  void SetFontSize(Single points);

 private:
  void ShowText();
  void FitToText();
  std::string caption_;
  int16_t alignment_ = kAlignLeft;
  Color back_color_ = SystemColor::ButtonFace;
  bool auto_size_ = false, shortens_ = false;
};

}  // namespace zelvane
