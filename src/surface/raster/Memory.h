#pragma once

#include <cstdint>

namespace zelvane {

/// Bytes of memory that can be had without pushing anything out; everything where the system doesn't tell.
int64_t AvailableMemory();

}  // namespace zelvane
