#pragma once

#include <algorithm>
#include <bit>
#include <initializer_list>

#include "codecs/PictureSamples.h"
#include "raster/AsciiArt.h"
#include "surface/system/metafiles/Metafile.h"

/// Metafiles that the tests make, record by record.
namespace zelvane::test {

inline uint64_t Unsigned(int64_t value) {
  return static_cast<uint64_t>(value);
}

inline Bytes Fields(std::initializer_list<int64_t> values, int size) {
  std::vector<uint64_t> numbers;
  for (const int64_t value : values) numbers.push_back(Unsigned(value));
  return Numbers(numbers, size);
}

/// Of 16 bits. The constants are those of the format.
struct Wmf {
  enum Type : uint32_t {
    kSave = 0x001E,
    kBackMode = 0x0102,
    kMapMode = 0x0103,
    kPenMode = 0x0104,
    kFillMode = 0x0106,
    kRestore = 0x0127,
    kSelect = 0x012D,
    kTextAlign = 0x012E,
    kDelete = 0x01F0,
    kTextColor = 0x0209,
    kWindowOrigin = 0x020B,
    kWindowExtent = 0x020C,
    kLineTo = 0x0213,
    kMoveTo = 0x0214,
    kPen = 0x02FA,
    kFont = 0x02FB,
    kBrush = 0x02FC,
    kPolygon = 0x0324,
    kExcludeClip = 0x0415,
    kIntersectClip = 0x0416,
    kRectangle = 0x041B,
    kTextOut = 0x0521,
    kExtTextOut = 0x0A32,
    kStretchDib = 0x0F43
  };
  Bytes records;

  Wmf& Add(uint32_t type, const Bytes& fields) {
    records = records + Numbers({(6 + fields.size() + 1) / 2}, 4) + Numbers({type}, 2) + fields;
    if (fields.size() % 2 == 1) records.push_back(0);
    return *this;
  }
  Wmf& Add(uint32_t type, std::initializer_list<int64_t> words) { return Add(type, Fields(words, 2)); }
  /// Red in the lowest byte. Each takes the next number of an object.
  Wmf& Pen(int64_t style, int64_t width, int64_t color = 0) {
    return Add(kPen, {style, width, 0, color, color >> 16});
  }
  Wmf& Brush(int64_t color, int64_t style = 0, int64_t hatch = 0) {
    return Add(kBrush, {style, color, color >> 16, hatch});
  }
  Wmf& Select(int64_t number) { return Add(kSelect, {number}); }
  Wmf& Box(int64_t left, int64_t top, int64_t right, int64_t bottom) {
    return Add(kRectangle, {bottom, right, top, left});
  }
  /// No outline, that brush: objects 0 and 1.
  Wmf& Plain(int64_t color) { return Pen(5, 0).Brush(color).Select(0).Select(1); }

  static Bytes Header() { return Numbers({1, 9, 0x0300, 0, 0, 0, 3, 0, 0}, 2); }
  Bytes Old() const { return Header() + records + Numbers({3, 0, 0}, 2); }
  Bytes File(int64_t right, int64_t bottom, int64_t inch = 96, int64_t left = 0, int64_t top = 0) const {
    return Numbers({0x9AC6CDD7u}, 4) + Fields({0, left, top, right, bottom, inch, 0, 0, 0}, 2) + Old();
  }
};

/// Of 32 bits, for a device of 96 dots an inch.
struct Emf {
  Bytes records;

  Emf& Add(uint32_t type, const Bytes& fields) {
    records = records + Numbers({type, 8 + fields.size()}, 4) + fields;
    return *this;
  }
  Emf& Add(uint32_t type, std::initializer_list<int64_t> longs) { return Add(type, Fields(longs, 4)); }
  Emf& Select(int64_t number) { return Add(37, {number}); }
  Emf& Stock(int64_t number) { return Add(37, {number | 0x80000000}); }
  Emf& Brush(int64_t number, int64_t color) { return Add(39, {number, 0, color, 0}).Select(number); }

  /// Sides in pixels, multiples of 24.
  Bytes File(int64_t width, int64_t height) const {
    return Fields({1, 88, 0, 0, width - 1, height - 1, 0, 0, width * 635 / 24, height * 635 / 24}, 4) +
           Text(" EMF") + Fields({0x10000, 0, 0, 8, 0, 0, 0, 9600, 9600, 2540, 2540}, 4) + records +
           Fields({14, 20, 0, 20, 20}, 4);
  }
};

inline std::optional<DecodedPicture> Played(const Bytes& bytes) {
  return DecodeMetafile({bytes.data(), bytes.size()}, LimitByMemory());
}

/// As text; a line that says so where there is no picture.
inline art::Lines Shown(const Bytes& bytes) {
  const auto picture = Played(bytes);
  if (!picture) return {"no picture"};
  Canvas canvas;
  canvas.SetImage(*picture);
  return art::Text(canvas);
}

/// How many pixels have that letter.
inline int64_t Count(const art::Lines& lines, char letter) {
  int64_t count = 0;
  for (const std::string& line : lines) count += std::count(line.begin(), line.end(), letter);
  return count;
}

/// The box round all that isn't white.
inline Rect Ink(const Bytes& bytes) {
  const art::Lines lines = Shown(bytes);
  Rect ink{1 << 20, 1 << 20, 0, 0};
  for (int y = 0; y < static_cast<int>(lines.size()); ++y) {
    const std::string& line = lines[static_cast<size_t>(y)];
    const size_t first = line.find_first_not_of('.'), last = line.find_last_not_of('.');
    if (first == std::string::npos) continue;
    ink = {std::min(ink.left, static_cast<int>(first)), std::min(ink.top, y),
           std::max(ink.right, static_cast<int>(last) + 1), y + 1};
  }
  return ink;
}

}  // namespace zelvane::test
