#include "surface/codecs/Dib.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <vector>

namespace zelvane {

namespace {

enum Compression : uint32_t { kPlain = 0, kRle8 = 1, kRle4 = 2, kBitfields = 3, kAlphaBitfields = 6 };

constexpr uint32_t kCoreHeader = 12;   // 16-bit sides, palette of three bytes a colour
constexpr uint32_t kShortHeader = 16;  // the first fields of the next one
constexpr uint32_t kInfoHeader = 40;
constexpr uint32_t kOs2Header = 64;  // gives the numbers of the compressions another meaning
constexpr uint32_t kLargestHeader = 124;
constexpr Pixel kOpaque = 0xFF000000u;

bool IsKnownDepth(const DibHeader& header) {
  switch (header.compression) {
    case kPlain:
      return header.depth == 1 || header.depth == 2 || header.depth == 4 || header.depth == 8 ||
             header.depth == 16 || header.depth == 24 || header.depth == 32;
    case kRle8:
      return header.depth == 8 && !header.top_down;
    case kRle4:
      return header.depth == 4 && !header.top_down;
    case kBitfields:
    case kAlphaBitfields:
      return header.depth == 16 || header.depth == 32;
    default:
      return false;
  }
}

/// Masks come with the header or, after the 40-byte one, behind it.
void ReadMasks(DibHeader& header, ByteView dib, uint32_t header_size) {
  if (header.compression == kPlain) {
    if (header.depth == 16) header.masks = {0x7C00, 0x03E0, 0x001F, 0};
    if (header.depth == 32) header.masks = {0xFF0000, 0xFF00, 0xFF, 0};
    return;
  }
  if (header.compression != kBitfields && header.compression != kAlphaBitfields) return;
  const bool alpha = header_size >= 56 || header.compression == kAlphaBitfields;
  for (size_t i = 0; i < (alpha ? 4 : 3); ++i) header.masks[i] = dib.Little32(kInfoHeader + 4 * i);
  const uint64_t masks_end = kInfoHeader + (header.compression == kAlphaBitfields ? 16 : 12);
  header.end = std::max<uint64_t>(header.end, masks_end);
}

void ReadPalette(DibHeader& header, ByteView dib, uint32_t header_size) {
  if (header.depth > 8) return;
  const uint32_t all = 1u << header.depth;
  uint32_t used = header_size >= kInfoHeader ? dib.Little32(32) : 0;
  if (used == 0 || used > all) used = all;
  const uint64_t entry = header_size == kCoreHeader ? 3 : 4;
  for (uint32_t i = 0; i < used; ++i) {
    const uint64_t at = header.end + i * entry;
    header.palette[i] = kOpaque | dib.At(at + 2) << 16 | dib.At(at + 1) << 8 | dib.At(at);
  }
  header.colours = used;
  header.end += used * entry;
}

/// One channel out of a pixel, spread over 0 to 255 to the nearest.
uint32_t Channel(uint32_t value, uint32_t mask) {
  if (mask == 0) return 0;
  const int shift = std::countr_zero(mask);
  const uint64_t most = mask >> shift;
  return static_cast<uint32_t>(((value & mask) >> shift) * uint64_t{255} / most +
                               (((value & mask) >> shift) * uint64_t{255} % most * 2 >= most ? 1 : 0));
}

uint32_t FromMasks(uint32_t value, const std::array<uint32_t, 4>& masks) {
  const uint32_t alpha = masks[3] == 0 ? 255 : Channel(value, masks[3]);
  return alpha << 24 | Channel(value, masks[0]) << 16 | Channel(value, masks[1]) << 8 |
         Channel(value, masks[2]);
}

void ReadRow24(const unsigned char* from, Pixel* to, int width) {
  // Four bytes at a time, of which one is the next pixel's; so the last pixel is put together on its own.
  for (int x = 0; x + 1 < width; ++x) {
    uint32_t word;
    std::memcpy(&word, from + 3 * x, 4);
    to[x] = word | kOpaque;
  }
  const unsigned char* last = from + 3 * (width - 1);
  to[width - 1] = kOpaque | uint32_t{last[2]} << 16 | uint32_t{last[1]} << 8 | last[0];
}

void ReadRow32(const DibHeader& header, const unsigned char* from, Pixel* to) {
  const bool usual = header.masks[0] == 0xFF0000 && header.masks[1] == 0xFF00 && header.masks[2] == 0xFF &&
                     (header.masks[3] == 0 || header.masks[3] == kOpaque);
  const Pixel opaque = header.masks[3] == 0 ? kOpaque : 0;
  for (int x = 0; x < header.width; ++x) {
    uint32_t word;
    std::memcpy(&word, from + 4 * x, 4);
    to[x] = usual ? word | opaque : FromMasks(word, header.masks);
  }
}

/// False where a colour isn't in the palette.
bool ReadRowIndexed(const DibHeader& header, const unsigned char* from, Pixel* to) {
  const uint32_t depth = header.depth;
  const uint32_t mask = (1u << depth) - 1;
  uint32_t largest = 0;
  for (uint32_t x = 0; x < header.width; ++x) {
    const uint32_t bit = x * depth;
    const uint32_t index = from[bit / 8] >> (8 - depth - bit % 8) & mask;
    largest = std::max(largest, index);
    to[x] = header.palette[index];
  }
  return largest < header.colours;
}

/// Every value of a 16-bit pixel.
std::vector<uint32_t> TableFor16(const DibHeader& header) {
  std::vector<uint32_t> table(header.depth == 16 ? 65536 : 0);
  for (uint32_t value = 0; value < table.size(); ++value) table[value] = FromMasks(value, header.masks);
  return table;
}

std::optional<Bitmap> ReadPlain(const DibHeader& header, ByteView data, ReadingWatch& watch) {
  const uint64_t rows = static_cast<uint64_t>(header.height);
  if (!data.Has(0, header.Stride() * (rows - 1) + header.RowBytes())) return std::nullopt;
  const int width = static_cast<int>(header.width), height = static_cast<int>(header.height);
  Bitmap bitmap = Bitmap::Uninitialised(width, height);
  const std::vector<uint32_t> table = TableFor16(header);
  for (int i = 0; i < height; ++i) {
    if (!watch.GoOn(i, height)) return std::nullopt;
    const unsigned char* from = data.Data() + header.Stride() * static_cast<uint64_t>(i);
    Pixel* to = bitmap.WritableRow(header.top_down ? i : height - 1 - i);
    if (header.depth == 24) {
      ReadRow24(from, to, width);
    } else if (header.depth == 32) {
      ReadRow32(header, from, to);
    } else if (header.depth == 16) {
      for (int x = 0; x < width; ++x) to[x] = table[from[2 * x] | uint32_t{from[2 * x + 1]} << 8];
    } else if (!ReadRowIndexed(header, from, to)) {
      return std::nullopt;
    }
  }
  return bitmap;
}

/// Run lengths: pairs of a count and a colour; after a count of 0 an escape. What is jumped over has the
/// first colour.
class RunReader {
 public:
  RunReader(const DibHeader& header, ByteView data, ReadingWatch& watch)
      : header_(header),
        data_(data),
        watch_(watch),
        bitmap_(Bitmap::Uninitialised(static_cast<int>(header.width), static_cast<int>(header.height))) {}

