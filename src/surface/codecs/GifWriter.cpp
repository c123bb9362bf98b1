#include <gif_lib.h>

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

#include "surface/codecs/IndexedPicture.h"
#include "surface/codecs/PictureEncoder.h"

namespace zelvane {

namespace {

/// One file of the library. It doesn't let go of what it has where the last write fails, so it's told that
/// every one of them worked.
class GifFile {
 public:
  explicit GifFile(const PieceSink& sink) : sink_(sink), file_(EGifOpen(this, OnWrite, nullptr)) {
    if (!file_) throw std::bad_alloc();
    piece_.reserve(kPiece);
  }
  ~GifFile() { Close(); }
  GifFile(const GifFile&) = delete;
  GifFile& operator=(const GifFile&) = delete;

  bool Write(IndexedPicture& picture, int width, int height) {
    constexpr int kBitsAChannel = 8;
    ColorMapObject* colours = MapOf(picture.palette);
    const bool begun = EGifPutScreenDesc(file_, width, height, kBitsAChannel, 0, colours) == GIF_OK &&
                       EGifPutImageDesc(file_, 0, 0, width, height, false, nullptr) == GIF_OK;
    GifFreeMapObject(colours);
    unsigned char* row = picture.places.data();
    for (int y = 0; begun && y < height; ++y, row += width) {
      if (EGifPutLine(file_, row, width) != GIF_OK || refused_) return false;
    }
    return Close() && begun && HandOver();
  }

 private:
  static constexpr size_t kPiece = size_t{1} << 18, kLongestWrite = 256;

  /// The library wants a power of two; what isn't used is black.
  static ColorMapObject* MapOf(const Palette& palette) {
    ColorMapObject* colours = GifMakeMapObject(1 << GifBitSize(static_cast<int>(palette.size())), nullptr);
    if (!colours) throw std::bad_alloc();
    for (size_t i = 0; i < palette.size(); ++i) {
      colours->Colors[i] = {static_cast<GifByteType>(palette[i] >> 16),
                            static_cast<GifByteType>(palette[i] >> 8), static_cast<GifByteType>(palette[i])};
    }
    return colours;
  }
  static int OnWrite(GifFileType* library, const GifByteType* bytes, int count) {
    auto& file = *static_cast<GifFile*>(library->UserData);
    file.piece_.insert(file.piece_.end(), bytes, bytes + count);
    if (file.piece_.size() + kLongestWrite > kPiece) file.HandOver();
    return count;
  }
  bool HandOver() {
    refused_ = refused_ || !sink_(piece_.data(), piece_.size());
    piece_.clear();
    return !refused_;
  }
  bool Close() { return !file_ || EGifCloseFile(std::exchange(file_, nullptr), nullptr) == GIF_OK; }

  const PieceSink& sink_;
  std::vector<unsigned char> piece_;
  bool refused_ = false;
  GifFileType* file_;
};

}  // namespace

bool EncodeGif(const Bitmap& picture, const PieceSink& sink) {
  if (picture.IsEmpty()) return false;
  IndexedPicture indexed = ToIndexed(picture);
  return GifFile(sink).Write(indexed, picture.Width(), picture.Height());
}

}  // namespace zelvane
