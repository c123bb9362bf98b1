#include "surface/system/desktop/Clipboard.h"

#include <QBuffer>
#include <QClipboard>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImageWriter>
#include <QMimeData>
#include <array>
#include <utility>

#include "surface/codecs/PictureDecoder.h"
#include "surface/system/desktop/ImageBitmap.h"
#include "surface/system/text/QtText.h"

namespace zelvane::Clipboard {
namespace {

const QString kPng = QStringLiteral("image/png"), kBmp = QStringLiteral("image/bmp"),
              kImage = QStringLiteral("application/x-qt-image");

/// What is asked for, best first.
const std::array kReadFormats{kPng,
                              kBmp,
                              QStringLiteral("image/x-bmp"),
                              QStringLiteral("image/x-MS-bmp"),
                              QStringLiteral("image/tiff"),
                              QStringLiteral("image/gif"),
                              QStringLiteral("image/jpeg")};

/// A bitmap on offer. The toolkit converts the image to the formats that aren't made here.
class BitmapOffer : public QMimeData {
 public:
  explicit BitmapOffer(Bitmap bitmap) : bitmap_(std::move(bitmap)) {}
  const Bitmap& Pixels() const { return bitmap_; }

  QStringList formats() const override { return {kPng, kBmp, kImage}; }

 protected:
  QVariant retrieveData(const QString& format, QMetaType) const override {
    if (format == kImage) return ImageOf(bitmap_);
    return format == kPng ? QVariant(AsPng()) : QVariant();
  }

 private:
  /// In a tenth of the time that the best compression takes; whoever asks is waiting, and we with him.
  QByteArray AsPng() const {
    constexpr int kQuickest = 88;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, "png");
    writer.setQuality(kQuickest);
    writer.write(ImageOf(bitmap_));
    return bytes;
  }

  Bitmap bitmap_;
};

/// Until then an owner that didn't answer isn't asked again.
QDeadlineTimer LeftAlone;

/// What the owner offers; nothing from one that doesn't answer.
QStringList OfferedFormats() {
  constexpr qint64 kSilence = 1000, kPatience = 30'000;  // milliseconds
  QClipboard* const clipboard = QGuiApplication::clipboard();
  static const auto watch =
      QObject::connect(clipboard, &QClipboard::dataChanged, clipboard, [] { LeftAlone = {}; });
  if (!LeftAlone.hasExpired()) return {};
  QElapsedTimer waited;
  waited.start();
  const QMimeData* data = clipboard->mimeData();
  QStringList formats = data ? data->formats() : QStringList();
  if (formats.isEmpty() && waited.elapsed() > kSilence) LeftAlone.setRemainingTime(kPatience);
  return formats;
}

const BitmapOffer* OwnOffer() {
  return dynamic_cast<const BitmapOffer*>(QGuiApplication::clipboard()->mimeData());
}

std::optional<Bitmap> Decoded(const QByteArray& bytes) {
  return DecodePicture(
      {reinterpret_cast<const unsigned char*>(bytes.constData()), static_cast<size_t>(bytes.size())},
      LimitByMemory());
}

}  // namespace

void Clear() {
  QGuiApplication::clipboard()->clear();
}

bool HasBitmap() {
  const QStringList offered = OfferedFormats();
  return std::any_of(kReadFormats.begin(), kReadFormats.end(),
                     [&](const QString& format) { return offered.contains(format); });
}

/// An owner from whom nothing comes in one format isn't waited for in the next.
std::optional<Bitmap> GetBitmap() {
  if (const BitmapOffer* own = OwnOffer()) return own->Pixels();
  const QStringList offered = OfferedFormats();
  for (const QString& format : kReadFormats) {
    if (!offered.contains(format)) continue;
    const QByteArray bytes = QGuiApplication::clipboard()->mimeData()->data(format);
    if (bytes.isEmpty()) return std::nullopt;
    if (auto bitmap = Decoded(bytes)) return bitmap;
  }
  return std::nullopt;
}

void SetBitmap(const Bitmap& bitmap) {
  QGuiApplication::clipboard()->setMimeData(new BitmapOffer(bitmap));
}

std::string GetText() {
  return FromQt(QGuiApplication::clipboard()->text());
}

void SetText(const std::string& text) {
  QGuiApplication::clipboard()->setText(ToQt(text));
}

}  // namespace zelvane::Clipboard
