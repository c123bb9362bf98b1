#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "surface/codecs/Flatten.h"
#include "surface/codecs/PictureDecoder.h"

namespace zelvane {

namespace {

constexpr uint64_t kHeaderSize = 128;
constexpr Pixel kOpaque = 0xFF000000u;

using Palette = std::array<Pixel, 256>;

struct Header {
  explicit Header(ByteView bytes)
      : version(bytes.At(1)),
        packed(bytes.At(2) != 0),
        depth(bytes.At(3)),
        planes(bytes.At(65)),
        grey(bytes.Little16(68) == 2),
        width(int{1} + static_cast<int>(bytes.Little16(8)) - static_cast<int>(bytes.Little16(4))),
        height(int{1} + static_cast<int>(bytes.Little16(10)) - static_cast<int>(bytes.Little16(6))),
        stride(bytes.Little16(66)) {}

  /// Bits of an index where there is a palette: bits of each plane, the first plane's the lowest.
  uint32_t IndexBits() const { return depth * planes; }
  bool IsTrueColour() const { return (depth == 8 && (planes == 3 || planes == 4)) || IsInterleaved(); }
  /// Red, green and blue side by side instead of one row behind the other.
  bool IsInterleaved() const { return depth == 24 && planes == 1; }
  bool IsKnown() const {
    const bool indexed =
        (depth == 1 || depth == 2 || depth == 4 || depth == 8) && planes > 0 && IndexBits() <= 8;
    return (indexed || IsTrueColour()) && stride * 8 >= static_cast<uint32_t>(std::max(width, 0)) * depth;
  }
  uint64_t RowSize() const { return uint64_t{stride} * planes; }

  uint32_t version;
  bool packed;
  uint32_t depth, planes;  // bits a pixel in each plane
  bool grey;
  int width, height;
  uint32_t stride;  // bytes of a row of one plane
};

/// Bytes one by one, or after one of 0xC0 and above as often as its lower bits say. Runs may go on from one
/// row to the next.
class RunReader {
 public:
  RunReader(ByteView data, bool packed) : data_(data), packed_(packed) {}

  /// False where the data ends first.
  bool Read(unsigned char* to, size_t count) {
    while (count > 0) {
      if (left_ == 0 && !Begin()) return false;
      const size_t now = std::min(left_, count);
      std::memset(to, value_, now);
      to += now;
      count -= now;
      left_ -= now;
    }
    return true;
  }

 private:
  bool Begin() {
    constexpr uint32_t kRun = 0xC0;
    if (!data_.Has(at_, 1)) return false;
    const uint32_t byte = data_.At(at_++);
    const bool run = packed_ && byte >= kRun;
    if (run && !data_.Has(at_, 1)) return false;
    left_ = run ? byte - kRun : 1;
    value_ = static_cast<int>(run ? data_.At(at_++) : byte);
    return true;
  }

