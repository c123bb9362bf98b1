#include <tiffio.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

#include "surface/codecs/PictureEncoder.h"

namespace zelvane {

namespace {

/// The file as the library writes it, which goes back to its beginning at the end. Pieces never move, so
/// that it takes no more memory than it has bytes.
class MemoryFile {
 public:
  MemoryFile() {
    TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
    if (!options) return;
    TIFFOpenOptionsSetErrorHandlerExtR(options, KeepQuiet, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options, KeepQuiet, nullptr);
    file_ = TIFFClientOpenExt("", "w", this, Read, Write, Seek, Close, Size, nullptr, nullptr, options);
    TIFFOpenOptionsFree(options);
  }
  ~MemoryFile() {
    if (file_) TIFFClose(file_);
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  TIFF* Get() const { return file_; }
  bool WantsMemory() const { return wants_memory_; }
  bool HandOver(const PieceSink& sink) const {
    for (size_t from = 0; from < size_; from += kPiece) {
      if (!sink(pieces_[from / kPiece].get(), std::min(kPiece, size_ - from))) return false;
    }
    return true;
  }

 private:
  static constexpr size_t kPiece = size_t{1} << 20;
  using Piece = std::unique_ptr<unsigned char[]>;

  static int KeepQuiet(TIFF*, void*, const char*, const char*, va_list) { return 1; }
  static tmsize_t Read(thandle_t, void*, tmsize_t) { return 0; }
  static tmsize_t Write(thandle_t self, void* from, tmsize_t count) {
    auto& file = *static_cast<MemoryFile*>(self);
    try {
      file.Put(static_cast<const unsigned char*>(from), static_cast<size_t>(count));
      return count;
    } catch (const std::bad_alloc&) {
      file.wants_memory_ = true;
      return 0;
    }
  }
  static toff_t Seek(thandle_t self, toff_t offset, int from) {
    auto& file = *static_cast<MemoryFile*>(self);
    file.at_ = offset + (from == SEEK_CUR ? file.at_ : from == SEEK_END ? file.size_ : 0);
    return file.at_;
  }
  static int Close(thandle_t) { return 0; }
  static toff_t Size(thandle_t self) { return static_cast<MemoryFile*>(self)->size_; }

  void Put(const unsigned char* from, size_t count) {
    while (pieces_.size() * kPiece < at_ + count)
      pieces_.push_back(std::make_unique<unsigned char[]>(kPiece));
    while (count > 0) {
      const size_t within = at_ % kPiece, now = std::min(count, kPiece - within);
      std::memcpy(pieces_[at_ / kPiece].get() + within, from, now);
      at_ += now, from += now, count -= now;
    }
    size_ = std::max(size_, at_);
  }

  std::vector<Piece> pieces_;
  size_t at_ = 0, size_ = 0;
  bool wants_memory_ = false;
  TIFF* file_ = nullptr;
};

/// LZW behind differences of neighbours: as small as the fast levels of deflate, and part of the format since
/// its sixth edition, so that old programs know it too.
void Describe(TIFF* file, const Bitmap& picture, int rows_a_strip) {
  const auto set = [file](uint32_t tag, int value) { TIFFSetField(file, tag, value); };
  set(TIFFTAG_IMAGEWIDTH, picture.Width());
  set(TIFFTAG_IMAGELENGTH, picture.Height());
  set(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
  set(TIFFTAG_SAMPLESPERPIXEL, 3);
  set(TIFFTAG_BITSPERSAMPLE, 8);
  set(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  set(TIFFTAG_COMPRESSION, COMPRESSION_LZW);
  set(TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
  set(TIFFTAG_ROWSPERSTRIP, rows_a_strip);
  constexpr double kDotsPerInch = 72;
  TIFFSetField(file, TIFFTAG_XRESOLUTION, kDotsPerInch);
  TIFFSetField(file, TIFFTAG_YRESOLUTION, kDotsPerInch);
  set(TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
}

unsigned char* PutRow(const Pixel* row, int width, unsigned char* to) {
  for (int x = 0; x < width; ++x) {
    *to++ = static_cast<unsigned char>(row[x] >> 16);
    *to++ = static_cast<unsigned char>(row[x] >> 8);
    *to++ = static_cast<unsigned char>(row[x]);
  }
  return to;
}

/// False only for want of memory, or a file of over 4 GB.
bool WriteStrips(TIFF* file, const Bitmap& picture) {
  constexpr int kStrip = 1 << 18;  // bytes
  const int rows_a_strip = std::max(1, kStrip / (picture.Width() * 3));
  Describe(file, picture, rows_a_strip);
  std::vector<unsigned char> strip(size_t{3} * static_cast<size_t>(picture.Width() * rows_a_strip));
  for (int top = 0; top < picture.Height(); top += rows_a_strip) {
    unsigned char* end = strip.data();
    for (int y = top; y < std::min(top + rows_a_strip, picture.Height()); ++y)
      end = PutRow(picture.Row(y), picture.Width(), end);
    const auto number = static_cast<uint32_t>(top / rows_a_strip);
    if (TIFFWriteEncodedStrip(file, number, strip.data(), end - strip.data()) < 0) return false;
  }
  return TIFFWriteDirectory(file) != 0;
}

}  // namespace

bool EncodeTiff(const Bitmap& picture, const PieceSink& sink) {
  if (picture.IsEmpty()) return false;
  MemoryFile file;
  if (!file.Get()) throw std::bad_alloc();
  const bool whole = WriteStrips(file.Get(), picture);
  if (file.WantsMemory()) throw std::bad_alloc();
  return whole && file.HandOver(sink);
}

}  // namespace zelvane
