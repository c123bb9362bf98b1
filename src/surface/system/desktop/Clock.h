#pragma once

namespace zelvane {

/// Seconds since midnight, with a fraction.
double Timer();

}  // namespace zelvane
