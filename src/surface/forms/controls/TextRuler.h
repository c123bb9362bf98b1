#pragma once

#include <string>

#include "surface/forms/controls/Control.h"
#include "surface/forms/controls/TextFont.h"

namespace zelvane {

/// A label that is never seen: `Width` and `Height` are what its caption takes, with the caret behind its
/// longest line.
class TextRuler : public Control, public FontProperties {
 public:
  TextRuler(Control& parent, const std::string& name, const std::string& caption);

  const std::string& Caption() const { return caption_; }
  /// Lines are parted by "\n".
  void SetCaption(const std::string& caption);

 protected:
  void FontChanged() override { Measure(); }

 private:
  void Measure();
  std::string caption_;
};

}  // namespace zelvane
