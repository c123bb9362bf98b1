#include "surface/codecs/TiffPages.h"

#include <tiff.h>

#include <algorithm>
#include <array>

namespace zelvane {

namespace {

/// Numbers in the byte order of the file, and places of 32 bits or, in the large kind, of 64.
class Tiff {
 public:
  explicit Tiff(ByteView bytes)
      : bytes_(bytes), big_endian_(bytes.At(0) == 'M'), large_(Number(2, 2) == 43) {}

  std::optional<TiffPage> FirstPage(SizeLimit limit) const {
    // The library takes no more in a directory.
    constexpr uint64_t kMostEntries = 4096;
    TiffPage first;
    // Each directory and each piece of data takes bytes of its own, but for a chain of pages that runs in a
    // circle.
    uint64_t budget = bytes_.Size();
    uint64_t at = Number(large_ ? 8 : 4, PlaceSize());
    for (int page = 0; at != 0; ++page) {
      const uint64_t count = Number(at, large_ ? 8 : 2);
      const uint64_t entries = at + (large_ ? 8 : 2);
      if (count == 0 || count > kMostEntries) return std::nullopt;
      if (!bytes_.Has(entries, EntrySize() * count + PlaceSize())) return std::nullopt;
      const uint64_t taken = EntrySize() * count + Find(entries, count, kStripPlaces).count +
                             Find(entries, count, kTilePlaces).count;
      if (taken > budget || !IsPageWhole(entries, count)) return std::nullopt;
      budget -= taken;
      if (page == 0) {
        first = {Value(entries, count, kWidth), Value(entries, count, kHeight)};
        if (!limit.Admits(first.width, first.height)) return std::nullopt;
        if (!IsModest(entries, count, first) || !CanFill(entries, count, first)) return std::nullopt;
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
    kCompression = 259,
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
  bool IsModest(uint64_t entries, uint64_t count, const TiffPage& page) const {
    constexpr int64_t kMostSamples = 16, kSmallTile = 1024, kTileStep = 16;
    return Value(entries, count, kSamples) <= kMostSamples &&
           Value(entries, count, kTileWidth) < std::max(page.width, kSmallTile) + kTileStep &&
           Value(entries, count, kTileHeight) < std::max(page.height, kSmallTile) + kTileStep;
  }
  /// What the page's data may grow to at most, against what its rows hold at least.
  bool CanFill(uint64_t entries, uint64_t count, const TiffPage& page) const {
    constexpr int64_t kBlock = 64;
    const int64_t colours = Value(entries, count, kColours);
    const int64_t samples = colours <= kInks ? std::max<int64_t>(1, Value(entries, count, kSamples)) : 1;
    const int64_t bits = std::max<int64_t>(1, Value(entries, count, kBits)) * samples;
    const int64_t pixels = page.width * page.height, packed = DataSize(entries, count);
    switch (Value(entries, count, kCompression)) {
      case COMPRESSION_CCITTRLE:
      case COMPRESSION_CCITTRLEW:
      case COMPRESSION_CCITTFAX3:
      case COMPRESSION_CCITTFAX4:
        return packed >= page.height / 8;  // a bit a row
      case COMPRESSION_JPEG:
        return packed >= pixels / kBlock / 8;  // a bit a block
      case COMPRESSION_PACKBITS:
        return packed * 64 >= pixels * bits / 8;
      case COMPRESSION_LZW:
        return packed * 4096 >= pixels * bits / 8;  // what a code stands for at most
      case COMPRESSION_DEFLATE:
      case COMPRESSION_ADOBE_DEFLATE:
        return packed * 1032 >= pixels * bits / 8;
      default:
        return true;
    }
  }
  /// Bytes of all strips and tiles; of the file where it doesn't tell.
  int64_t DataSize(uint64_t entries, uint64_t count) const {
    int64_t all = 0;
    for (const uint32_t tag : {kStripSizes, kTileSizes}) {
      const Values sizes = Find(entries, count, tag);
      for (uint64_t i = 0; i < sizes.count; ++i) {
        all += static_cast<int64_t>(
            std::min<uint64_t>(Number(sizes.at + i * sizes.size, sizes.size), bytes_.Size()));
      }
    }
    return all > 0 ? all : static_cast<int64_t>(bytes_.Size());
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

}  // namespace

std::optional<TiffPage> FirstTiffPage(ByteView bytes, SizeLimit limit) {
  return Tiff(bytes).FirstPage(limit);
}

}  // namespace zelvane
