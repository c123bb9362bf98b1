#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace zelvane {

/// Reads a piece of a file that is too large to be read whole: up to `count` bytes from `at` on, fewer where
/// it ends before, none where it can't be read.
using RangeReader = std::function<std::vector<unsigned char>(uint64_t at, size_t count)>;

}  // namespace zelvane
