#include <tiffio.h>

#include <algorithm>
#include <cstring>
#include <string_view>

#include "surface/codecs/ColourProfile.h"
#include "surface/codecs/DeepTiff.h"
#include "surface/codecs/Orientation.h"
#include "surface/codecs/PictureDecoder.h"
#include "surface/codecs/TiffPages.h"

namespace zelvane {

namespace {

/// The file as the library reads it, with a limit on what it takes at once. What fails shows in what it
/// returns; its own handlers would write to the standard error.
class MemoryFile {
 public:
  MemoryFile(ByteView bytes, SizeLimit limit) : bytes_(bytes) {
    constexpr tmsize_t kForItself = tmsize_t{1} << 20, kPictureAndCopy = 2 * sizeof(Pixel);
    TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
    if (!options) return;
    TIFFOpenOptionsSetMaxSingleMemAlloc(options, kForItself + limit.pixels * kPictureAndCopy);
    TIFFOpenOptionsSetErrorHandlerExtR(options, KeepQuiet, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options, OnWarning, this);
    file_ = TIFFClientOpenExt("", "r", this, Read, Write, Seek, Close, Size, Map, Unmap, options);
    TIFFOpenOptionsFree(options);
  }
  ~MemoryFile() {
    if (file_) TIFFClose(file_);
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  TIFF* Get() const { return file_; }
  ByteView Profile() const {
    uint32_t size = 0;
    const void* profile = nullptr;
    if (!TIFFGetField(file_, TIFFTAG_ICCPROFILE, &size, &profile)) return {};
    return {static_cast<const unsigned char*>(profile), size};
  }
  /// Rows are missing although the library said that all went well.
  bool IsSpoilt() const { return spoilt_; }

 private:
  static int KeepQuiet(TIFF*, void*, const char*, const char*, va_list) { return 1; }
  /// A fax that ends too early is filled up with white, and a jpeg with grey; both are only warned of.
  static int OnWarning(TIFF*, void* self, const char* module, const char* format, va_list arguments) {
    const std::string_view from(module ? module : ""), text(format);
    const bool jpeg = (from == "JPEGLib" || from == "LibJpeg") && text == "%s";
    const std::string_view told(jpeg ? va_arg(arguments, const char*) : "");
    if (text.starts_with("Premature EOF") || (jpeg && told.find("extraneous") == told.npos)) {
      static_cast<MemoryFile*>(self)->spoilt_ = true;
    }
    return 1;
  }
  static tmsize_t Read(thandle_t self, void* to, tmsize_t count) {
    auto& file = *static_cast<MemoryFile*>(self);
    const ByteView part = file.bytes_.Part(file.at_, static_cast<uint64_t>(count));
    if (part.Size() > 0) std::memcpy(to, part.Data(), part.Size());
    file.at_ += part.Size();
    return static_cast<tmsize_t>(part.Size());
  }
  static tmsize_t Write(thandle_t, void*, tmsize_t) { return 0; }
  static toff_t Seek(thandle_t self, toff_t offset, int from) {
    auto& file = *static_cast<MemoryFile*>(self);
    file.at_ = offset + (from == SEEK_CUR ? file.at_ : from == SEEK_END ? file.bytes_.Size() : 0);
    return file.at_;
  }
  static int Close(thandle_t) { return 0; }
  /// The bytes lie in memory as it is. Without this the library refuses uncompressed tiles of odd sizes.
  static int Map(thandle_t self, void** base, toff_t* size) {
    const ByteView bytes = static_cast<MemoryFile*>(self)->bytes_;
    *base = const_cast<unsigned char*>(bytes.Data());
    *size = bytes.Size();
    return 1;
  }
  static void Unmap(thandle_t, void*, toff_t) {}
  static toff_t Size(thandle_t self) { return static_cast<MemoryFile*>(self)->bytes_.Size(); }

  ByteView bytes_;
  uint64_t at_ = 0;
  TIFF* file_ = nullptr;
  bool spoilt_ = false;
};

/// The library's pixels are red, green, blue and opacity from the low byte up, the colours already multiplied
/// with the opacity. True where all pixels were opaque.
bool LayOnWhite(Pixel* row, int width) {
  uint32_t least = 255;
  for (int x = 0; x < width; ++x) {
    const uint32_t white = 255 - TIFFGetA(row[x]);
    least = std::min(least, 255 - white);
    const auto channel = [white](uint32_t value) { return std::min(255u, value + white); };
    row[x] = 0xFF000000u | channel(TIFFGetR(row[x])) << 16 | channel(TIFFGetG(row[x])) << 8 |
             channel(TIFFGetB(row[x]));
  }
  return least == 255;
}

/// The library's own conversion to colours, a band of whole strips or tiles at a time.
class Conversion {
 public:
  Conversion(TIFF* file, uint32_t orientation) : file_(file) {
    constexpr int kStopOnError = 1;
    char reason[1024];
    begun_ = TIFFRGBAImageOK(file, reason) && TIFFRGBAImageBegin(&image_, file, kStopOnError, reason);
    // Asked for the orientation that it has, the library leaves rows and columns as they are stored.
    image_.req_orientation = static_cast<uint16_t>(orientation);
  }
  ~Conversion() {
    if (begun_) TIFFRGBAImageEnd(&image_);
  }
  Conversion(const Conversion&) = delete;
  Conversion& operator=(const Conversion&) = delete;

