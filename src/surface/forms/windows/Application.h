#pragma once

#include <functional>
#include <memory>
#include <string>

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
/// Lets pending events run.
void DoEvents();
/// Runs `step` at the next turn of the event loop.
void Defer(std::function<void()> step);
/// Unloads and destroys every form that is left, the main window last. Nothing is asked.
void DestroyForms();

}  // namespace zelvane