  ByteView data_;
  bool packed_;
  uint64_t at_ = 0;
  size_t left_ = 0;
  int value_ = 0;
};

void ReadColours(ByteView bytes, uint64_t at, size_t count, Palette& palette) {
  for (size_t i = 0; i < count; ++i, at += 3) {
    palette[i] = kOpaque | bytes.At(at) << 16 | bytes.At(at + 1) << 8 | bytes.At(at + 2);
  }
}

/// The sixteen colours of the header. Old files don't say any; then they're those of the screens of the time.
void ReadSixteen(ByteView bytes, const Header& header, Palette& palette) {
  constexpr std::array<Pixel, 16> kScreen{
      0xFF000000u, 0xFF0000AAu, 0xFF00AA00u, 0xFF00AAAAu, 0xFFAA0000u, 0xFFAA00AAu, 0xFFAA5500u, 0xFFAAAAAAu,
      0xFF555555u, 0xFF5555FFu, 0xFF55FF55u, 0xFF55FFFFu, 0xFFFF5555u, 0xFFFF55FFu, 0xFFFFFF55u, 0xFFFFFFFFu};
  constexpr uint64_t kAt = 16;
  constexpr uint32_t kWithoutPalette = 3;
  ReadColours(bytes, kAt, kScreen.size(), palette);
  const size_t used = header.IndexBits() == 1 ? 2 : kScreen.size();
  const bool told =
      header.version != kWithoutPalette &&
      !std::all_of(palette.begin(), palette.begin() + used, [&](Pixel p) { return p == palette[0]; });
  if (told) return;
  std::copy(kScreen.begin(), kScreen.end(), palette.begin());
  if (header.IndexBits() == 1) palette[1] = kScreen.back();
}

/// 256 colours stand at the end of the file, behind a mark. False where they should and don't.
bool ReadPalette(ByteView bytes, const Header& header, ByteView& data, Palette& palette) {
  constexpr uint64_t kMarked = 769;
  constexpr uint32_t kMark = 0x0C, kFirstWithMany = 5;
  if (header.IndexBits() <= 4) {
    ReadSixteen(bytes, header, palette);
    return true;
  }
  if (data.Size() >= kMarked && bytes.At(bytes.Size() - kMarked) == kMark) {
    ReadColours(bytes, bytes.Size() - kMarked + 1, palette.size(), palette);
    data = data.Part(0, data.Size() - kMarked);
    return true;
  }
  for (uint32_t i = 0; i < palette.size(); ++i) palette[i] = kOpaque | i * 0x010101u;
  return header.grey || header.version < kFirstWithMany;
}

void PutIndexed(const unsigned char* from, const Header& header, const Palette& palette, Pixel* row) {
  const uint32_t mask = (1u << header.depth) - 1;
  std::fill_n(row, header.width, 0u);
  for (uint32_t plane = 0; plane < header.planes; ++plane, from += header.stride) {
    for (uint32_t x = 0; x < static_cast<uint32_t>(header.width); ++x) {
      const uint32_t bit = x * header.depth;
      row[x] |= (from[bit / 8] >> (8 - header.depth - bit % 8) & mask) << plane * header.depth;
    }
  }
  for (int x = 0; x < header.width; ++x) row[x] = palette[row[x]];
}

void PutTrueColour(const unsigned char* from, const Header& header, Pixel* row) {
  const size_t to_next = header.IsInterleaved() ? 3 : 1,
               to_plane = header.IsInterleaved() ? 1 : header.stride;
  const bool clear = header.planes == 4;
  for (int x = 0; x < header.width; ++x, from += to_next) {
    const uint32_t alpha = clear ? from[3 * to_plane] : 255u;
    row[x] =
        OnWhite(alpha << 24 | uint32_t{from[0]} << 16 | uint32_t{from[to_plane]} << 8 | from[2 * to_plane]);
  }
}

}  // namespace

std::optional<DecodedPicture> DecodePcx(ByteView bytes, SizeLimit limit, ReadingWatch& watch) {
  constexpr uint64_t kMostGrowth = 32;  // 63 bytes out of two
  const Header header(bytes);
  if (!limit.Admits(header.width, header.height) || !header.IsKnown()) return std::nullopt;
  ByteView data = bytes.From(kHeaderSize);
  if (data.Size() * kMostGrowth < header.RowSize() * static_cast<uint64_t>(header.height))
    return std::nullopt;
  Palette palette{};
  if (!header.IsTrueColour() && !ReadPalette(bytes, header, data, palette)) return std::nullopt;

  Bitmap bitmap = Bitmap::Uninitialised(header.width, header.height);
  std::vector<unsigned char> row(header.RowSize());
  RunReader runs(data, header.packed);
  for (int y = 0; y < header.height; ++y) {
    if (!watch.GoOn(y, header.height) || !runs.Read(row.data(), row.size())) return std::nullopt;
    if (header.IsTrueColour())
      PutTrueColour(row.data(), header, bitmap.WritableRow(y));
    else
      PutIndexed(row.data(), header, palette, bitmap.WritableRow(y));
  }
  return bitmap;
}

}  // namespace zelvane
