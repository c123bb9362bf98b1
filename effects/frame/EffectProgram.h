#pragma once

#include "effects/pixels/Effect.h"

namespace zelvane {

/// All of an effect program: reads the bitmap that the command line names and writes it back, changed, or
/// deletes it where a person cancels. The process's status: 0, 1 for a file that can't be read or written, 2
/// for a mistaken command line.
int RunEffectProgram(const Effect& effect, int argc, char** argv);

}  // namespace zelvane
