#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QRegularExpression>
#include <QString>
#include <mutex>
#include <string_view>

#include "surface/codecs/Flatten.h"
#include "surface/codecs/PictureDecoder.h"
#include "surface/system/desktop/ImageBitmap.h"

namespace zelvane {

namespace {

/// Listens to what the readers say on this thread while a picture is decoded: they report damaged data in
/// passing and hand out a picture all the same. Nothing of it reaches the standard error; what other threads
/// say goes where it went before.
class Listener {
 public:
  Listener() : lock_(mutex_) {
    damaged_ = false;
    forward_ = qInstallMessageHandler(&Listener::Hear);
    listening_ = true;
  }
  ~Listener() {
    listening_ = false;
    qInstallMessageHandler(forward_);
  }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  bool HeardDamage() const { return damaged_; }

 private:
  static void Hear(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (!listening_) return forward_(type, context, message);
    const std::string_view category = context.category ? context.category : "";
    if (category == "qt.gui.imageio.jpeg" && !IsHarmless(message)) damaged_ = true;
  }
  /// Stray bytes between segments and odd version numbers leave every pixel as it was. Many bytes left over
  /// before the mark of the end tell that the picture's data was misread on the way.
  static bool IsHarmless(const QString& message) {
    static const QRegularExpression stray(QStringLiteral("(\\d+) extraneous bytes before marker 0x(..)"));
    constexpr int kMostLeftOver = 8;
    if (const auto match = stray.match(message); match.hasMatch()) {
      return match.captured(2) != QLatin1String("d9") || match.captured(1).toLongLong() <= kMostLeftOver;
    }
    return message.contains(QLatin1String("JFIF revision")) ||
           message.contains(QLatin1String("Adobe color transform"));
  }

  static inline std::mutex mutex_;
  static inline QtMessageHandler forward_ = nullptr;
  static inline bool damaged_ = false;
  static inline thread_local bool listening_ = false;
  std::lock_guard<std::mutex> lock_;
};

bool IsSurfaceFormat(QImage::Format format) {
  return format == QImage::Format_RGB32 || format == QImage::Format_ARGB32;
}

QImage Wrap(Bitmap& bitmap, QImage::Format format) {
  return QImage(reinterpret_cast<unsigned char*>(bitmap.WritableRow(0)), bitmap.Width(), bitmap.Height(),
                qsizetype{bitmap.Stride()} * 4, format);
}

}  // namespace

std::optional<Bitmap> DecodeThroughQt(ByteView bytes, const char* format, SizeLimit limit) {
  const Listener listener;
  QByteArray data = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.Data()),
                                            static_cast<qsizetype>(bytes.Size()));
  QBuffer buffer(&data);
  buffer.open(QIODevice::ReadOnly);
  QImageReader::setAllocationLimit(0);  // our own limit was applied, and a large picture is no error
  QImageReader reader(&buffer, format);
  reader.setAutoDetectImageFormat(false);
  reader.setAutoTransform(true);
  const QSize size = reader.size();  // not every reader tells it before it has read
  if (size.isValid() && !limit.Admits(size.width(), size.height())) return std::nullopt;

  // A reader that finds an image of the right size and format writes into it, so the pixels come to lie where
  // they stay.
  const QImage::Format pixels = reader.imageFormat();
  Bitmap bitmap;
  QImage image;
  if (size.isValid() && IsSurfaceFormat(pixels)) {
    bitmap = Bitmap::Uninitialised(size.width(), size.height());
    image = Wrap(bitmap, pixels);
  }
  if (!reader.read(&image) || image.isNull() || listener.HeardDamage()) return std::nullopt;
  const void* wrapped = bitmap.IsEmpty() ? nullptr : bitmap.Row(0);
  if (image.constBits() != wrapped || !IsSurfaceFormat(image.format())) return BitmapOf(std::move(image));
  if (image.format() == QImage::Format_ARGB32) FlattenOnWhite(bitmap);
  return bitmap;
}

}  // namespace zelvane
