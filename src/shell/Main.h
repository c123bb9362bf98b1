#pragma once

#include <cstdint>
#include <string>

namespace zelvane {

/// How a start ended; the exit status of a program that goes no further.
enum class StartResult : int {
  Running = 0,  ///< the main window is up
  Failed = 1,   ///< the program can't run
};

/// Prepares the program's state and shows the main window with the picture that `tail`, the whole command
/// line behind the program's name, tells.
StartResult Main(const std::string& tail);

/// The command line's tail as a picture's path: without a quote at either end, and absolute.
std::string PathFromCommandLine(const std::string& tail);

/// The platform keeps a desktop and a documents folder for each user, as this one always does.
bool IsNTPlatform();

}  // namespace zelvane
