#pragma once

#include <optional>
#include <string>

namespace zelvane {

/// How far the lines of a font reach from the line they stand on, in sizes of the font.
struct LineReach {
  double above = 0.93, below = 0.24;  ///< as in most fonts
};

/// Reads the reach out of a font file (OpenType's tables "head", "hhea" and "OS/2"), which takes
/// microseconds, where loading the font takes a millisecond. `face` is the place in a file of several. For
/// files of other kinds, and where what's told can't be, the usual reach; no value where the file can't be
/// read or isn't whole.
std::optional<LineReach> ReadLineReach(const std::string& path, int face);

}  // namespace zelvane