  /// No value where the data ends before the last row, or a fault in it leaves pixels unset.
  std::optional<Bitmap> Read() {
    while (data_.Has(at_, 2) && watch_.GoOn(y_, header_.height)) {
      const uint32_t count = data_.At(at_), value = data_.At(at_ + 1);
      at_ += 2;
      if (count > 0) {
        for (uint32_t i = 0; i < count; ++i) Put(Index(value, i));
      } else if (value == 1) {
        return Finished();
      } else if (!Escape(value)) {
        return std::nullopt;
      }
    }
    // Some writers leave the mark of the end away.
    const bool last_row_full = y_ == header_.height - 1 && x_ >= header_.width;
    if (y_ < header_.height && !last_row_full) return std::nullopt;
    return Finished();
  }

 private:
  std::optional<Bitmap> Finished() {
    const bool missing = set_ < header_.width * header_.height;
    if (y_ < header_.height - 1 || (faulty_ && missing)) return std::nullopt;
    BeginRows(header_.height);
    return std::move(bitmap_);
  }
  /// The end of a row, a jump, or colours one by one, which fill whole words. False where the data is short.
  bool Escape(uint32_t value) {
    if (value == 0) {
      x_ = 0;
      ++y_;
      return true;
    }
    if (value == 2) {
      x_ += data_.At(at_);
      y_ += data_.At(at_ + 1);
      at_ += 2;
      return data_.Has(0, at_);
    }
    const uint64_t bytes = header_.depth == 8 ? value : (value + 1) / 2;
    if (!data_.Has(at_, bytes)) return false;
    for (uint32_t i = 0; i < value; ++i) Put(Index(data_.At(at_ + (header_.depth == 8 ? i : i / 2)), i));
    at_ += (bytes + 1) / 2 * 2;
    return true;
  }
  uint32_t Index(uint32_t value, uint32_t i) const {
    if (header_.depth == 8) return value;
    return i % 2 == 0 ? value >> 4 : value & 0x0F;
  }
  void Put(uint32_t index) {
    if (x_ < header_.width && y_ < header_.height && index < header_.colours) {
      if (begun_ <= y_) BeginRows(y_ + 1);
      row_[x_] = header_.palette[index];
      ++set_;
    } else {
      faulty_ = true;
    }
    ++x_;
  }
  /// Rows are filled when they're reached, not before the data has proved that there are any.
  void BeginRows(int64_t end) {
    for (; begun_ < end; ++begun_) {
      row_ = bitmap_.WritableRow(static_cast<int>(header_.height - 1 - begun_));
      std::fill_n(row_, header_.width, header_.palette[0]);
    }
  }

