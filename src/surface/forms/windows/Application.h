#pragma once

#include <functional>
#include <memory>

#include "surface/forms/windows/EventLoop.h"

namespace zelvane {

/// The toolkit, from start to end. One at a time; made before any window.
class Application {
 public:
  Application(int& argc, char** argv);
  ~Application();

  /// Runs the event loop until `EndProgram`.
  int Run();

 private:
  struct Toolkit;
  std::unique_ptr<Toolkit> toolkit_;
};

/// Ends the event loop once the running handler has returned.
void EndProgram();
/// The desktop's sound for a message.
void Beep();

/// A step of a handler has failed because memory didn't suffice. Comes once for each press of a button or
/// key, however much fails on it, when the handler has returned.
inline std::function<void()> OnMemoryShort;

}  // namespace zelvane
