#include <tiffio.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "surface/codecs/DeepTiff.h"
#include "surface/codecs/Orientation.h"
#include "surface/codecs/PictureDecoder.h"

namespace zelvane {

namespace {

/// Numbers in the byte order of the file, and places of 32 bits or, in the large kind, of 64.
class Tiff {
 public:
  explicit Tiff(ByteView bytes)
      : bytes_(bytes), big_endian_(bytes.At(0) == 'M'), large_(Number(2, 2) == 43) {}

  struct Page {
    int64_t width = 0, height = 0;
    bool only = true;      // no further pages, no layers
    bool ordinary = true;  // of 8 bits a channel at most, no inks
  };

  /// No value where a page's data leaves the file, or the first page is larger than admitted.
  std::optional<Page> FirstPage(SizeLimit limit) const {
    Page first;
    // Each page and each piece of data takes bytes of its own, but for a chain of pages that runs in a
    // circle.
    uint64_t budget = bytes_.Size();
    uint64_t at = Number(large_ ? 8 : 4, PlaceSize());
    for (int page = 0; at != 0; ++page) {
      const uint64_t count = Number(at, large_ ? 8 : 2);
      const uint64_t entries = at + (large_ ? 8 : 2);
      if (count == 0 || count > 65535) return std::nullopt;
      if (!bytes_.Has(entries, EntrySize() * count + PlaceSize())) return std::nullopt;
      const uint64_t pieces =
          1 + Find(entries, count, kStripPlaces).count + Find(entries, count, kTilePlaces).count;
      if (pieces > budget || !IsPageWhole(entries, count)) return std::nullopt;
      budget -= pieces;
      if (page == 0) {
        first = {Value(entries, count, kWidth), Value(entries, count, kHeight)};
        if (!limit.Admits(first.width, first.height)) return std::nullopt;
        if (!IsModest(entries, count)) return std::nullopt;
        first.only = Find(entries, count, kInnerPages).count == 0 && Find(entries, count, kLayers).count == 0;
        first.ordinary = Value(entries, count, kBits) <= 8 && Value(entries, count, kColours) != kInks;
      }
      first.only = page == 0 && first.only;
      at = Number(entries + EntrySize() * count, PlaceSize());
    }
    if (first.width == 0) return std::nullopt;
    return first;
  }

 private:
  /// Bytes of a value of each type; types 14, 15 and those beyond aren't defined.
  static constexpr std::array<uint64_t, 19> kTypeSizes{0, 1, 1, 2, 4, 8, 1, 1, 2, 4,
                                                       8, 4, 8, 4, 0, 0, 8, 8, 8};

  enum Tag : uint32_t {
    kWidth = 256,
    kHeight = 257,
    kBits = 258,
    kColours = 262,
    kStripPlaces = 273,
    kSamples = 277,
    kStripSizes = 279,
    kTileWidth = 322,
    kTileHeight = 323,
    kTilePlaces = 324,
    kTileSizes = 325,
    kInnerPages = 330,
    kLayers = 37724
  };
  static constexpr int64_t kInks = 5;

  struct Values {
    uint64_t at = 0, count = 0, size = 0;
  };

  uint64_t PlaceSize() const { return large_ ? 8 : 4; }
  uint64_t EntrySize() const { return large_ ? 20 : 12; }

  uint64_t Number(uint64_t at, uint64_t size) const {
    uint64_t number = 0;
    for (uint64_t i = 0; i < size; ++i) {
      number = number << 8 | bytes_.At(big_endian_ ? at + i : at + size - 1 - i);
    }
    return number;
  }
  /// The values of the entry, which stand in it where they fit.
  Values ValuesOf(uint64_t entry) const {
    const uint64_t type = Number(entry + 2, 2);
    Values values;
    values.size = type < kTypeSizes.size() ? kTypeSizes[type] : 0;
    values.count = Number(entry + 4, PlaceSize());
    values.at = entry + 4 + PlaceSize();
    if (values.count > bytes_.Size() || values.count * values.size > PlaceSize()) {
      values.at = Number(values.at, PlaceSize());
    }
    return values;
  }
  bool Holds(const Values& values) const {
    return values.count <= bytes_.Size() && bytes_.Has(values.at, values.count * values.size);
  }
  /// The values of a tag; none where it isn't there.
  Values Find(uint64_t entries, uint64_t count, uint32_t tag) const {
    for (uint64_t i = 0; i < count; ++i) {
      const uint64_t entry = entries + i * EntrySize();
      if (Number(entry, 2) == tag) return ValuesOf(entry);
    }
    return {};
  }
  /// The first value of a tag as far as a limit on it is concerned, 0 without the tag.
  int64_t Value(uint64_t entries, uint64_t count, uint32_t tag) const {
    const Values values = Find(entries, count, tag);
    return static_cast<int64_t>(std::min<uint64_t>(Number(values.at, values.size), 1u << 31));
  }
  /// The library takes memory for a whole tile and for all samples of a pixel before it reads any.
  bool IsModest(uint64_t entries, uint64_t count) const {
    constexpr int64_t kMostSamples = 16;
    return Value(entries, count, kSamples) <= kMostSamples &&
           Value(entries, count, kTileWidth) <= kLargestSide &&
           Value(entries, count, kTileHeight) <= kLargestSide;
  }
  bool IsPageWhole(uint64_t entries, uint64_t count) const {
    for (uint64_t i = 0; i < count; ++i) {
      if (!Holds(ValuesOf(entries + i * EntrySize()))) return false;
    }
    return IsDataWhole(Find(entries, count, kStripPlaces), Find(entries, count, kStripSizes)) &&
           IsDataWhole(Find(entries, count, kTilePlaces), Find(entries, count, kTileSizes));
  }
  bool IsDataWhole(const Values& places, const Values& sizes) const {
    if (places.count == 0) return true;
    if (places.size == 0) return false;
    for (uint64_t i = 0; i < places.count; ++i) {
      const uint64_t size = i < sizes.count ? Number(sizes.at + i * sizes.size, sizes.size) : 1;
      if (!bytes_.Has(Number(places.at + i * places.size, places.size), size)) return false;
    }
    return true;
  }