  bool IsBegun() const { return begun_; }
  /// How many rows to ask for at a time, so that nothing is unpacked twice.
  int BandHeight() const {
    constexpr uint32_t kAtLeast = 64;
    uint32_t rows = 0;
    TIFFGetFieldDefaulted(file_, TIFFIsTiled(file_) ? TIFFTAG_TILELENGTH : TIFFTAG_ROWSPERSTRIP, &rows);
    rows = std::clamp<uint32_t>(rows, 1, image_.height);
    return static_cast<int>((kAtLeast + rows - 1) / rows * rows);
  }
  bool Read(int top, int rows, Pixel* to) {
    image_.row_offset = top;
    return TIFFRGBAImageGet(&image_, to, image_.width, static_cast<uint32_t>(rows));
  }

 private:
  TIFF* file_;
  TIFFRGBAImage image_{};
  bool begun_ = false;
};

/// No value where the data is damaged or nobody waits for it.
std::optional<DecodedPicture> DecodeThroughLibrary(const MemoryFile& file, const TiffPage& page,
                                                   uint32_t orientation, ReadingWatch& watch) {
  Conversion conversion(file.Get(), orientation);
  if (!conversion.IsBegun()) return std::nullopt;
  Bitmap bitmap = Bitmap::Uninitialised(static_cast<int>(page.width), static_cast<int>(page.height));
  const int band = conversion.BandHeight();
  const ColourProfile colours(file.Profile(), RowForm::Pixels);
  bool opaque = true;
  for (int top = 0; top < bitmap.Height(); top += band) {
    const int rows = std::min(band, bitmap.Height() - top);
    if (!conversion.Read(top, rows, bitmap.WritableRow(top)) || file.IsSpoilt()) return std::nullopt;
    for (int y = top; y < top + rows; ++y) {
      opaque &= LayOnWhite(bitmap.WritableRow(y), bitmap.Width());
      colours.Apply(bitmap.WritableRow(y), bitmap.Width());
    }
    if (!watch.GoOn(top + rows, bitmap.Height())) return std::nullopt;
  }
  const bool whole = opaque && page.only && page.ordinary && !colours.ChangesColours();
  return DecodedPicture(std::move(bitmap), whole ? WrittenKind::Tiff : WrittenKind::None);
}

}  // namespace

std::optional<DecodedPicture> DecodeTiff(ByteView bytes, SizeLimit limit, ReadingWatch& watch) {
  const std::optional<TiffPage> page = FirstTiffPage(bytes, limit);
  if (!page) return std::nullopt;
  const MemoryFile file(bytes, limit);
  if (!file.Get()) return std::nullopt;
  uint16_t orientation = ORIENTATION_TOPLEFT;
  TIFFGetFieldDefaulted(file.Get(), TIFFTAG_ORIENTATION, &orientation);
  DeepTiff deep(file.Get(), file.Profile());
  std::optional<DecodedPicture> picture;
  if (deep.IsKnown())
    picture = deep.Read(limit, watch);
  else
    picture = DecodeThroughLibrary(file, *page, orientation, watch);
  if (!picture || file.IsSpoilt()) return std::nullopt;
  return DecodedPicture(Oriented(std::move(*picture), orientation), picture->whole_as);
}

}  // namespace zelvane
