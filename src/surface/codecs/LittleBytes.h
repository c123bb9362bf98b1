#pragma once

#include <cstdint>
#include <vector>

#include "surface/codecs/ByteView.h"

namespace zelvane {

using Bytes = std::vector<unsigned char>;

/// Of bytes that outlive it.
inline ByteView View(const Bytes& bytes) {
  return {bytes.data(), bytes.size()};
}

/// Appends the low `count` bytes, 8 at most, of a number, the lowest first.
inline void PutLittle(Bytes& bytes, uint64_t value, int count) {
  for (int i = 0; i < count; ++i) bytes.push_back(static_cast<unsigned char>(value >> 8 * i));
}

}  // namespace zelvane
