#pragma once

#include <string>

#include "surface/forms/controls/Label.h"
#include "surface/forms/picture/PictureSurface.h"

namespace zelvane {

/// A text of any number of lines on a surface that the program has painted. It is as large as its text.
///
/// It reads on whatever lies behind it: a line whose colour doesn't stand off there is black or white
/// instead, and where neither reads along the whole line, each word chooses for itself.
class GroundLabel : public Control {
 public:
  GroundLabel(PictureSurface& ground, const std::string& name);
  ~GroundLabel() override;

  const std::string& Caption() const { return caption_; }
  void SetCaption(const std::string& caption);
  /// How the lines lie to each other.
  void SetAlignment(int16_t alignment);
  void SetForeColor(Color color);
  void SetFontBold(bool bold);
  /// Looks like a link, and Tab comes to it: `OnClick` comes by Return and the space bar as well.
  void SetLink();
  /// What the label may cover at most, in its own unit. Lines are wrapped, within a word where need be; of
  /// more lines than there is room for the middle ones are left out, of a single line its middle.
  void SetRoom(double width, double height);
  /// The height of `lines` lines, in its own unit.
  double HeightOf(int lines) const;

 private:
  class Text;
  void Fit();
  Text* text_ = nullptr;
  std::string caption_;
};

}  // namespace zelvane