  ByteView bytes_;
  bool big_endian_, large_;
};

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
    TIFFOpenOptionsSetWarningHandlerExtR(options, KeepQuiet, nullptr);
    file_ = TIFFClientOpenExt("", "r", this, Read, Write, Seek, Close, Size, Map, Unmap, options);
    TIFFOpenOptionsFree(options);
  }
  ~MemoryFile() {
    if (file_) TIFFClose(file_);
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  TIFF* Get() const { return file_; }

 private:
  static int KeepQuiet(TIFF*, void*, const char*, const char*, va_list) { return 1; }
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
};

/// The library's pixels are red, green, blue and opacity from the low byte up, the colours already multiplied
/// with the opacity. True where all pixels were opaque.
bool LayOnWhite(Bitmap& bitmap) {
  uint32_t least = 255;
  for (int y = 0; y < bitmap.Height(); ++y) {
    Pixel* row = bitmap.WritableRow(y);
    for (int x = 0; x < bitmap.Width(); ++x) {
      const uint32_t white = 255 - TIFFGetA(row[x]);
      least = std::min(least, 255 - white);
      const auto channel = [white](uint32_t value) { return std::min(255u, value + white); };
      row[x] = 0xFF000000u | channel(TIFFGetR(row[x])) << 16 | channel(TIFFGetG(row[x])) << 8 |
               channel(TIFFGetB(row[x]));
    }
  }
  return least == 255;
}

/// No value where the data is damaged.
std::optional<DecodedPicture> DecodeThroughLibrary(TIFF* file, const Tiff::Page& page, uint32_t orientation) {
  char reason[1024];
  if (!TIFFRGBAImageOK(file, reason)) return std::nullopt;
  Bitmap bitmap = Bitmap::Uninitialised(static_cast<int>(page.width), static_cast<int>(page.height));
  // Asked for the orientation that it has, the library leaves rows and columns as they are stored.
  constexpr int kStopOnError = 1;
  if (!TIFFReadRGBAImageOriented(file, static_cast<uint32_t>(page.width), static_cast<uint32_t>(page.height),
                                 bitmap.WritableRow(0), static_cast<int>(orientation), kStopOnError)) {
    return std::nullopt;
  }
  const bool opaque = LayOnWhite(bitmap);
  const bool whole = opaque && page.only && page.ordinary;
  return DecodedPicture(std::move(bitmap), whole ? WrittenKind::Tiff : WrittenKind::None);
}

}  // namespace

std::optional<DecodedPicture> DecodeTiff(ByteView bytes, SizeLimit limit) {
  const std::optional<Tiff::Page> page = Tiff(bytes).FirstPage(limit);
  if (!page) return std::nullopt;
  const MemoryFile file(bytes, limit);
  if (!file.Get()) return std::nullopt;
  uint16_t orientation = ORIENTATION_TOPLEFT;
  TIFFGetFieldDefaulted(file.Get(), TIFFTAG_ORIENTATION, &orientation);
  DeepTiff deep(file.Get());
  std::optional<DecodedPicture> picture;
  if (deep.IsKnown())
    picture = deep.Read(limit);
  else
    picture = DecodeThroughLibrary(file.Get(), *page, orientation);
  if (picture) picture = DecodedPicture(Oriented(std::move(*picture), orientation), picture->whole_as);
  return picture;
}

}  // namespace zelvane
