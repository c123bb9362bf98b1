#pragma once

#include <cstdint>
#include <string>

namespace zelvane {

/// Prepares the program's state and shows the main window. `tail` is the whole command line behind the
/// program's name. False: the program can't run.
bool Main(const std::string& tail);

/// The command line's tail as a picture's path: without a quote at either end, and absolute.
std::string PathFromCommandLine(const std::string& tail);

/// The platform keeps a desktop and a documents folder for each user, as this one always does.
bool IsNTPlatform();

/// Lets pending events run until the clock has moved on by so many seconds.
void WaitSeconds(int16_t seconds);

}  // namespace zelvane
