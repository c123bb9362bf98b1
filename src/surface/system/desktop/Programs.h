#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// Other programs: starting them, and their windows.
namespace zelvane {

/// What `ExitCode` tells while the program runs.
inline constexpr int kStillActive = 259;

/// A program that was started. The event loop wakes when it ends, so that whoever waits there can sleep.
class Program {
 public:
  virtual ~Program() = default;
  virtual int ExitCode() = 0;
  /// Ends it at once, and with it what it has started.
  virtual void Stop() = 0;
};

/// Path and arguments are handed over byte by byte. Null where it couldn't be started. Nothing is waited for;
/// ending the object doesn't end the program.
std::unique_ptr<Program> StartProgram(const std::string& path, const std::vector<std::string>& arguments);

/// Whoever started this process sees it end as a success; what goes on from here is a copy of it, without
/// that one's terminal and pipes. For a process of one thread. Where there can't be a copy, the process
/// itself goes on.
void GoOnUnseen();

/// The top-level window of exactly that title, 0 for none or where the window system doesn't tell titles.
uint64_t FindWindowByTitle(const std::string& title);

}  // namespace zelvane
