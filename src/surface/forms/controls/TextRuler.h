#pragma once

#include <cstddef>
#include <string>
#include <vector>

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
  /// How far letters reach over the left edge, 0 and up.
  int Overhang() const { return overhang_; }

 protected:
  void FontChanged() override { Measure(0, lines_.size()); }

 private:
  struct LineSize {
    double width = 0;
    int overhang = 0;
  };
  void Measure(size_t first, size_t end);
  std::string caption_;
  std::vector<std::string> lines_{""};  ///< of the caption
  std::vector<LineSize> sizes_{{}};     ///< of the lines, so that only others are measured anew
  int overhang_ = 0;
};

}  // namespace zelvane
