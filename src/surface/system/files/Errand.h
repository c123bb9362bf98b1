#pragma once

#include <functional>
#include <memory>

namespace zelvane {

/// Work on a thread of its own, for what a disk may answer late or never: neither the windows nor the end of
/// the program wait for it.
class Errand {
 public:
  Errand();
  ~Errand();
  Errand(const Errand&) = delete;
  Errand& operator=(const Errand&) = delete;

  /// Begins `work` and waits for it, milliseconds at most: true where it's done by then, otherwise `OnDone`
  /// comes later. `work` owns all that it touches, as it may outlive everything else; what it throws ends it.
  bool Begin(std::function<void()> work, int patience);
  /// Waits again for what goes on; true where nothing does.
  bool Wait(int patience);
  bool IsUnderWay() const { return job_ != nullptr; }
  /// The work goes on, but nobody hears of it any more; so it does on a new `Begin` and on destruction.
  void Drop();

  /// On the program's thread, from the event loop.
  std::function<void()> OnDone;

 private:
  struct Job;
  void Finish();
  std::shared_ptr<Job> job_;
};

}  // namespace zelvane
