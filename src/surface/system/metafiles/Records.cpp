#include "surface/system/metafiles/Records.h"

#include <bit>
#include <cmath>

namespace zelvane {

namespace {

constexpr uint32_t kPlaceableKey = 0x9AC6CDD7u;
constexpr uint64_t kPlaceableHeader = 22, kWmfHeader = 18;
constexpr uint32_t kEmfMark = 0x464D4520u;  // " EMF"
constexpr uint64_t kEmfHeader = 88;
constexpr uint32_t kWmfEnd = 0, kEmfEnd = 14;

bool IsPlainWmfHeader(ByteView bytes) {
  const uint32_t type = bytes.Little16(0), version = bytes.Little16(4);
  constexpr uint32_t kWordsOfHeader = 9, kWordsOfSmallestRecord = 3;
  return bytes.Has(0, kWmfHeader) && (type == 1 || type == 2) && bytes.Little16(2) == kWordsOfHeader &&
         (version == 0x0100 || version == 0x0300) && bytes.Little32(12) >= kWordsOfSmallestRecord;
}

RecordBox ReadBox32(Fields& fields) {
  return {fields.Int32(), fields.Int32(), fields.Int32(), fields.Int32()};
}

/// Later headers tell the device's size again, more finely.
double PixelsPerMm(int32_t pixels, int32_t millimetres, int32_t micrometres) {
  constexpr double kUsual = 96 / 25.4;
  if (pixels <= 0 || millimetres <= 0) return kUsual;
  const double finer = micrometres / 1000.0;
  return pixels / (finer > 0 && std::abs(finer - millimetres) <= 1 ? finer : millimetres);
}

}  // namespace

double Fields::Float() {
  constexpr float kMost = 1e9f;
  const float value = std::bit_cast<float>(Long());
  if (!(std::abs(value) <= kMost)) throw RecordFault();
  return value;
}

std::optional<WmfHeader> ReadWmfHeader(ByteView bytes) {
  WmfHeader header;
  if (bytes.Little32(0) == kPlaceableKey) {
    if (!bytes.Has(0, kPlaceableHeader)) return std::nullopt;
    Fields fields(bytes, 6);
    header.box = {fields.Int16(), fields.Int16(), fields.Int16(), fields.Int16()};
    header.units_per_inch = fields.Word();
    if (header.units_per_inch == 0) return std::nullopt;
    header.end = kPlaceableHeader;
  }
  const ByteView plain = bytes.From(header.end);
  constexpr uint64_t kUnusedField = 16;
  if (!IsPlainWmfHeader(plain) || (!header.box && plain.Little16(kUnusedField) != 0)) return std::nullopt;
  header.end += kWmfHeader;
  return header;
}

bool LooksLikeEmf(ByteView start) {
  return start.Little32(0) == 1 && start.Little32(40) == kEmfMark;
}

std::optional<EmfHeader> ReadEmfHeader(ByteView bytes) {
  if (!LooksLikeEmf(bytes)) return std::nullopt;
  if (bytes.Little32(4) < kEmfHeader || !bytes.Has(0, bytes.Little32(4))) return std::nullopt;
  EmfHeader header;
  Fields fields(bytes, 8);
  header.bounds = ReadBox32(fields);
  header.frame = ReadBox32(fields);
  constexpr uint64_t kDevice = 72, kFinerDevice = 100;
  const bool tells_finer = bytes.Little32(4) >= kFinerDevice + 8;
  Fields device(bytes, kDevice), finer(bytes, kFinerDevice);
  const int32_t width = device.Int32(), height = device.Int32();
  const int32_t across = device.Int32(), down = device.Int32();
  header.pixels_per_mm_x = PixelsPerMm(width, across, tells_finer ? finer.Int32() : 0);
  header.pixels_per_mm_y = PixelsPerMm(height, down, tells_finer ? finer.Int32() : 0);
  return header;
}

std::optional<MetafileRecord> RecordWalk::Next() {
  const uint64_t smallest = kind_ == Kind::Wmf ? 6 : 8;
  if (!bytes_.Has(at_, smallest)) return std::nullopt;
  MetafileRecord record;
  uint64_t size = 0;
  if (kind_ == Kind::Wmf) {
    size = uint64_t{bytes_.Little32(at_)} * 2;
    record.type = bytes_.Little16(at_ + 4);
  } else {
    record.type = bytes_.Little32(at_);
    size = bytes_.Little32(at_ + 4);
  }
  reached_end_ = record.type == (kind_ == Kind::Wmf ? kWmfEnd : kEmfEnd);
  if (reached_end_ || size < smallest || !bytes_.Has(at_, size)) return std::nullopt;
  record.bytes = bytes_.Part(at_, size);
  at_ += size;
  return record;
}

}  // namespace zelvane
