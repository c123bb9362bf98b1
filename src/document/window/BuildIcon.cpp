#include "document/window/BuildIcon.h"

#include <algorithm>

namespace zelvane {

IconParts BuildIcon(const Bitmap& picture) {
  constexpr int kSide = 32;
  const Pixel black = ToPixel(kBlack), white = ToPixel(kWhite);
  IconParts icon{Bitmap(kSide, kSide, black), Bitmap(kSide, kSide, white)};
  if (picture.IsEmpty()) return icon;
  const Pixel transparent = picture.Row(0)[0];
  for (int y = 0; y < std::min(kSide, picture.Height()); ++y) {
    for (int x = 0; x < std::min(kSide, picture.Width()); ++x) {
      const Pixel point = picture.Row(y)[x];
      if (point == transparent) continue;
      icon.picImage.WritableRow(y)[x] = point;
      icon.picMask.WritableRow(y)[x] = black;
    }
  }
  return icon;
}

}  // namespace zelvane
