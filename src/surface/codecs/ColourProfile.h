#pragma once

#include <cstdint>
#include <memory>

#include "surface/codecs/ByteView.h"

namespace zelvane {

/// How a row lies in memory that a profile is for. Eight bits a channel lie as our pixels do, or four inks of
/// a byte each, as how much of the paper shows through; 16 bits as red, green, blue and opacity, or four
/// inks.
enum class RowForm { Pixels, Inks, Deep, DeepInks };

/// Carries colours out to those of the screen (sRGB), as the ICC profile that came with them says.
class ColourProfile {
 public:
  /// Leaves colours as they are.
  ColourProfile() = default;
  /// A profile that is broken, made for other colours, or that of the screen, leaves colours as they are too.
  ColourProfile(ByteView profile, RowForm form);

  bool ChangesColours() const { return transform_ != nullptr; }
  /// In place. Opacity stays; inks become opaque colours of as many bits.
  void Apply(void* row, int width) const;

 private:
  std::shared_ptr<void> transform_;
  RowForm form_ = RowForm::Pixels;
};

}  // namespace zelvane
