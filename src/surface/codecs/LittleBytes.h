#pragma once

#include <cstdint>
#include <vector>

namespace zelvane {

using Bytes = std::vector<unsigned char>;

/// Appends the low `count` bytes, 8 at most, of a number, the lowest first.
inline void PutLittle(Bytes& bytes, uint64_t value, int count) {
  for (int i = 0; i < count; ++i) bytes.push_back(static_cast<unsigned char>(value >> 8 * i));
}

}  // namespace zelvane
