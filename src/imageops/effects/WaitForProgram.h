#pragma once

#include <optional>
#include <string>

#include "surface/system/desktop/Programs.h"

namespace zelvane {

/// How long a program runs before `frmStop` offers to stop it, and again where the person has closed that.
inline constexpr int kPatienceMs = 10'000;

/// Lets events run until the program has ended, and sleeps while there are none. Returns its exit code; no
/// value where the person has had it stopped, or the main window has gone. `name` is shown to the person.
std::optional<int> WaitForProgram(Program& program, const std::string& name, int patience_ms = kPatienceMs);

}  // namespace zelvane
