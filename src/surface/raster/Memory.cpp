#include "surface/raster/Memory.h"

#include <fstream>
#include <limits>
#include <string>

namespace zelvane {

int64_t AvailableMemory() {
  // The kernel's own estimate counts the caches that it would give up.
  std::ifstream lines("/proc/meminfo");
  std::string name, unit;
  int64_t kibibytes = 0;
  while (lines >> name >> kibibytes && std::getline(lines, unit)) {
    if (name == "MemAvailable:") return kibibytes * 1024;
  }
  return std::numeric_limits<int64_t>::max();
}

}  // namespace zelvane
