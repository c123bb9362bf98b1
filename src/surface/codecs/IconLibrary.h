#pragma once

#include <optional>
#include <vector>

#include "surface/codecs/ProgramResources.h"
#include "surface/raster/Bitmap.h"

namespace zelvane {

/// The icons in a Windows executable or library of 16, 32 or 64 bits, or the one that an icon or pointer file
/// is, whatever the file's name says. Reads only the pieces that it needs.
class IconLibrary {
 public:
  /// How many pixels an icon is drawn high and wide.
  static constexpr int kSide = 32;

  /// Without icons.
  IconLibrary() = default;
  /// Without icons where the file is of neither kind. Keeps `read` to draw with.
  explicit IconLibrary(RangeReader read);

  int Count() const { return static_cast<int>(groups_.size()) + (is_icon_file_ ? 1 : 0); }
  /// The icon of that index, from 0, on a ground of that colour. Of its pictures the one that suits `kSide`
  /// best is taken and, where it's of another size, scaled to that. No value where there is no such icon, or
  /// it's damaged.
  std::optional<Bitmap> Draw(int index, Pixel ground) const;

 private:
  Bytes PictureOf(int index) const;
  Bytes ImageOf(uint32_t name) const;

  RangeReader read_;
  ProgramResources resources_;
  std::vector<ProgramResources::Entry> groups_, images_;
  bool is_icon_file_ = false;
};

}  // namespace zelvane