  const DibHeader& header_;
  ByteView data_;
  ReadingWatch& watch_;
  Bitmap bitmap_;
  Pixel* row_ = nullptr;  // the last one begun
  uint64_t at_ = 0;
  int64_t x_ = 0, y_ = 0, begun_ = 0;  // from the left and from the bottom; rows
  int64_t set_ = 0;
  bool faulty_ = false;
};

}  // namespace

std::optional<DibHeader> ReadDibHeader(ByteView dib) {
  const uint32_t size = dib.Little32(0);
  const bool known =
      size == kCoreHeader || size == kShortHeader || (size >= kInfoHeader && size <= kLargestHeader);
  if (!known || !dib.Has(0, size)) return std::nullopt;
  DibHeader header;
  header.end = size;
  if (size == kCoreHeader) {
    header.width = dib.Little16(4);
    header.height = dib.Little16(6);
    header.depth = dib.Little16(10);
  } else {
    header.width = static_cast<int32_t>(dib.Little32(4));
    header.height = static_cast<int32_t>(dib.Little32(8));
    header.depth = dib.Little16(14);
    header.compression = size >= kInfoHeader ? dib.Little32(16) : kPlain;
  }
  header.top_down = header.height < 0;
  if (header.top_down) header.height = -header.height;
  if (size == kOs2Header && header.compression > kRle4) return std::nullopt;
  if (!IsKnownDepth(header)) return std::nullopt;
  ReadMasks(header, dib, size);
  ReadPalette(header, dib, size);
  return header;
}

std::optional<Bitmap> ReadDibPixels(const DibHeader& header, ByteView data, ReadingWatch& watch) {
  const bool runs = header.compression == kRle8 || header.compression == kRle4;
  return runs ? RunReader(header, data, watch).Read() : ReadPlain(header, data, watch);
}

}  // namespace zelvane
