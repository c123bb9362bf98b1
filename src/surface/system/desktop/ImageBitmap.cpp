#include "surface/system/desktop/ImageBitmap.h"

#include <QImage>
#include <utility>

#include "surface/codecs/Flatten.h"

namespace zelvane {

namespace {

static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "files' words are read as they stand");

Bitmap DeepBitmapOf(const QImage& image) {
  Bitmap bitmap = Bitmap::Uninitialised(image.width(), image.height());
  for (int y = 0; y < image.height(); ++y) {
    const auto* from = reinterpret_cast<const QRgba64*>(image.constScanLine(y));
    Pixel* to = bitmap.WritableRow(y);
    for (int x = 0; x < image.width(); ++x) {
      to[x] = DeepOnWhite(from[x].red(), from[x].green(), from[x].blue(), from[x].alpha());
    }
  }
  return bitmap;
}

/// Keeps the image alive as long as the bitmap's pixels are used.
Bitmap Adopt(QImage image) {
  auto owner = std::make_shared<QImage>(std::move(image));
  auto* pixels = reinterpret_cast<Pixel*>(owner->bits());
  const int stride = static_cast<int>(owner->bytesPerLine() / 4);
  return Bitmap::Adopt(pixels, owner->width(), owner->height(), stride, owner);
}

}  // namespace

Bitmap BitmapOf(QImage image) {
  if (image.isNull()) return {};
  const bool deep = image.pixelFormat().redSize() > 8 || image.format() == QImage::Format_Grayscale16;
  const bool clear = image.hasAlphaChannel();
  image.convertTo(deep ? QImage::Format_RGBA64 : clear ? QImage::Format_ARGB32 : QImage::Format_RGB32);
  if (image.isNull()) throw SurfaceTooLarge("no memory for a converted picture");
  if (deep) return DeepBitmapOf(image);
  Bitmap bitmap = Adopt(std::move(image));
  // The fourth byte of an image without opacity may hold anything.
  for (int y = 0; y < bitmap.Height(); ++y) {
    Pixel* row = bitmap.WritableRow(y);
    for (int x = 0; x < bitmap.Width(); ++x) row[x] = clear ? OnWhite(row[x]) : row[x] | 0xFF000000u;
  }
  return bitmap;
}

QImage ImageOf(const Bitmap& bitmap) {
  if (bitmap.IsEmpty()) return {};
  auto* keeper = new Bitmap(bitmap);
  const auto* bytes = reinterpret_cast<const unsigned char*>(keeper->Row(0));
  return QImage(
      bytes, bitmap.Width(), bitmap.Height(), qsizetype{bitmap.Stride()} * 4, QImage::Format_RGB32,
      [](void* kept) { delete static_cast<Bitmap*>(kept); }, keeper);
}

}  // namespace zelvane
