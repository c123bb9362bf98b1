#pragma once

#include <cstdint>
#include <vector>

#include "surface/codecs/ByteView.h"

/// The chunks that PNG and its relatives are made of: a length, a name, the data and a checksum.
namespace zelvane {

inline constexpr uint64_t kPngSignature = 8;

constexpr uint32_t ChunkName(const char (&name)[5]) {
  uint32_t value = 0;
  for (int i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(name[i]);
  return value;
}

struct Chunk {
  uint32_t name = 0;
  ByteView data;
  /// With its length, name and checksum.
  ByteView whole;
};

/// The chunks behind the signature up to the one named `last`. None where one of them isn't whole or the last
/// is missing, as in a file that was cut short.
inline std::vector<Chunk> ChunksOf(ByteView bytes, uint32_t last) {
  std::vector<Chunk> chunks;
  constexpr uint64_t kAround = 12;  // bytes round the data
  for (uint64_t at = kPngSignature; bytes.Has(at, kAround);) {
    const uint64_t length = bytes.Big32(at);
    if (!bytes.Has(at, length + kAround)) return {};
    chunks.push_back({bytes.Big32(at + 4), bytes.Part(at + 8, length), bytes.Part(at, length + kAround)});
    if (chunks.back().name == last) return chunks;
    at += length + kAround;
  }
  return {};
}

}  // namespace zelvane
