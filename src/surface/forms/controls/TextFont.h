#pragma once

#include <string>

namespace zelvane {

/// What text is drawn in.
struct TextFont {
  std::string Name;  ///< of the family; empty for the desktop's own
  double Size = 10;  ///< points, 96 pixels of the picture to the inch; set in whole pixels
  bool Bold = false, Italic = false;

  friend bool operator==(const TextFont&, const TextFont&) = default;
};

/// The font of a thing that shows or draws text. A font that isn't there, or a size that isn't above 0 and up
/// to 1,000 points, changes nothing: what there was stays.
///
/// A thing that shows text of a picture does so at a whole multiple of the picture's pixels. Its `FontSize`
/// is the multiplied one.
class FontProperties {
 public:
  /// As in the picture, at a multiple of 1.
  const TextFont& Font() const { return font_; }
  /// The multiple at which `Font` is shown.
  int Multiple() const { return multiple_; }
  void SetFont(const TextFont& font, int multiple = 1);

  const std::string& FontName() const { return font_.Name; }
  void SetFontName(const std::string& name);
  double FontSize() const { return font_.Size * multiple_; }
  void SetFontSize(double points);
  bool FontBold() const { return font_.Bold; }
  void SetFontBold(bool bold);
  bool FontItalic() const { return font_.Italic; }
  void SetFontItalic(bool italic);

 protected:
  ~FontProperties() = default;
  virtual void FontChanged() {}

 private:
  TextFont font_;
  int multiple_ = 1;
};

}  // namespace zelvane
