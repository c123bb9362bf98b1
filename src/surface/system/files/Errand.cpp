#include "surface/system/files/Errand.h"

#include <QObject>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "surface/raster/FailingStep.h"

namespace zelvane {

struct Errand::Job {
  std::function<void()> work;
  std::function<void()> report;
  std::mutex mutex;
  std::condition_variable changed;
  bool is_done = false, is_late = false;
  /// Lives on the program's thread, where its calls arrive; null once nobody wants to hear.
  std::unique_ptr<QObject> listener = std::make_unique<QObject>();

  void Run() {
    Attempt(std::exchange(work, nullptr));
    const std::lock_guard lock(mutex);
    is_done = true;
    changed.notify_all();
    if (is_late && listener) QMetaObject::invokeMethod(listener.get(), report, Qt::QueuedConnection);
  }

  bool Wait(int milliseconds) {
    std::unique_lock lock(mutex);
    is_late = !changed.wait_for(lock, std::chrono::milliseconds(milliseconds), [this] { return is_done; });
    return !is_late;
  }
};

Errand::Errand() = default;

Errand::~Errand() {
  Drop();
}

bool Errand::Begin(std::function<void()> work, int patience) {
  Drop();
  job_ = std::make_shared<Job>();
  job_->work = std::move(work);
  job_->report = [this] { Finish(); };
  try {
    std::thread([job = job_] { job->Run(); }).detach();
  } catch (const std::system_error&) {
    job_->Run();  // no thread to be had
  }
  return Wait(patience);
}

bool Errand::Wait(int patience) {
  if (!job_) return true;
  if (!job_->Wait(patience)) return false;
  Drop();
  return true;
}

void Errand::Drop() {
  if (!job_) return;
  const std::shared_ptr<Job> job = std::exchange(job_, nullptr);
  const std::lock_guard lock(job->mutex);
  job->listener.reset();
}

void Errand::Finish() {
  Drop();
  // Through a copy, as the handler may end the errand.
  const std::function<void()> handler = OnDone;
  if (handler) Attempt(handler);
}

}  // namespace zelvane
