#include "surface/system/desktop/Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

#include "surface/system/desktop/ImageBitmap.h"

namespace zelvane::Clipboard {

void Clear() {
  QGuiApplication::clipboard()->clear();
}

bool HasBitmap() {
  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  return data && data->hasImage();
}

std::optional<Bitmap> GetBitmap() {
  if (!HasBitmap()) return std::nullopt;
  QImage image = QGuiApplication::clipboard()->image();
  if (image.isNull() || image.width() > kLargestSide || image.height() > kLargestSide) return std::nullopt;
  try {
    return BitmapOf(std::move(image));
  } catch (const SurfaceTooLarge&) {
    return std::nullopt;
  }
}

void SetBitmap(const Bitmap& bitmap) {
  QGuiApplication::clipboard()->setImage(ImageOf(bitmap));
}

std::string GetText() {
  return QGuiApplication::clipboard()->text().toStdString();
}

void SetText(const std::string& text) {
  QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

}  // namespace zelvane::Clipboard
