#pragma once

#include <string>
#include <vector>

#include "effects/pixels/Effect.h"

namespace zelvane {

/// What an effect program was started for.
struct Order {
  enum class Kind : uint8_t { Window, Apply, Help, Mistaken };

  Kind kind = Kind::Window;
  std::string path;
  Values values;
  std::string mistake;  ///< for a person, where there is one
};

/// The settings' values at the start.
Values StartOf(const Effect& effect);

/// A file alone asks for the window; with a setting (`--amount 40` or `--amount=40`) or `--apply` the file is
/// changed at once, by what the other settings start with.
Order ReadCommandLine(const Effect& effect, const std::vector<std::string>& arguments);

/// What `--help` tells.
std::string UsageOf(const Effect& effect, const std::string& program);

}  // namespace zelvane
