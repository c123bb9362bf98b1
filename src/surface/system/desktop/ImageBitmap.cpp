#include "surface/system/desktop/ImageBitmap.h"

#include <QImage>

namespace zelvane {

QImage ImageOf(const Bitmap& bitmap) {
  if (bitmap.IsEmpty()) return {};
  auto* keeper = new Bitmap(bitmap);
  const auto* bytes = reinterpret_cast<const unsigned char*>(keeper->Row(0));
  return QImage(
      bytes, bitmap.Width(), bitmap.Height(), QImage::Format_RGB32,
      [](void* kept) { delete static_cast<Bitmap*>(kept); }, keeper);
}

}  // namespace zelvane
