#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>

#include "surface/codecs/ByteView.h"

/// The headers and records of Windows metafiles, as the published descriptions [MS-WMF] and [MS-EMF] lay them
/// out. Nothing is read beyond the bytes that there are.
namespace zelvane {

/// A record is shorter than what it tells of; the record is passed over.
struct RecordFault : std::runtime_error {
  RecordFault() : std::runtime_error("record too short") {}
};

/// A record's fields, one behind the other. Reading one that isn't there throws `RecordFault`.
class Fields {
 public:
  explicit Fields(ByteView bytes, uint64_t at = 0) : bytes_(bytes), at_(at) {}

  uint32_t Byte() { return bytes_.At(Step(1)); }
  uint32_t Word() { return bytes_.Little16(Step(2)); }
  uint32_t Long() { return bytes_.Little32(Step(4)); }
  int32_t Int16() { return static_cast<int16_t>(Word()); }
  int32_t Int32() { return static_cast<int32_t>(Long()); }
  /// Throws `RecordFault` where it isn't finite, or beyond a thousand million.
  double Float();
  void Skip(uint64_t count) { Step(count); }
  ByteView Bytes(uint64_t count) { return bytes_.Part(Step(count), count); }
  /// A part of the whole record that the record itself tells the place of.
  ByteView Within(uint64_t at, uint64_t count) const {
    if (!bytes_.Has(at, count)) throw RecordFault();
    return bytes_.Part(at, count);
  }
  ByteView All() const { return bytes_; }
  ByteView Rest() const { return bytes_.From(at_); }
  uint64_t Left() const { return bytes_.Size() - at_; }
  /// For a list of `count` entries, before room is made for it.
  void Expect(uint64_t count, uint64_t size) const {
    if (count > Left() / size) throw RecordFault();
  }

 private:
  /// The place of the next `count` bytes.
  uint64_t Step(uint64_t count) {
    if (!bytes_.Has(at_, count)) throw RecordFault();
    at_ += count;
    return at_ - count;
  }
  ByteView bytes_;
  uint64_t at_;
};

struct RecordBox {
  int32_t left = 0, top = 0, right = 0, bottom = 0;

  /// May be below 0.
  int64_t Width() const { return int64_t{right} - left; }
  int64_t Height() const { return int64_t{bottom} - top; }
};

struct WmfHeader {
  /// Logical units; only a placeable header tells it.
  std::optional<RecordBox> box;
  uint32_t units_per_inch = 0;
  /// Where the records begin.
  uint64_t end = 0;
};

/// No value where the bytes don't begin as a metafile of 16 bits does. Only the placeable header has a mark
/// of its own; without it every field that can have but one value has to have it.
std::optional<WmfHeader> ReadWmfHeader(ByteView bytes);

struct EmfHeader {
  /// Pixels of the device that was drawn for, and hundredths of a millimetre.
  RecordBox bounds, frame;
  /// Of that device; above 0.
  double pixels_per_mm_x = 0, pixels_per_mm_y = 0;
};

/// The first bytes are those of a metafile of 32 bits.
bool LooksLikeEmf(ByteView start);
/// No value where the bytes don't begin with a whole header of such a one.
std::optional<EmfHeader> ReadEmfHeader(ByteView bytes);

struct MetafileRecord {
  uint32_t type = 0;
  /// The whole record, its type and size included.
  ByteView bytes;
};

/// Goes through a metafile's records.
class RecordWalk {
 public:
  enum class Kind { Wmf, Emf };

  /// From the first record on; that of a metafile of 32 bits is its header.
  RecordWalk(Kind kind, ByteView bytes, uint64_t at) : kind_(kind), bytes_(bytes), at_(at) {}

  /// No value at the record that marks the end, at one that is too small to be one, and where the bytes end.
  std::optional<MetafileRecord> Next();
  /// Whether the walk ended at the mark. Without it the file was cut short.
  bool ReachedEnd() const { return reached_end_; }
  int64_t BytesDone() const { return static_cast<int64_t>(at_); }
  int64_t AllBytes() const { return static_cast<int64_t>(bytes_.Size()); }

 private:
  Kind kind_;
  ByteView bytes_;
  uint64_t at_;
  bool reached_end_ = false;
};

}  // namespace zelvane
